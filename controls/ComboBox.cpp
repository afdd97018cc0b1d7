#include "controls/ComboBox.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "controls/TextEdit.h"
#include "model/contract/Variant.h"

namespace margindesk {

void TComboBox::Clear() {
  SetItemIndex(-1);
  if (FItems.empty()) return;
  FItems.clear();
  Updated();
}

void TComboBox::AddItem(std::string text) { InsertItem(GetItemCount(), std::move(text)); }

void TComboBox::InsertItem(std::int32_t index, std::string text) {
  index = std::clamp(index, 0, GetItemCount());
  FItems.insert(FItems.begin() + index, std::move(text));
  Updated();
}

void TComboBox::SetItem(std::int32_t index, std::string text) {
  if (index >= 0 && index < GetItemCount()) Assign(FItems[static_cast<std::size_t>(index)], std::move(text));
}

void TComboBox::SetItemIndex(std::int32_t index) {
  ChangeValue(index >= 0 && index < GetItemCount() ? index : -1);
}

std::string TComboBox::GetText() const {
  return GetItemIndex() < 0 ? std::string() : FItems[static_cast<std::size_t>(GetItemIndex())];
}

void TComboBox::PressKey(char32_t key) {
  if (!GetEnabled()) return;
  FOnKeyPress(key);
  if (key == kKeyBackspace) SetItemIndex(-1);
  if (key < U' ' || key > U'~') return;
  const std::string wanted(1, static_cast<char>(key));
  for (std::int32_t step = 1; step <= GetItemCount(); ++step) {
    const std::int32_t index = (GetItemIndex() + step) % GetItemCount();
    const std::string_view text = FItems[static_cast<std::size_t>(index)];
    if (SameTextIgnoringCase(text.substr(0, 1), wanted)) return SetItemIndex(index);
  }
}

}  // namespace margindesk
