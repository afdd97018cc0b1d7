#include "tools/conventions/SourceLists.h"

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
    if (file.FPath.substr(folder.size()) == kListName) lists.emplace(folder, CMakeWords(file.FText));
  }
  // Goes up from a folder to the first with a list.
  const auto withList = [&](std::string_view folder) {
    while (!folder.empty() && !lists.contains(folder)) folder = FolderOf(folder);
    return folder;
  };

  std::vector<TFinding> findings;
  const auto expectNamed = [&](const std::string& file, std::string_view owner, std::string_view name) {
    const auto list = lists.find(owner);
    if (list != lists.end() && list->second.contains(name)) return;
    findings.push_back(
        {file, 1, std::string(owner) + std::string(kListName) + " does not name " + std::string(name)});
  };
  for (const auto& [folder, words] : lists) {
    if (folder.empty()) continue;
    const std::string_view above = withList(FolderOf(folder));
    expectNamed(folder + std::string(kListName), above,
                folder.substr(above.size(), folder.size() - above.size() - 1));
  }
  for (const TSourceFile& file : files) {
    if (!file.FPath.ends_with(".cpp")) continue;
    const std::string_view owner = withList(FolderOf(file.FPath));
    if (owner.empty()) {
      findings.push_back({file.FPath, 1, "no folder above it has a CMakeLists.txt"});
    } else {
      expectNamed(file.FPath, owner, file.FPath.substr(owner.size()));
    }
  }
  return findings;
}

}  // namespace margindesk
