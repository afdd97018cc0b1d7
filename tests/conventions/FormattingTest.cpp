#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tools/conventions/Formatting.h"
#include "tools/conventions/SourceTree.h"

namespace margindesk {
namespace {

const std::filesystem::path kRoot = MARGINDESK_SOURCE_DIR;
const std::filesystem::path kStyle = kRoot / ".clang-format";

// Without a formatter nothing could be said about the sources, and nothing said must not read as a pass.
class Formatting : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_FALSE(FFormatter.empty())
        << "clang-format is not installed; on Debian: apt-get install clang-format";
  }

  std::string FFormatter = FindFormatter();
};

TEST_F(Formatting, IsAsTheStyleSaysInEverySource) {
  std::vector<std::string> files;
  for (const TSourceFile& file : ReadTree(kRoot, {".h", ".cpp"})) files.push_back(file.FPath);
  ASSERT_FALSE(files.empty());

  const auto findings = CheckFormatting(FFormatter, kStyle, kRoot, files);

  EXPECT_TRUE(findings.empty()) << Describe(findings) << "put right by: " << FFormatter << " -i FILE";
}

TEST_F(Formatting, RefusesATextThatTheFormatterWouldChange) {
  const std::filesystem::path folder = testing::TempDir();
  const std::string name = "margindesk formatting.cpp";
  std::ofstream(folder / name) << "int Fine();\nint  Wrong( );\n";

  const auto findings = CheckFormatting(FFormatter, kStyle, folder, {name});
  std::filesystem::remove(folder / name);

  ASSERT_EQ(findings.size(), 1U) << Describe(findings);
  EXPECT_EQ(findings[0].FFile, name);
  EXPECT_EQ(findings[0].FLine, 2U);
}

}  // namespace
}  // namespace margindesk
