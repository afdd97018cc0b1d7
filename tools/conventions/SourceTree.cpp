#include "tools/conventions/SourceTree.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace margindesk {
namespace {

std::string ReadText(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path.string());
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

std::vector<TSourceFile> ReadTree(const std::filesystem::path& root,
                                  const std::vector<std::string>& endings) {
  std::vector<TSourceFile> files;
  std::filesystem::recursive_directory_iterator entry(root);
  for (; entry != std::filesystem::recursive_directory_iterator(); ++entry) {
    const std::string name = entry->path().filename().string();
    if (entry->is_directory()) {
      if (name.starts_with('.') || (entry.depth() == 0 && name == "build")) entry.disable_recursion_pending();
    } else if (std::ranges::any_of(endings, [&](const auto& ending) { return name.ends_with(ending); })) {
      files.push_back({entry->path().lexically_relative(root).generic_string(), ReadText(entry->path())});
    }
  }
  std::ranges::sort(files, {}, &TSourceFile::FPath);
  return files;
}

std::vector<std::string_view> SplitLines(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    lines.push_back(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

std::string Describe(const std::vector<TFinding>& findings) {
  std::string text;
  for (const TFinding& finding : findings) {
    text += finding.FFile + ":" + std::to_string(finding.FLine) + ": " + finding.FReason + "\n";
  }
  return text;
}

}  // namespace margindesk
