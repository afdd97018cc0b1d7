// A person edits a cell of a grid.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "controls/ComboBoxProperties.h"
#include "controls/GridTableView.h"
#include "controls/PopupEditProperties.h"
#include "controls/SpinEditProperties.h"

namespace margindesk {

namespace {

constexpr const char* kNoEditor = "no cell is being edited";

bool IsBlank(const TVariant& value) { return !value.IsNumber() && TrimText(value.AsText()).empty(); }

// What an editor makes of a value that is typed or pasted. Answers "" or why it cannot be held.
std::string Convert(const TCellEditor& editor, TVariant& value) {
  if (IsBlank(value)) {
    if (editor.GetProperties() != nullptr && !editor.GetProperties()->FAllowEmpty) {
      return "the cell cannot be empty";
    }
    if (!value.IsText() || editor.GetProperties() == nullptr || editor.IsSpin() || editor.IsDropDown()) {
      value = TVariant::Null();
    }
    return {};
  }
  if (editor.IsDropDown()) {
    value = TVariant::Text(value.AsText());
    if (std::ranges::find(editor.GetItems(), value.AsText()) != editor.GetItems().end()) return {};
    return "'" + value.AsText() + "' is not in the list";
  }
  if (!editor.IsSpin()) {
    if (editor.GetProperties() != nullptr) value = TVariant::Text(value.AsText());
    return {};
  }
  const std::string text = value.AsText();
  double number = 0;
  if (!TryTextToFloat(TrimText(text), number)) return "'" + text + "' is not a number";
  const double largest = static_cast<const TSpinEditProperties*>(editor.GetProperties())->FMaximum;
  if (number > largest) return text + " is above " + FloatToText(largest);
  value = TVariant::Float(number);
  return {};
}

TControl* GetPanel(const TCellEditor& editor) {
  const auto* popup = dynamic_cast<const TPopupEditProperties*>(editor.GetProperties());
  return popup == nullptr ? nullptr : popup->FPopupControl;
}

}  // namespace

std::string TGridTableView::OpenEditor(std::int32_t record, std::int32_t tag) {
  const TGridColumn* const column = FindColumn(tag);
  if (column == nullptr) return "there is no such column";
  if (!IsRecord(record)) return "there is no such record";
  if (FEditor && (FEditor->GetRecord() != record || FEditor->GetColumnTag() != tag)) {
    if (std::string refusal = CommitEditor(); !refusal.empty()) return refusal;
  }
  SetFocusedRecordIndex(record);
  if (FEditor) return {};
  bool allowed = column->FAllowEditing && GetEnabled() && FDataSource == nullptr;
  if (allowed) FOnEditing(*column, allowed);
  if (!allowed) return "the cell cannot be edited";
  FEditor.emplace(record, tag, GetProperties(record, *column), GetValue(record, tag));
  Updated();
  return {};
}

void TGridTableView::PressEditorKey(char32_t key) {
  if (!FEditor) return;
  if (const TGridColumn* const column = FindColumn(FEditor->GetColumnTag())) {
    FOnEditKeyDown(*column, *FEditor, key);
  }
}

std::string TGridTableView::TypeInEditor(TVariant value) {
  if (!FEditor) return kNoEditor;
  if (std::string refusal = Convert(*FEditor, value); !refusal.empty()) return refusal;
  FEditor->SetValue(std::move(value));
  Updated();
  return {};
}

std::string TGridTableView::ChooseInEditor(std::int32_t index) {
  if (!FEditor) return kNoEditor;
  const auto& items = FEditor->GetItems();
  if (index < 0 || static_cast<std::size_t>(index) >= items.size()) return "the list has no such entry";
  return TypeInEditor(TVariant::Text(items[static_cast<std::size_t>(index)]));
}

std::string TGridTableView::SpinEditor(bool up, bool byKey) {
  if (!FEditor) return kNoEditor;
  if (!FEditor->IsSpin()) return "the cell has no spin buttons";
  if (byKey) PressEditorKey(up ? kKeyUp : kKeyDown);
  const auto& spin = *static_cast<const TSpinEditProperties*>(FEditor->GetProperties());
  const double step = up ? spin.FIncrement : -spin.FIncrement;
  const double number = FEditor->GetValue().AsFloatOr(0) + step;
  if (!std::isfinite(number)) return "the number would be too large";
  FEditor->SetValue(
      TVariant::Float(std::clamp(number, std::min(spin.FMinimum, spin.FMaximum), spin.FMaximum)));
  Updated();
  return {};
}

std::string TGridTableView::DropDownEditor() {
  if (!FEditor) return kNoEditor;
  if (FEditor->GetProperties() == nullptr) return "nothing drops down";
  TControl* const panel = GetPanel(*FEditor);
  if (panel == nullptr && !FEditor->IsDropDown()) return "nothing drops down";
  FEditor->GetProperties()->FOnPopup(*FEditor);
  if (panel != nullptr) panel->SetVisible(true);
  Updated();
  return {};
}

std::string TGridTableView::CommitEditor() {
  if (!FEditor) return {};
  const TGridColumn* const column = FindColumn(FEditor->GetColumnTag());
  if (column == nullptr || !FEditor->IsModified()) {
    CancelEditor();
    return {};
  }
  TVariant value = FEditor->GetValue();
  std::string refusal;
  column->FOnValidate(value, refusal);
  if (!refusal.empty() || !FEditor) return refusal;
  const std::int32_t record = FEditor->GetRecord();
  const std::int32_t tag = FEditor->GetColumnTag();
  CancelEditor();
  SetValue(record, tag, std::move(value));
  return {};
}

void TGridTableView::CancelEditor() {
  if (!FEditor) return;
  if (TControl* const panel = GetPanel(*FEditor)) panel->SetVisible(false);
  FEditor.reset();
  Updated();
}

std::string TGridTableView::EditCell(std::int32_t record, std::int32_t tag, TVariant value) {
  std::string refusal = OpenEditor(record, tag);
  if (!refusal.empty()) return refusal;
  if (!FEditor->IsDropDown()) {
    const std::string text = value.AsText();
    PressEditorKey(text.empty() ? U'\b' : static_cast<unsigned char>(text.back()));
  }
  refusal = TypeInEditor(std::move(value));
  if (refusal.empty()) refusal = CommitEditor();
  CancelEditor();
  return refusal;
}

std::string TGridTableView::SpinCell(std::int32_t record, std::int32_t tag, std::int32_t steps, bool byKey) {
  std::string refusal = OpenEditor(record, tag);
  for (std::int32_t step = std::abs(steps); refusal.empty() && step > 0; --step) {
    refusal = SpinEditor(steps > 0, byKey);
  }
  if (refusal.empty()) refusal = CommitEditor();
  CancelEditor();
  return refusal;
}

}  // namespace margindesk
