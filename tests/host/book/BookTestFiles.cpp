#include "tests/host/book/BookTestFiles.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace margindesk {

TTemporaryFolder::TTemporaryFolder() {
  std::string path = (std::filesystem::temp_directory_path() / "margindesk-book-XXXXXX").string();
  if (mkdtemp(path.data()) == nullptr) throw std::runtime_error("no temporary directory");
  FPath = path;
}

TTemporaryFolder::~TTemporaryFolder() {
  std::error_code error;
  std::filesystem::remove_all(FPath, error);
}

void WriteBookTexts(const std::filesystem::path& directory, const TBookTexts& texts) {
  std::filesystem::remove_all(directory);
  std::filesystem::create_directories(directory);
  for (const auto& [name, text] : texts) std::ofstream(directory / name, std::ios::binary) << text;
}

TBookTexts ReadBookTexts(const std::filesystem::path& directory) {
  TBookTexts texts;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    std::ifstream stream(entry.path(), std::ios::binary);
    texts[entry.path().filename().string()] = {std::istreambuf_iterator<char>(stream), {}};
  }
  return texts;
}

TBookTexts ExportedTexts(TBook& book) {
  const TTemporaryFolder folder;
  book.Export(folder.Path());
  return ReadBookTexts(folder.Path());
}

std::string Refusal(const std::function<void()>& action) {
  try {
    action();
  } catch (const TBookError& error) {
    return error.what();
  }
  return {};
}

TBookTexts SmallBookTexts() {
  return ReadBookTexts(std::filesystem::path(MARGINDESK_SOURCE_DIR) / "tests/host/book/small");
}

}  // namespace margindesk
