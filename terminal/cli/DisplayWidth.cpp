#include "terminal/cli/DisplayWidth.h"

#include <algorithm>
#include <array>

#include "host/book/Utf8.h"

namespace margindesk {

namespace {

struct TRange {
  char32_t FFirst;
  char32_t FLast;
};

// Characters that are put on the one before them, and marks without a shape of their own. Ascending.
constexpr auto kWithoutWidth = std::to_array<TRange>({
    {0x0300, 0x036F},    // combining diacritics
    {0x1160, 0x11FF},    // vowels and finals of Korean syllables
    {0x1AB0, 0x1AFF},    // more diacritics
    {0x1DC0, 0x1DFF},    //
    {0x200B, 0x200F},    // zero-width blanks and direction marks
    {0x202A, 0x202E},    // direction embeddings
    {0x2060, 0x2064},    // invisible operators
    {0x20D0, 0x20FF},    // diacritics for symbols
    {0x302A, 0x302D},    // tone marks
    {0x3099, 0x309A},    // voicing marks
    {0xFE00, 0xFE0F},    // variation selectors
    {0xFE20, 0xFE2F},    // half marks
    {0xFEFF, 0xFEFF},    // byte order mark
    {0xE0100, 0xE01EF},  // variation selectors of ideographs
});

// Characters that take two columns: Unicode's East Asian wide and full-width ones, by block. Ascending.
constexpr auto kWide = std::to_array<TRange>({
    {0x1100, 0x115F},    // initials of Korean syllables
    {0x231A, 0x231B},    // watch, hourglass
    {0x2329, 0x232A},    // angle brackets
    {0x2E80, 0x303E},    // radicals, ideographic punctuation
    {0x3041, 0x33FF},    // kana, Bopomofo, Korean letters, enclosed and squared characters
    {0x3400, 0x4DBF},    // ideographs, extension A
    {0x4E00, 0x9FFF},    // ideographs
    {0xA000, 0xA4CF},    // Yi
    {0xA960, 0xA97F},    // old Korean initials
    {0xAC00, 0xD7A3},    // Korean syllables
    {0xF900, 0xFAFF},    // compatibility ideographs
    {0xFE10, 0xFE19},    // vertical punctuation
    {0xFE30, 0xFE6F},    // compatibility and small forms
    {0xFF01, 0xFF60},    // full-width forms
    {0xFFE0, 0xFFE6},    // full-width signs
    {0x16FE0, 0x18AFF},  // Tangut and its marks
    {0x1B000, 0x1B2FF},  // more kana
    {0x1F200, 0x1F265},  // enclosed ideographs
    {0x1F300, 0x1F64F},  // pictographs
    {0x1F680, 0x1F6FF},  //
    {0x1F900, 0x1F9FF},  //
    {0x20000, 0x2FFFD},  // ideographs, extensions B to F
    {0x30000, 0x3FFFD},  // and G
});

template <std::size_t N>
bool IsIn(const std::array<TRange, N>& ranges, char32_t character) {
  const auto range = std::ranges::lower_bound(ranges, character, {},
                                              [](const TRange& candidate) { return candidate.FLast; });
  return range != ranges.end() && range->FFirst <= character;
}

// The character at the start of a well-formed text, which loses it.
char32_t TakeCharacter(std::string_view& text) {
  const auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(0);
  const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  char32_t character = length == 1 ? first : first & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) character = (character << 6U) | (byte(i) & 0x3FU);
  text.remove_prefix(length);
  return character;
}

bool IsControl(char32_t character) {
  return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x2028 ||
         character == 0x2029;
}

}  // namespace

std::size_t GetDisplayWidth(std::string_view text) {
  if (!IsUtf8(text)) return text.size();
  std::size_t width = 0;
  while (!text.empty()) {
    const char32_t character = TakeCharacter(text);
    width += IsIn(kWide, character) ? 2U : IsIn(kWithoutWidth, character) ? 0U : 1U;
  }
  return width;
}

std::string MakeOneLine(std::string_view text) {
  const bool readable = IsUtf8(text);
  std::string line;
  while (!text.empty()) {
    if (!readable && static_cast<unsigned char>(text.front()) >= 0x80) {
      line += '?';
      text.remove_prefix(1);
      continue;
    }
    std::string_view rest = text;
    const char32_t character = TakeCharacter(rest);
    if (IsControl(character)) {
      line += ' ';
    } else {
      line += text.substr(0, text.size() - rest.size());
    }
    text = rest;
  }
  return line;
}

}  // namespace margindesk
