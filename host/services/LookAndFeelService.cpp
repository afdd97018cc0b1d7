#include "host/services/LookAndFeelService.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "model/contract/ConfigManager.h"
#include "model/contract/Variant.h"

namespace margindesk {

namespace {

struct TSkinColor {
  std::string_view FKey;
  TColor FLight;
  TColor FDark;
};

// 0xBBGGRR.
constexpr std::array<TSkinColor, 4> kSkinColors = {{
    {"coBackground", 0xFFFFFF, 0x262322},
    {"coText", 0x1E1A18, 0xE8E6E4},
    {"coNegativeAmount", 0x1C1CC8, 0x6B6BFF},
    {"coMarginSimulateDiffBgColor", 0x0000FF, 0x0000FF},
}};

constexpr std::string_view kLight = "Light";
constexpr std::string_view kDark = "Dark";

}  // namespace

std::optional<TColor> ParseColor(std::string_view text) {
  int base = 10;
  for (const std::string_view prefix : {"0x", "0X", "$"}) {
    if (!text.starts_with(prefix)) continue;
    text.remove_prefix(prefix.size());
    base = 16;
    break;
  }
  TColor color = 0;
  const char* const end = text.data() + text.size();
  const auto [stopped, fault] = std::from_chars(text.data(), end, color, base);
  if (fault != std::errc() || stopped != end || color > 0xFFFFFF) return std::nullopt;
  return color;
}

std::string TLookAndFeelService::GetSkinName() const {
  const TCustomConfigManager& config = TCustomConfigManager::GetInstance();
  const std::string name = config.ReadString(config.GetUserSection(), "SkinName");
  return std::string(SameTextIgnoringCase(name, kDark) ? kDark : kLight);
}

TColor TLookAndFeelService::GetColor(const void* /*extra*/, std::string_view key) const {
  const std::string skin = GetSkinName();
  if (const auto own = ParseColor(TCustomConfigManager::GetInstance().ReadString(skin, key))) return *own;
  const auto found = std::find_if(kSkinColors.begin(), kSkinColors.end(),
                                  [key](const TSkinColor& color) { return color.FKey == key; });
  if (found == kSkinColors.end()) return 0;
  return skin == kDark ? found->FDark : found->FLight;
}

}  // namespace margindesk
