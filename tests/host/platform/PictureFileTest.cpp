#include <string>

#include <gtest/gtest.h>

#include "host/services/PictureFile.h"
#include "tests/host/book/BookTestFiles.h"
#include "tests/support/WholeFile.h"

namespace margindesk {
namespace {

using namespace std::string_literals;

TEST(PictureFiles, AreToldByTheirContentAndAnythingElseIsRefused) {
  const TTemporaryFolder folder;
  const std::string file = folder.Path() / "picture.txt";
  TBitmap bitmap;
  const auto decode = [&](const std::string& contents) {
    WriteWholeFile(file, contents);
    return DecodePictureFile(file, bitmap);
  };
  // A red and a blue pixel.
  const std::string png =
      "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\2\0\0\0\1\b\2\0\0\0\x7b\x40\xe8\xdd\0\0\0\rIDAT"
      "\x78\xda\x63\xf8\xcf\0\4\xff\1\7\0\1\xff\x3d\x7d\x8c\x49\0\0\0\0IEND\xae\x42\x60\x82"s;
  // Two by one pixels of middle gray.
  const std::string table = "\1"s + std::string(15, '\0') + "\0"s;
  const std::string jpeg = "\xFF\xD8\xFF\xDB\0\x43\0"s + std::string(64, '\1') +
                           "\xFF\xC0\0\x0B\b\0\1\0\2\1\1\x11\0"s + "\xFF\xC4\0\x14\0"s + table +
                           "\xFF\xC4\0\x14\x10"s + table + "\xFF\xDA\0\b\1\1\0\0?\0?\xFF\xD9"s;
  ASSERT_TRUE(decode(jpeg));
  EXPECT_TRUE(bitmap.FWidth == 2 && bitmap.FHeight == 1);
  const auto gray = bitmap.FPixels;
  for (const std::string& none : {"[ENG]\nno picture"s, ""s, png.substr(0, 45), "\xFF\xD8\xFF\xDB\0"s}) {
    EXPECT_FALSE(decode(none));
    EXPECT_TRUE(bitmap.FWidth == 2 && bitmap.FPixels == gray) << "a refused file has changed the picture";
  }
  ASSERT_TRUE(decode(png));
  EXPECT_EQ(std::string(bitmap.FPixels.begin(), bitmap.FPixels.end()), "\xFF\0\0\xFF\0\0\xFF\xFF"s);
  EXPECT_FALSE(DecodePictureFile(folder.Path(), bitmap));
}

}  // namespace
}  // namespace margindesk
