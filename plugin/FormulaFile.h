#pragma once

#include <string_view>

#include "accountinfo/view/FormulaMap.h"

namespace margindesk {

// Adds one language of a formula file to the map. Its section begins behind the first "[CODE]" of the file
// and ends before the next "["; in it a line "key = formula" is an entry, and a later entry replaces an
// earlier one with the same key. A line without "=", or with more than one, is passed over. A section that is
// missing or has no entry leaves the map as it was, without a map for the language if there was none.
void ReadFormulaSection(std::string_view text, std::string_view languageCode, TFormulaMapList& formulas);

}  // namespace margindesk
