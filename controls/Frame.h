#pragma once

#include <cstdint>

#include "controls/Control.h"

namespace margindesk {

// A form that the host places in a window of its own: the owner of its controls.
class TFrame : public TControl {
 public:
  using TControl::TControl;

  // The design size in pixels at 100 % scale.
  std::int32_t FDesignWidth = 0;
  std::int32_t FDesignHeight = 0;
};

}  // namespace margindesk
