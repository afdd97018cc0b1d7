#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "model/contract/Service.h"

namespace margindesk {

// A colour as 0x00BBGGRR: 255 is pure red.
using TColor = std::uint32_t;

class TCustomLookAndFeelService : public TService<TCustomLookAndFeelService> {
 public:
  virtual std::string GetSkinName() const = 0;
  // The current skin's colour of a key; the first argument is null. An unknown key gives 0 (black).
  virtual TColor GetColor(const void* extra, std::string_view key) const = 0;
};

extern template class TService<TCustomLookAndFeelService>;

}  // namespace margindesk
