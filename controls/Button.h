#pragma once

#include "controls/Control.h"

namespace margindesk {

class TButton : public TControl {
 public:
  using TControl::TControl;

  // A disabled button does nothing.
  void Click() {
    if (GetEnabled()) FOnClick();
  }
  void SetOnClick(TEvent<> event) noexcept { FOnClick = event; }

 private:
  TEvent<> FOnClick;
};

}  // namespace margindesk
