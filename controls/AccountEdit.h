#pragma once

#include <cstdint>
#include <string>

#include "controls/TextEdit.h"

namespace margindesk {

// Asks an account box to take its text as the chosen account; both parameters are 0.
inline constexpr std::int32_t kAccountEditorMessage = 0xB01B;

// An account box. The text is what a person typed; the host's account editor, while it is registered, turns
// it into the chosen account and writes that into the hint before the form hears of the Enter key or of the
// exit.
class TAccountEdit : public TTextEdit {
 public:
  using TTextEdit::TTextEdit;

  void Exit() override;
  // The account editor chose an account for this box and has written it: the form acts as on an exit.
  void NotifyChosen() { FireExit(); }
  // A message of the account editor, as if sent to the box's window. Unknown messages do nothing.
  void SendMessage(std::int32_t message, std::int64_t first, std::int64_t second);

  // The host's account editor: takes the text over. Empty while no editor is registered.
  void SetOnResolve(TEvent<TAccountEdit&> event) noexcept { FOnResolve = event; }

 protected:
  void HandleKey(char32_t& key) override;

 private:
  bool Resolve();

  TEvent<TAccountEdit&> FOnResolve;
};

}  // namespace margindesk
