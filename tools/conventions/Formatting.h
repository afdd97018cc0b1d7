#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tools/conventions/SourceTree.h"

namespace margindesk {

// The clang-format to use, version 14 by preference since versions differ in taste; empty when none is
// installed.
std::string FindFormatter();

// The places in `files` (paths below `root`) that the formatter would write otherwise, by the rules of
// `style`.
std::vector<TFinding> CheckFormatting(const std::string& formatter, const std::filesystem::path& style,
                                      const std::filesystem::path& root,
                                      const std::vector<std::string>& files);

}  // namespace margindesk
