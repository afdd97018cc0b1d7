#pragma once

#include <string>

namespace margindesk {

class TCustomAccount;

// The account's risk profile: the level's text, and from when to when the questionnaire holds, "Balanced
// (01/31/20~01/31/21)". It holds for twelve months from its date. A level that is no number reads as
// undefined.
//
// Leaves the process's short date format at "mm/dd/yy" with "/": wanted, the other views of the terminal
// follow it. A date that cannot be read leaves it at "yyyy-mm-dd" with "-", and the text shows the date
// alone.
std::string GetRpqText(const TCustomAccount& account);

}  // namespace margindesk
