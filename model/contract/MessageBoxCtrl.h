#pragma once

#include <cstdint>
#include <string_view>

#include "model/contract/Service.h"

namespace margindesk {

inline constexpr std::int32_t kConfirmationYes = 6;

// Modal messages.
class TCustomMessageBoxCtrl : public TService<TCustomMessageBoxCtrl> {
 public:
  virtual void ShowMessage(std::string_view text) = 0;
  virtual std::int32_t ShowConfirmation(std::string_view text) = 0;  // kConfirmationYes means yes
};

extern template class TService<TCustomMessageBoxCtrl>;

}  // namespace margindesk
