#include "controls/AccountEdit.h"

namespace margindesk {

void TAccountEdit::HandleKey(char32_t& key) {
  if (key == kKeyEnter) FOnResolve(*this);
  TTextEdit::HandleKey(key);
}

void TAccountEdit::Exit() {
  if (GetEnabled()) FOnResolve(*this);
  TTextEdit::Exit();
}

void TAccountEdit::SendMessage(std::int32_t message, std::int64_t /*first*/, std::int64_t /*second*/) {
  if (message != kAccountEditorMessage) return;
  FOnResolve(*this);
  FireExit();
}

}  // namespace margindesk
