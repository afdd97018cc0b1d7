#pragma once

#include <cstdint>

#include "controls/EditProperties.h"

namespace margindesk {

// A button in a cell, beside its text or in place of it.
class TButtonEditProperties : public TEditProperties {
 public:
  using TEditProperties::TEditProperties;

  bool FButtonsOnly = false;
  std::int32_t FImageIndex = -1;  // in the form's image list; -1 for none
};

}  // namespace margindesk
