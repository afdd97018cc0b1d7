#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace margindesk {

// A text file of the repository. The path is relative to the repository's folder, with forward slashes.
struct TSourceFile {
  std::string FPath;
  std::string FText;
};

// A place that breaks a convention, and why. Lines count from 1.
struct TFinding {
  std::string FFile;
  std::size_t FLine;
  std::string FReason;
};

// All files below `root` whose names end in one of `endings`, in the order of their paths. Folders whose
// names begin with a dot and the build folder at the top are left out.
std::vector<TSourceFile> ReadTree(const std::filesystem::path& root, const std::vector<std::string>& endings);

// The lines of a text without their ends.
std::vector<std::string_view> SplitLines(std::string_view text);

// "file:line: reason", a line for each; empty for none.
std::string Describe(const std::vector<TFinding>& findings);

}  // namespace margindesk
