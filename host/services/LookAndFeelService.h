#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/contract/LookAndFeelService.h"

namespace margindesk {

// A colour in configuration text: "0x" or "$" and hexadecimal digits, or decimal digits, always in the order
// blue, green, red (255 is pure red). None when it is something else or above 0xFFFFFF.
std::optional<TColor> ParseColor(std::string_view text);

// Two skins, "Light" and "Dark". The user section's "SkinName" chooses; Light when it names neither. Each
// skin has its section of the configuration, named like the skin, in which a colour key replaces the skin's
// colour.
class TLookAndFeelService : public TCustomLookAndFeelService {
 public:
  std::string GetSkinName() const override;
  TColor GetColor(const void* extra, std::string_view key) const override;
};

}  // namespace margindesk
