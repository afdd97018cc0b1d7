#pragma once

#include <vector>

#include "controls/EditProperties.h"

namespace margindesk {

// The edit properties of a form that several cells share, known by their component names.
class TEditRepository : public TControl {
 public:
  using TControl::TControl;

  const std::vector<TEditProperties*>& GetItems() const noexcept { return FItems; }
  void AddItem(TEditProperties* item) { FItems.push_back(item); }  // a component of the form

 private:
  std::vector<TEditProperties*> FItems;
};

}  // namespace margindesk
