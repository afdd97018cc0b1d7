#pragma once

#include <cstdint>

namespace margindesk {

enum class TAlignment { Left, Center, Right };

// Pixels. A control's own points count from its upper left corner.
struct TPoint {
  std::int32_t FX = 0;
  std::int32_t FY = 0;

  friend bool operator==(const TPoint&, const TPoint&) = default;
};

struct TRect {
  std::int32_t FLeft = 0;
  std::int32_t FTop = 0;
  std::int32_t FWidth = 0;
  std::int32_t FHeight = 0;

  bool Contains(TPoint point) const noexcept {
    return point.FX >= FLeft && point.FX < FLeft + FWidth && point.FY >= FTop && point.FY < FTop + FHeight;
  }
  friend bool operator==(const TRect&, const TRect&) = default;
};

}  // namespace margindesk
