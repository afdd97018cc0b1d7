#include "controls/CellEditor.h"

#include <algorithm>
#include <utility>

#include "controls/ComboBoxProperties.h"
#include "controls/SpinEditProperties.h"

namespace margindesk {

TCellEditor::TCellEditor(std::int32_t record, std::int32_t columnTag, TEditProperties* properties,
                         TVariant value)
    : FRecord(record), FColumnTag(columnTag), FProperties(properties), FValue(std::move(value)) {
  if (const auto* list = dynamic_cast<const TComboBoxProperties*>(properties)) FItems = list->FItems;
}

bool TCellEditor::IsSpin() const noexcept {
  return dynamic_cast<const TSpinEditProperties*>(FProperties) != nullptr;
}

bool TCellEditor::IsDropDown() const noexcept {
  return dynamic_cast<const TComboBoxProperties*>(FProperties) != nullptr;
}

void TCellEditor::SetValue(TVariant value) {
  FModified = true;
  if (value == FValue) return;
  FValue = std::move(value);
  if (FProperties != nullptr) FProperties->FOnChange(*this);
}

std::int32_t TCellEditor::GetItemIndex() const {
  const auto found = std::ranges::find(FItems, FValue.AsText());
  return found == FItems.end() ? -1 : static_cast<std::int32_t>(found - FItems.begin());
}

void TCellEditor::SetCaretToEnd() {
  const std::string text = FValue.AsText();
  FCaret = static_cast<std::int32_t>(std::ranges::count_if(
      text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }));
}

}  // namespace margindesk
