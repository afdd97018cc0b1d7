#pragma once

#include <vector>

#include "tools/conventions/SourceTree.h"

namespace margindesk {

// The include lines in `sources` that the folder of their file does not allow, that name no file of `sources`
// from the repository's root, or that the tables of this rule do not know; and the exceptions that nobody
// needs.
std::vector<TFinding> CheckIncludes(const std::vector<TSourceFile>& sources);

}  // namespace margindesk
