#include "model/contract/Variant.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace margindesk {

namespace {

constexpr char UpperCaseChar(char c) noexcept {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr bool IsBlank(char c) noexcept { return static_cast<unsigned char>(c) <= ' '; }

// Between these magnitudes a number is written out; outside them its zeros would hide its digits.
constexpr double kSmallestWrittenOut = 1e-6;
constexpr double kLargestWrittenOut = 1e21;

}  // namespace

double TVariant::AsFloat() const {
  if (IsNull()) throw EConvertError("Null is not a number");
  const auto* text = std::get_if<std::string>(&FValue);
  if (text == nullptr) return AsFloatOr(0);
  double value = 0;
  if (!TryTextToFloat(*text, value)) throw EConvertError("'" + *text + "' is not a number");
  return value;
}

double TVariant::AsFloatOr(double fallback) const noexcept {
  if (const auto* number = std::get_if<double>(&FValue)) return *number;
  if (const auto* number = std::get_if<std::int32_t>(&FValue)) return *number;
  if (const auto* text = std::get_if<std::string>(&FValue)) TryTextToFloat(*text, fallback);
  return IsUnassigned() ? 0 : fallback;
}

std::string TVariant::AsText() const {
  if (const auto* text = std::get_if<std::string>(&FValue)) return *text;
  if (const auto* number = std::get_if<double>(&FValue)) return FloatToText(*number);
  if (const auto* number = std::get_if<std::int32_t>(&FValue)) return IntegerToText(*number);
  return {};
}

bool TryTextToInteger(std::string_view text, std::int32_t& value) noexcept {
  std::int32_t read = 0;
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, read);
  if (error != std::errc() || rest != end) return false;
  value = read;
  return true;
}

bool TryTextToFloat(std::string_view text, double& value) noexcept {
  double read = 0;
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, read);
  if (error != std::errc() || rest != end || !std::isfinite(read)) return false;
  value = read;
  return true;
}

std::string FloatToText(double value) {
  char buffer[64];
  const double magnitude = std::abs(value);
  const bool isWrittenOut =
      magnitude == 0 || (magnitude >= kSmallestWrittenOut && magnitude < kLargestWrittenOut);
  const auto [end, error] =
      isWrittenOut ? std::to_chars(std::begin(buffer), std::end(buffer), value, std::chars_format::fixed)
                   : std::to_chars(std::begin(buffer), std::end(buffer), value);
  return std::string(buffer, end);
}

std::string IntegerToText(std::int64_t value) {
  char buffer[24];
  const auto [end, error] = std::to_chars(std::begin(buffer), std::end(buffer), value);
  return std::string(buffer, end);
}

std::string UpperCaseText(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), UpperCaseChar);
  return result;
}

std::string_view TrimText(std::string_view text) noexcept {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

bool SameTextIgnoringCase(std::string_view a, std::string_view b) noexcept {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return UpperCaseChar(x) == UpperCaseChar(y); });
}

}  // namespace margindesk
