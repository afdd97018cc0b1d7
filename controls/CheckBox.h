#pragma once

#include "controls/Control.h"

namespace margindesk {

class TCheckBox : public TValueControl<bool> {
 public:
  using TValueControl::TValueControl;

  bool GetChecked() const noexcept { return Value(); }
  void SetChecked(bool checked) { ChangeValue(checked); }
};

}  // namespace margindesk
