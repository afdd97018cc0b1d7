#include "controls/AccountEdit.h"

namespace margindesk {

// Answers whether the edit is still there: others who follow it are told, and may close its form.
bool TAccountEdit::Resolve() {
  const auto life = GetLife();
  FOnResolve(*this);
  return !life.expired();
}

void TAccountEdit::HandleKey(char32_t& key) {
  if (key == kKeyEnter && !Resolve()) return;
  TTextEdit::HandleKey(key);
}

void TAccountEdit::Exit() {
  if (GetEnabled() && Resolve()) TTextEdit::Exit();
}

void TAccountEdit::SendMessage(std::int32_t message, std::int64_t /*first*/, std::int64_t /*second*/) {
  if (message == kAccountEditorMessage && Resolve()) FireExit();
}

}  // namespace margindesk
