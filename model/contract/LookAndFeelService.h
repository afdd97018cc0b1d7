#pragma once

#include <string>
#include <string_view>

#include "controls/Color.h"
#include "model/contract/Service.h"

namespace margindesk {

class TCustomLookAndFeelService : public TService<TCustomLookAndFeelService> {
 public:
  virtual std::string GetSkinName() const = 0;
  // The current skin's colour of a key; the first argument is null. An unknown key gives 0 (black).
  virtual TColor GetColor(const void* extra, std::string_view key) const = 0;
};

extern template class TService<TCustomLookAndFeelService>;

}  // namespace margindesk
