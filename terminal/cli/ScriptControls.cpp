#include "terminal/cli/ScriptControls.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>
#include <type_traits>

#include "controls/Button.h"
#include "controls/CheckBox.h"
#include "controls/ComboBox.h"
#include "controls/GridTableView.h"
#include "controls/Menu.h"
#include "controls/SpinEdit.h"
#include "controls/TextEdit.h"

namespace margindesk {

namespace {

// --- properties

constexpr std::int32_t kLargestSide = 100'000;  // pixels

std::int32_t CheckIndex(std::int32_t index, std::int32_t count) {
  if (index >= 0 && index < count) return index;
  throw TScriptError("index " + IntegerToText(index) + " of " + IntegerToText(count));
}

std::int32_t CheckSide(std::int32_t side) {
  if (side >= 0 && side <= kLargestSide) return side;
  throw TScriptError("a side has 0 to " + IntegerToText(kLargestSide) + " pixels");
}

void ChooseItem(TComboBox& combo, std::int32_t index) {
  combo.SetItemIndex(CheckIndex(index, combo.GetItemCount()));
}

void ChooseItemOfText(TComboBox& combo, const std::string& text) {
  const auto& items = combo.GetItems();
  const auto found = std::ranges::find(items, text);
  if (found == items.end()) throw TScriptError("there is no item " + QuotedForMessage(text));
  combo.SetItemIndex(static_cast<std::int32_t>(found - items.begin()));
}

std::string GetNumberText(const TSpinEdit& edit) {
  return edit.GetNumber() ? FloatToText(*edit.GetNumber()) : std::string();
}

void SetNumberText(TSpinEdit& edit, const std::string& text) {
  double number = 0;
  if (!text.empty() && !TryTextToFloat(text, number)) {
    throw TScriptError(QuotedForMessage(text) + " is no number");
  }
  edit.SetNumber(text.empty() ? std::nullopt : std::optional(number));
}

void FocusRecord(TGridTableView& grid, std::int32_t record) {
  grid.SetFocusedRecordIndex(CheckIndex(record, grid.GetRecordCount()));
}

void ResizeWidth(TControl& control, std::int32_t width) { control.SetWidth(CheckSide(width)); }
void ResizeHeight(TControl& control, std::int32_t height) { control.SetHeight(CheckSide(height)); }

template <class T>
T ReadValue(const TJson& value);
template <>
std::string ReadValue<std::string>(const TJson& value) {
  if (!value.is_string()) throw TScriptError("a text is wanted");
  return value.get<std::string>();
}
template <>
bool ReadValue<bool>(const TJson& value) {
  if (!value.is_boolean()) throw TScriptError("true or false is wanted");
  return value.get<bool>();
}
template <>
std::int32_t ReadValue<std::int32_t>(const TJson& value) {
  if (!value.is_number_integer()) throw TScriptError("a whole number is wanted");
  const double number = value.get<double>();
  if (number < std::numeric_limits<std::int32_t>::min() ||
      number > std::numeric_limits<std::int32_t>::max()) {
    throw TScriptError("the number is out of range");
  }
  return value.get<std::int32_t>();
}

// The type of the value that a setter takes.
template <class T>
struct TSetterValue;
template <class T, class V>
struct TSetterValue<void (T::*)(V)> {
  using TValue = std::decay_t<V>;
};
template <class T, class V>
struct TSetterValue<void (*)(T&, V)> {
  using TValue = std::decay_t<V>;
};

struct TProperty {
  std::string_view FName;
  bool (*FIsOf)(const TControl& control);
  TJson (*FGet)(const TControl& control);
  void (*FSet)(TControl& control, const TJson& value);  // null: not a person's to change
};

template <class T>
bool IsOf(const TControl& control) {
  if constexpr (std::is_same_v<T, TControl>) {
    return true;
  } else {
    return dynamic_cast<const T*>(&control) != nullptr;
  }
}

template <class T, auto Get>
TJson GetOf(const TControl& control) {
  return TJson(std::invoke(Get, dynamic_cast<const T&>(control)));
}

template <class T, auto Set>
void SetOf(TControl& control, const TJson& value) {
  std::invoke(Set, dynamic_cast<T&>(control), ReadValue<typename TSetterValue<decltype(Set)>::TValue>(value));
}

// The first row of that name whose kind the control is counts.
constexpr TProperty kProperties[] = {
    {"Text", &IsOf<TTextEdit>, &GetOf<TTextEdit, &TTextEdit::GetText>,
     &SetOf<TTextEdit, &TTextEdit::SetText>},
    {"Text", &IsOf<TComboBox>, &GetOf<TComboBox, &TComboBox::GetText>, &SetOf<TComboBox, &ChooseItemOfText>},
    {"Text", &IsOf<TSpinEdit>, &GetOf<TSpinEdit, &GetNumberText>, &SetOf<TSpinEdit, &SetNumberText>},
    {"TextHint", &IsOf<TTextEdit>, &GetOf<TTextEdit, &TTextEdit::GetTextHint>, nullptr},
    {"TextHint", &IsOf<TComboBox>, &GetOf<TComboBox, &TComboBox::GetTextHint>, nullptr},
    {"Checked", &IsOf<TCheckBox>, &GetOf<TCheckBox, &TCheckBox::GetChecked>,
     &SetOf<TCheckBox, &TCheckBox::SetChecked>},
    {"Items", &IsOf<TComboBox>, &GetOf<TComboBox, &TComboBox::GetItems>, nullptr},
    {"ItemIndex", &IsOf<TComboBox>, &GetOf<TComboBox, &TComboBox::GetItemIndex>,
     &SetOf<TComboBox, &ChooseItem>},
    {"FocusedRecordIndex", &IsOf<TGridTableView>,
     &GetOf<TGridTableView, &TGridTableView::GetFocusedRecordIndex>, &SetOf<TGridTableView, &FocusRecord>},
    {"Visible", &IsOf<TControl>, &GetOf<TControl, &TControl::GetVisible>, nullptr},
    {"Enabled", &IsOf<TControl>, &GetOf<TControl, &TControl::GetEnabled>, nullptr},
    {"Caption", &IsOf<TControl>, &GetOf<TControl, &TControl::GetCaption>, nullptr},
    {"Hint", &IsOf<TControl>, &GetOf<TControl, &TControl::GetHint>, nullptr},
    {"Width", &IsOf<TControl>, &GetOf<TControl, &TControl::GetWidth>, &SetOf<TControl, &ResizeWidth>},
    {"Height", &IsOf<TControl>, &GetOf<TControl, &TControl::GetHeight>, &SetOf<TControl, &ResizeHeight>},
};

const TProperty& FindProperty(const TControl& control, const std::string& property) {
  const auto* found = std::ranges::find_if(
      kProperties, [&](const TProperty& row) { return row.FName == property && row.FIsOf(control); });
  if (found != std::end(kProperties)) return *found;
  throw TScriptError(QuotedForMessage(control.GetComponentName()) + " has no property " +
                     QuotedForMessage(property));
}

// --- clicks and keys

struct TClick {
  bool (*FIsOf)(const TControl& control);
  void (*FClick)(TControl& control);
};
constexpr TClick kClicks[] = {
    {&IsOf<TButton>, [](TControl& control) { dynamic_cast<TButton&>(control).Click(); }},
    {&IsOf<TMenuItem>, [](TControl& control) { dynamic_cast<TMenuItem&>(control).Click(); }},
    {&IsOf<TCheckBox>,
     [](TControl& control) {
       auto& box = dynamic_cast<TCheckBox&>(control);
       box.SetChecked(!box.GetChecked());
     }},
};

struct TKeyName {
  std::string_view FName;
  char32_t FKey;
};
constexpr TKeyName kKeyNames[] = {{"Enter", kKeyEnter}, {"Backspace", kKeyBackspace}};

// The one character that a well-formed UTF-8 text holds.
std::optional<char32_t> ReadCharacter(std::string_view text) {
  if (text.empty()) return std::nullopt;
  const auto first = static_cast<unsigned char>(text.front());
  const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if (text.size() != length || first < 0x20) return std::nullopt;
  char32_t character = length == 1 ? first : first & (0x7FU >> length);
  for (const char byte : text.substr(1)) {
    character = (character << 6U) | (static_cast<unsigned char>(byte) & 0x3FU);
  }
  return character;
}

char32_t ReadKey(const std::string& key) {
  const auto* named = std::ranges::find(kKeyNames, std::string_view(key), &TKeyName::FName);
  if (named != std::end(kKeyNames)) return named->FKey;
  if (const auto character = ReadCharacter(key)) return *character;
  throw TScriptError(QuotedForMessage(key) + " is no key");
}

}  // namespace

TControl& FindControl(const TFrame& frame, const std::string& name) {
  if (auto* control = dynamic_cast<TControl*>(frame.FindComponent(name))) return *control;
  throw TScriptError("the view has no control " + QuotedForMessage(name));
}

TJson GetControlProperty(const TControl& control, const std::string& property) {
  return FindProperty(control, property).FGet(control);
}

void SetControlProperty(TControl& control, const std::string& property, const TJson& value) {
  const TProperty& row = FindProperty(control, property);
  if (row.FSet == nullptr) {
    throw TScriptError(QuotedForMessage(property) + " of " + QuotedForMessage(control.GetComponentName()) +
                       " is not a person's to change");
  }
  row.FSet(control, value);
}

void ClickControl(TControl& control) {
  const auto* click =
      std::ranges::find_if(kClicks, [&control](const TClick& row) { return row.FIsOf(control); });
  if (click == std::end(kClicks)) {
    throw TScriptError(QuotedForMessage(control.GetComponentName()) + " cannot be clicked");
  }
  click->FClick(control);
}

void PressKeyInControl(TControl& control, const std::string& key) {
  const char32_t pressed = ReadKey(key);
  if (auto* edit = dynamic_cast<TTextEdit*>(&control)) return edit->PressKey(pressed);
  if (auto* combo = dynamic_cast<TComboBox*>(&control)) return combo->PressKey(pressed);
  throw TScriptError(QuotedForMessage(control.GetComponentName()) + " takes no keys");
}

}  // namespace margindesk
