#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "host/book/Book.h"

namespace margindesk {

// The texts of a directory's CSV files by name.
using TBookTexts = std::map<std::string, std::string>;

// An empty directory of its own, removed with everything in it at the end.
class TTemporaryFolder {
 public:
  TTemporaryFolder();
  ~TTemporaryFolder();
  TTemporaryFolder(const TTemporaryFolder&) = delete;
  TTemporaryFolder& operator=(const TTemporaryFolder&) = delete;

  const std::filesystem::path& Path() const { return FPath; }

 private:
  std::filesystem::path FPath;
};

std::string ReadWholeFile(const std::filesystem::path& file);
void WriteWholeFile(const std::filesystem::path& file, const std::string& text);

// Makes the directory hold these files and no others.
void WriteBookTexts(const std::filesystem::path& directory, const TBookTexts& texts);
TBookTexts ReadBookTexts(const std::filesystem::path& directory);

// What a book exports.
TBookTexts ExportedTexts(TBook& book);

// A sound little book: a base currency, a second one, an exchange, two products, a master with one
// sub-account, figures and positions.
TBookTexts SmallBookTexts();

// The text with the first occurrence of a part replaced; the test fails when the part is not there.
std::string Replaced(const std::string& text, const std::string& part, const std::string& by);

}  // namespace margindesk
