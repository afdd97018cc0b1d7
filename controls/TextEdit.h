#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "controls/Control.h"

namespace margindesk {

// Characters that a front hands to PressKey.
inline constexpr char32_t kKeyNone = 0;  // a key that a form has discarded
inline constexpr char32_t kKeyBackspace = 8;
inline constexpr char32_t kKeyEnter = 13;

// A one-line edit.
class TTextEdit : public TValueControl<std::string> {
 public:
  using TValueControl::TValueControl;

  const std::string& GetText() const noexcept { return Value(); }
  void SetText(std::string text);  // in upper case (ASCII) where the edit asks for it

  bool GetUpperCase() const noexcept { return FUpperCase; }
  void SetUpperCase(bool upperCase) { FUpperCase = upperCase; }
  // Shown greyed while the edit is empty.
  const std::string& GetTextHint() const noexcept { return FTextHint; }
  void SetTextHint(std::string hint) { Assign(FTextHint, std::move(hint)); }

  // In characters from the start of the text; a shorter text cuts the selection.
  std::int32_t GetSelectionStart() const noexcept { return FSelectionStart; }
  std::int32_t GetSelectionLength() const noexcept { return FSelectionLength; }
  void SetSelectionStart(std::int32_t start);  // and selects nothing
  void SelectAll();

  // What a front reports of the person at the keyboard. A pressed key goes through the form's key event,
  // which may discard it; a character then stands at the end of the text, backspace takes the last one away.
  // Disabled edits take nothing.
  void PressKey(char32_t key);
  virtual void Exit();  // the person leaves the edit

  void SetOnKeyPress(TEvent<char32_t&> event) noexcept { FOnKeyPress = event; }
  void SetOnExit(TEvent<> event) noexcept { FOnExit = event; }

 protected:
  virtual void HandleKey(char32_t& key) { FOnKeyPress(key); }
  void FireExit() { FOnExit(); }

  // Expires with the edit: an event may close the form.
  std::weak_ptr<const bool> GetLife() const noexcept { return FLife; }

 private:
  bool FUpperCase = false;
  std::int32_t FSelectionStart = 0;
  std::int32_t FSelectionLength = 0;
  std::string FTextHint;
  TEvent<char32_t&> FOnKeyPress;
  TEvent<> FOnExit;
  const std::shared_ptr<const bool> FLife = std::make_shared<const bool>(true);
};

}  // namespace margindesk
