#pragma once

#include <string>
#include <vector>

#include "controls/Control.h"

namespace margindesk {

class TMenuItem : public TControl {
 public:
  using TControl::TControl;

  // A person picks the item. One that is hidden or disabled cannot be picked.
  void Click() {
    if (GetVisible() && GetEnabled()) FOnClick();
  }
  void SetOnClick(TEvent<> event) noexcept { FOnClick = event; }

 private:
  TEvent<> FOnClick;
};

// A right-click menu. Its items belong to the form, as it does.
class TPopupMenu : public TControl {
 public:
  using TControl::TControl;

  const std::vector<TMenuItem*>& GetItems() const noexcept { return FItems; }
  void AddItem(TMenuItem* item) {
    FItems.push_back(item);
    Updated();
  }

 private:
  std::vector<TMenuItem*> FItems;
};

}  // namespace margindesk
