#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>

#include "host/book/Book.h"

namespace margindesk {

// The texts of a directory's files by name.
using TBookTexts = std::map<std::string, std::string>;

// An empty directory of its own, removed with everything in it at the end.
class TTemporaryFolder {
 public:
  TTemporaryFolder();
  ~TTemporaryFolder();
  const std::filesystem::path& Path() const { return FPath; }

 private:
  std::filesystem::path FPath;
};

// Makes the directory hold these files and no others.
void WriteBookTexts(const std::filesystem::path& directory, const TBookTexts& texts);
TBookTexts ReadBookTexts(const std::filesystem::path& directory);
TBookTexts ExportedTexts(TBook& book);

// The message of what is refused; empty when it is not.
std::string Refusal(const std::function<void()>& action);

// The directory small: a sound book of two currencies, a master with a sub-account, and what goes with it.
TBookTexts SmallBookTexts();

}  // namespace margindesk
