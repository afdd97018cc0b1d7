#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace margindesk {

// Comma text: items separated by commas. An item may stand between double quotes, with each double quote
// inside it doubled; outside quotes blanks and control characters separate items too.

// Splits a comma text. The empty text has no items; a comma at the end is followed by one empty item.
std::vector<std::string> SplitCommaText(std::string_view text);

// Joins items so that splitting gives them back: an item with a comma, a double quote, a blank or a control
// character is quoted, and so is an empty one where it stands alone.
std::string JoinCommaText(const std::vector<std::string>& items);

}  // namespace margindesk
