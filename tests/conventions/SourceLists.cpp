#include "tests/conventions/SourceLists.h"

#include <map>
#include <set>
#include <string>
#include <string_view>

namespace margindesk {
namespace {

using TWords = std::set<std::string, std::less<>>;

constexpr std::string_view kListName = "CMakeLists.txt";

// The words of a CMake file, comments left out.
TWords CMakeWords(std::string_view text) {
  constexpr std::string_view kBetween = " \t\r()\";";
  TWords words;
  for (std::string_view line : SplitLines(text)) {
    line = line.substr(0, line.find('#'));
    while (true) {
      const std::size_t begin = line.find_first_not_of(kBetween);
      if (begin == std::string_view::npos) break;
      line.remove_prefix(begin);
      const std::string_view word = line.substr(0, line.find_first_of(kBetween));
      words.emplace(word);
      line.remove_prefix(word.size());
    }
  }
  return words;
}

// "a/b/" for "a/b/c" and "a/" for "a/b/"; empty for what is at the top.
std::string_view FolderOf(std::string_view path) {
  if (path.ends_with('/')) path.remove_suffix(1);
  const std::size_t slash = path.rfind('/');
  return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash + 1);
}

}  // namespace

std::vector<TFinding> CheckSourceLists(const std::vector<TSourceFile>& files) {
  std::map<std::string, TWords, std::less<>> lists;
  for (const TSourceFile& file : files) {
    const std::string_view folder = FolderOf(file.FPath);
    if (!folder.empty() && file.FPath.substr(folder.size()) == kListName) {
      lists.emplace(folder, CMakeWords(file.FText));
    }
  }

  std::vector<TFinding> findings;
  for (const TSourceFile& file : files) {
    if (!file.FPath.ends_with(".cpp")) continue;
    std::string_view folder = FolderOf(file.FPath);
    while (!folder.empty() && !lists.contains(folder)) folder = FolderOf(folder);
    if (folder.empty()) {
      findings.push_back({file.FPath, 1, "no folder above it has a CMakeLists.txt"});
    } else if (!lists.find(folder)->second.contains(file.FPath.substr(folder.size()))) {
      findings.push_back({file.FPath, 1, std::string(folder) + std::string(kListName) + " does not name it"});
    }
  }
  return findings;
}

}  // namespace margindesk
