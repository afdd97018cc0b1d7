#pragma once

#include <cstdint>

namespace margindesk {

// Blue, green, red from the highest byte to the lowest: 255 is pure red.
using TColor = std::uint32_t;

inline constexpr TColor kColorNone = 0xFFFFFFFF;  // the front's own colour
inline constexpr TColor kColorYellow = 0x00FFFF;

}  // namespace margindesk
