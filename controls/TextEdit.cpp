#include "controls/TextEdit.h"

#include <algorithm>

#include "model/contract/Variant.h"

namespace margindesk {

namespace {

constexpr char32_t kFirstPrintable = 32;

bool ContinuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

void AppendUtf8(std::string& text, char32_t character) {
  const auto append = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (character < 0x80) {
    append(character);
  } else if (character < 0x800) {
    append(0xC0U | (character >> 6U));
    append(0x80U | (character & 0x3FU));
  } else if (character < 0x10000) {
    append(0xE0U | (character >> 12U));
    append(0x80U | ((character >> 6U) & 0x3FU));
    append(0x80U | (character & 0x3FU));
  } else {
    append(0xF0U | (character >> 18U));
    append(0x80U | ((character >> 12U) & 0x3FU));
    append(0x80U | ((character >> 6U) & 0x3FU));
    append(0x80U | (character & 0x3FU));
  }
}

void RemoveLastCharacter(std::string& text) {
  while (!text.empty() && ContinuesCharacter(text.back())) text.pop_back();
  if (!text.empty()) text.pop_back();
}

std::int32_t CountCharacters(const std::string& text) {
  return static_cast<std::int32_t>(
      std::ranges::count_if(text, [](char byte) { return !ContinuesCharacter(byte); }));
}

}  // namespace

void TTextEdit::SetText(std::string text) {
  if (FUpperCase) text = UpperCaseText(text);
  const std::int32_t count = CountCharacters(text);
  FSelectionStart = std::min(FSelectionStart, count);
  FSelectionLength = std::min(FSelectionLength, count - FSelectionStart);
  ChangeValue(std::move(text));
}

void TTextEdit::SetSelectionStart(std::int32_t start) {
  Assign(FSelectionStart, std::clamp(start, 0, CountCharacters(GetText())));
  Assign(FSelectionLength, 0);
}

void TTextEdit::SelectAll() {
  Assign(FSelectionStart, 0);
  Assign(FSelectionLength, CountCharacters(GetText()));
}

void TTextEdit::PressKey(char32_t key) {
  if (!GetEnabled()) return;
  const auto life = GetLife();
  HandleKey(key);
  if (life.expired()) return;
  std::string text = GetText();
  if (key == kKeyBackspace) {
    RemoveLastCharacter(text);
  } else if (key >= kFirstPrintable) {
    AppendUtf8(text, key);
  }
  SetText(std::move(text));
}

void TTextEdit::Exit() {
  if (GetEnabled()) FireExit();
}

}  // namespace margindesk
