#pragma once

#include <string_view>

namespace margindesk {

// True when the bytes are well-formed UTF-8: no stray or missing continuation bytes, no overlong forms, no
// surrogates, nothing above U+10FFFF.
bool IsUtf8(std::string_view text);

}  // namespace margindesk
