#pragma once

#include "controls/GridTableView.h"

namespace margindesk {

// The window of a grid; what it shows is its view.
class TGrid : public TControl {
 public:
  TGrid(TComponent* owner, std::string name, TGridTableView* view)
      : TControl(owner, std::move(name)), FView(view) {}

  TGridTableView* GetView() const noexcept { return FView; }  // a component of the form

 private:
  TGridTableView* FView;
};

}  // namespace margindesk
