#include "host/book/Utf8.h"

#include <cstddef>

namespace margindesk {

namespace {

// The well-formed sequences by first byte. The range of the second byte is what rules out overlong forms,
// surrogates and code points above U+10FFFF; every later byte is 80..BF.
struct TSequence {
  unsigned char FFirstLow;
  unsigned char FFirstHigh;
  std::size_t FLength;
  unsigned char FSecondLow;
  unsigned char FSecondHigh;
};

constexpr TSequence kSequences[] = {
    {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF}, {0xE1, 0xEC, 3, 0x80, 0xBF},
    {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF}, {0xF0, 0xF0, 4, 0x90, 0xBF},
    {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

// Length of the sequence of two bytes or more at the start of the text, 0 when there is no well-formed one.
std::size_t SequenceLength(std::string_view text) {
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  for (const TSequence& sequence : kSequences) {
    if (byte(0) < sequence.FFirstLow || byte(0) > sequence.FFirstHigh) continue;
    if (text.size() < sequence.FLength) return 0;
    if (byte(1) < sequence.FSecondLow || byte(1) > sequence.FSecondHigh) return 0;
    for (std::size_t i = 2; i < sequence.FLength; ++i) {
      if (byte(i) < 0x80 || byte(i) > 0xBF) return 0;
    }
    return sequence.FLength;
  }
  return 0;
}

}  // namespace

bool IsUtf8(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    if (static_cast<unsigned char>(text[i]) < 0x80) {
      ++i;
      continue;
    }
    const std::size_t length = SequenceLength(text.substr(i));
    if (length == 0) return false;
    i += length;
  }
  return true;
}

}  // namespace margindesk
