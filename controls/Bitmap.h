#pragma once

#include <cstdint>
#include <vector>

namespace margindesk {

// A picture in memory: rows from the top, four bytes a pixel (red, green, blue, alpha). Empty when a side is
// 0.
struct TBitmap {
  std::int32_t FWidth = 0;
  std::int32_t FHeight = 0;
  std::vector<std::uint8_t> FPixels;

  bool IsEmpty() const noexcept { return FWidth == 0 || FHeight == 0; }
};

}  // namespace margindesk
