#pragma once

#include <limits>

#include "controls/EditProperties.h"

namespace margindesk {

// A number with spin buttons.
class TSpinEditProperties : public TEditProperties {
 public:
  using TEditProperties::TEditProperties;

  double FMinimum = std::numeric_limits<double>::lowest();
  double FMaximum = std::numeric_limits<double>::max();
  double FIncrement = 1;
};

}  // namespace margindesk
