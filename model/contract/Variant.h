#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

namespace margindesk {

// A text that does not read as the value it should hold.
class EConvertError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The value of one cell: unassigned, Null, a 32-bit integer, a double or a text, each distinct from the
// others. Nothing converts by itself; the named conversions below are the only ones and never look at a
// locale.
class TVariant {
 public:
  TVariant() noexcept = default;
  static TVariant Null() { return TVariant(TValue(TNull{})); }
  static TVariant Integer(std::int32_t value) { return TVariant(TValue(value)); }
  static TVariant Float(double value) { return TVariant(TValue(value)); }
  static TVariant Text(std::string value) { return TVariant(TValue(std::move(value))); }
  static TVariant EmptyText() { return TVariant(TValue(std::string())); }

  bool IsUnassigned() const noexcept { return std::holds_alternative<std::monostate>(FValue); }
  bool IsNull() const noexcept { return std::holds_alternative<TNull>(FValue); }
  bool IsInteger() const noexcept { return std::holds_alternative<std::int32_t>(FValue); }
  bool IsFloat() const noexcept { return std::holds_alternative<double>(FValue); }
  bool IsText() const noexcept { return std::holds_alternative<std::string>(FValue); }
  bool IsNumber() const noexcept { return IsInteger() || IsFloat(); }

  // The number held; 0 when unassigned; a text is read as a decimal number, the empty text included in what
  // fails. Throws EConvertError for Null and for a text that is no number.
  double AsFloat() const;

  // As AsFloat, with `fallback` for Null and for a text that is no number.
  double AsFloatOr(double fallback) const noexcept;

  // The text held; "" when unassigned or Null; a number in decimal digits, the shortest that reads back the
  // same.
  std::string AsText() const;

  friend bool operator==(const TVariant&, const TVariant&) = default;

 private:
  struct TNull {
    friend bool operator==(const TNull&, const TNull&) = default;
  };
  using TValue = std::variant<std::monostate, TNull, std::int32_t, double, std::string>;

  explicit TVariant(TValue value) : FValue(std::move(value)) {}

  TValue FValue;
};

// Reads a whole text as a decimal number, without regard to any locale. False leaves `value` alone: the text
// is empty, has something before or after the number, or does not fit. Blanks and a plus sign count as
// something.
bool TryTextToInteger(std::string_view text, std::int32_t& value) noexcept;
bool TryTextToFloat(std::string_view text, double& value) noexcept;  // infinity and NaN are no numbers

// The shortest decimal text that reads back as the same double: written out ("1000000000000000", "0.00001")
// between 1e-6 and 1e21, with an exponent ("1e+21") outside.
std::string FloatToText(double value);
std::string IntegerToText(std::int64_t value);

// ASCII helpers: they change the letters a to z alone, and trim blanks and control characters as a cell
// editor does.
std::string UpperCaseText(std::string_view text);
std::string_view TrimText(std::string_view text) noexcept;
bool SameTextIgnoringCase(std::string_view a, std::string_view b) noexcept;

}  // namespace margindesk
