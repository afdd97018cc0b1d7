#pragma once

#include <cstdint>

namespace margindesk {

// Has the toolkit's own windows (choosing a file, asking for a name) and the menus of text boxes speak a
// language of the terminal (kLanguage...). Without the toolkit's translations they stay English.
void UseToolkitTexts(std::int32_t language);

}  // namespace margindesk
