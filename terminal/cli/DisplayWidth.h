#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace margindesk {

// How many columns a UTF-8 text takes on a terminal: two for a wide (Chinese, Japanese, Korean, full-width)
// character, none for one that is put on the one before it, else one.
std::size_t GetDisplayWidth(std::string_view text);

// A text of unknown origin made fit for one line of a terminal: control characters become blanks, bytes that
// are not UTF-8 question marks.
std::string MakeOneLine(std::string_view text);

}  // namespace margindesk
