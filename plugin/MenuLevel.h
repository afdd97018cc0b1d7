#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "model/ResourceText.h"

namespace margindesk {

// One level of a view's menu entry.
struct TMenuLevel {
  std::int32_t FIndex;  // among its neighbours
  std::int32_t FID;
  std::string_view FResourceKey;
};

// The level that all views of accounts hang under.
inline constexpr TMenuLevel kAccountMenuLevel{3100, 103, "Res_Account"};

// A level; one that is out of range has index -1, no identifier and no caption.
inline TMenuLevel GetMenuLevelOf(std::span<const TMenuLevel> levels, std::int32_t level) {
  return level >= 0 && static_cast<std::size_t>(level) < levels.size()
             ? levels[static_cast<std::size_t>(level)]
             : TMenuLevel{-1, 0, {}};
}

inline std::string GetMenuLevelCaption(const TMenuLevel& level) {
  return level.FResourceKey.empty() ? std::string() : GetResourceText(level.FResourceKey);
}

}  // namespace margindesk
