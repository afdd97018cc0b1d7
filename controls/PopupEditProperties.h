#pragma once

#include <cstdint>

#include "controls/EditProperties.h"

namespace margindesk {

// A text with a panel that drops down.
class TPopupEditProperties : public TEditProperties {
 public:
  using TEditProperties::TEditProperties;

  TControl* FPopupControl = nullptr;  // null: nothing drops down
  std::int32_t FPopupWidth = 0;       // pixels
  std::int32_t FPopupHeight = 0;
};

}  // namespace margindesk
