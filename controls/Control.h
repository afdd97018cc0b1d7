#pragma once

#include <string>

#include "model/contract/Component.h"

namespace margindesk {

// The base of the control models: what a frame sets and reads of a control, without a toolkit. A control
// belongs to its form.
class TControl : public TComponent {
 public:
  using TComponent::TComponent;
};

}  // namespace margindesk
