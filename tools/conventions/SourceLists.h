#pragma once

#include <vector>

#include "tools/conventions/SourceTree.h"

namespace margindesk {

// The .cpp files among `files` that the nearest CMakeLists.txt at or above their folder does not name, the
// repository's own at the top not counting, and the folders with a CMakeLists.txt that the next one above
// does not name: they would be written and never built.
std::vector<TFinding> CheckSourceLists(const std::vector<TSourceFile>& files);

}  // namespace margindesk
