#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "controls/Control.h"

namespace margindesk {

// A drop-down list; its value is the index of the chosen item, -1 for none.
class TComboBox : public TValueControl<std::int32_t> {
 public:
  TComboBox(TComponent* owner, std::string name) : TValueControl(owner, std::move(name)) { ChangeValue(-1); }

  const std::vector<std::string>& GetItems() const noexcept { return FItems; }
  std::int32_t GetItemCount() const noexcept { return static_cast<std::int32_t>(FItems.size()); }
  void Clear();  // takes the choice back, too
  void AddItem(std::string text);
  void InsertItem(std::int32_t index, std::string text);  // the index of the chosen item stays what it is
  void SetItem(std::int32_t index, std::string text);     // nothing for an index out of range

  std::int32_t GetItemIndex() const noexcept { return Value(); }
  void SetItemIndex(std::int32_t index);  // -1 for an index out of range
  std::string GetText() const;            // of the chosen item, "" for none

  const std::string& GetTextHint() const noexcept { return FTextHint; }
  void SetTextHint(std::string hint) { Assign(FTextHint, std::move(hint)); }

  // What a front reports of the person at the keyboard, through the form's key event: a character chooses the
  // next item that begins with it (ASCII letter case aside), backspace takes the choice back.
  void PressKey(char32_t key);
  void SetOnKeyPress(TEvent<char32_t&> event) noexcept { FOnKeyPress = event; }

 private:
  std::vector<std::string> FItems;
  std::string FTextHint;
  TEvent<char32_t&> FOnKeyPress;
};

}  // namespace margindesk
