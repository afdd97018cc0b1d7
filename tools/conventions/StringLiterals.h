#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace margindesk {

// A string literal of a C++ source: what stands between its quotes, escapes as they are written, and its
// line.
struct TStringLiteral {
  std::string_view FText;
  std::size_t FLine;
};

// The string literals of a C++ source in their order, raw ones included; comments and character literals hold
// none. The texts point into `source`.
std::vector<TStringLiteral> StringLiterals(std::string_view source);

}  // namespace margindesk
