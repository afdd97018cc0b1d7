#include "terminal/desktop/binders/CellNumber.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace margindesk {

namespace {

constexpr double kParts = 1e8;    // of one that an editor shows
constexpr double kLargest = 1e7;  // number with so many parts

}  // namespace

std::string RemoveGrouping(std::string_view text) {
  std::string plain;
  const std::size_t point = std::min(text.find('.'), text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != ',') {
      plain += text[i];
      continue;
    }
    // A comma sets apart where digits stand before it and whole threes of digits after it.
    const bool digitBefore = i > 0 && std::isdigit(static_cast<unsigned char>(text[i - 1])) != 0;
    if (i > point || !digitBefore || (point - i) % 4 != 0) return std::string(text);
  }
  return plain;
}

bool IsFigure(std::string_view text) {
  double number = 0;
  return text.find_first_of(".,") != std::string_view::npos && TryTextToFloat(RemoveGrouping(text), number);
}

bool IsSameValue(const std::string& text, const TVariant& value) {
  const std::string trimmed(TrimText(text));
  if (!value.IsNumber()) return trimmed.empty() || TrimText(value.AsText()) == trimmed;
  double number = 0;
  return TryTextToFloat(trimmed, number) && number == value.AsFloat();
}

std::string MakeNumberText(const TVariant& value) {
  if (!value.IsFloat() || !(std::abs(value.AsFloat()) < kLargest)) return value.AsText();
  return FloatToText(std::round(value.AsFloat() * kParts) / kParts);
}

}  // namespace margindesk
