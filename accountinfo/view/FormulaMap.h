#pragma once

#include <map>
#include <string>

namespace margindesk {

// How figures are computed, in words: language code ("ENG") to back-office key to formula.
using TFormulaMapList = std::map<std::string, std::map<std::string, std::string, std::less<>>, std::less<>>;

}  // namespace margindesk
