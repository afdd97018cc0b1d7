#pragma once

#include <limits>

#include "controls/EditProperties.h"

namespace margindesk {

// A number with spin buttons. Spinning stays within the limits; a number typed above the larger one is
// refused, one below the smaller stands for the form to judge.
class TSpinEditProperties : public TEditProperties {
 public:
  using TEditProperties::TEditProperties;

  double FMinimum = std::numeric_limits<double>::lowest();
  double FMaximum = std::numeric_limits<double>::max();
  double FIncrement = 1;
};

}  // namespace margindesk
