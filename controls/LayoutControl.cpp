#include "controls/LayoutControl.h"

#include <algorithm>

namespace margindesk {

bool TBaseLayoutItem::IsShown() const noexcept {
  return GetVisible() && (FParent == nullptr || FParent->IsShown());
}

void TLayoutGroup::InsertItem(std::size_t index, TBaseLayoutItem* item) {
  if (item->FParent != nullptr) {
    std::erase(item->FParent->FItems, item);
    item->FParent->Updated();
  }
  index = std::min(index, FItems.size());
  FItems.insert(FItems.begin() + static_cast<std::ptrdiff_t>(index), item);
  item->FParent = this;
  Updated();
}

}  // namespace margindesk
