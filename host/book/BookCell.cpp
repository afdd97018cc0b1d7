#include "host/book/BookCell.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <system_error>

#include "host/book/BookError.h"
#include "host/book/Csv.h"
#include "host/book/Utf8.h"

namespace margindesk {

namespace {

// Amounts and quantities are written without an exponent, as everybody expects them.
constexpr double kLowestPlain = 1e-6;
constexpr double kHighestPlain = 1e15;

template <typename TNumber>
TBookRefusal ParseWhole(std::string_view field, std::string_view kind, TNumber& value) {
  const char* const last = field.data() + field.size();
  const auto [end, error] = std::from_chars(field.data(), last, value);
  if (error == std::errc::invalid_argument || end != last) {
    return QuotedForMessage(field) + " is not " + std::string(kind);
  }
  if (error == std::errc::result_out_of_range) return QuotedForMessage(field) + " is out of range";
  return std::nullopt;
}

TBookRefusal ParseNumber(std::string_view field, TBookCell& cell) {
  double value = 0;
  if (auto refusal = ParseWhole(field, "a number", value)) return refusal;
  // The store has no negative zero.
  cell = value + 0.0;
  return std::nullopt;
}

TBookRefusal ParseInteger(std::string_view field, TBookCell& cell) {
  std::int64_t value = 0;
  if (auto refusal = ParseWhole(field, "a whole number", value)) return refusal;
  cell = value;
  return std::nullopt;
}

TBookRefusal ParseFlag(std::string_view field, TBookCell& cell) {
  if (field != "Y" && field != "N") return QuotedForMessage(field) + " is neither Y nor N";
  cell = std::int64_t{field == "Y" ? 1 : 0};
  return std::nullopt;
}

TBookRefusal CheckRange(const TBookColumn& column, double value) {
  const bool low = column.FAboveLowest ? value <= column.FLowest : value < column.FLowest;
  if (low)
    return (column.FAboveLowest ? "must be above " : "must be at least ") + BookNumberText(column.FLowest);
  if (value > column.FHighest) return "must be at most " + BookNumberText(column.FHighest);
  return std::nullopt;
}

bool IsDate(std::string_view text) {
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return false;
  const auto digits = [text](std::size_t begin, std::size_t count) {
    int value = 0;
    for (const char c : text.substr(begin, count)) {
      if (c < '0' || c > '9') return -1;
      value = value * 10 + (c - '0');
    }
    return value;
  };
  const int year = digits(0, 4);
  const int month = digits(5, 2);
  const int day = digits(8, 2);
  if (year < 0 || month < 0 || day < 0) return false;
  return std::chrono::year_month_day(std::chrono::year(year),
                                     std::chrono::month(static_cast<unsigned>(month)),
                                     std::chrono::day(static_cast<unsigned>(day)))
      .ok();
}

TBookRefusal CheckText(const TBookColumn& column, std::string_view text) {
  if (!IsUtf8(text)) return "not UTF-8";
  if (text.find('\0') != std::string_view::npos) return "a zero byte";
  if (column.FKind == TColumnKind::kDate && !IsDate(text)) {
    return QuotedForMessage(text) + " is not a date (yyyy-mm-dd)";
  }
  if (column.FKind == TColumnKind::kChoice &&
      std::ranges::find(column.FChoices, text) == column.FChoices.end()) {
    std::string reason = QuotedForMessage(text) + " is not one of";
    for (const std::string_view choice : column.FChoices) reason.append(" ").append(choice);
    return reason;
  }
  return std::nullopt;
}

bool IsOfKind(TColumnKind kind, const TBookCell& cell) {
  switch (kind) {
    case TColumnKind::kNumber:
      return std::holds_alternative<double>(cell);
    case TColumnKind::kInteger:
    case TColumnKind::kFlag:
      return std::holds_alternative<std::int64_t>(cell);
    case TColumnKind::kText:
    case TColumnKind::kChoice:
    case TColumnKind::kDate:
      return std::holds_alternative<std::string_view>(cell);
  }
  return false;
}

}  // namespace

TBookRefusal ParseBookField(const TBookColumn& column, std::string_view field, TBookCell& cell) {
  TBookRefusal refusal;
  if (field.empty()) {
    cell = std::monostate();
  } else if (column.FKind == TColumnKind::kNumber) {
    refusal = ParseNumber(field, cell);
  } else if (column.FKind == TColumnKind::kInteger) {
    refusal = ParseInteger(field, cell);
  } else if (column.FKind == TColumnKind::kFlag) {
    refusal = ParseFlag(field, cell);
  } else {
    cell = field;
  }
  return refusal ? refusal : CheckBookCell(column, cell);
}

TBookRefusal CheckBookCell(const TBookColumn& column, const TBookCell& cell) {
  if (std::holds_alternative<std::monostate>(cell)) {
    return column.FNullable ? std::nullopt : TBookRefusal("must not be empty");
  }
  if (!IsOfKind(column.FKind, cell)) return "a value of another kind";
  if (const auto* number = std::get_if<double>(&cell)) {
    return std::isfinite(*number) ? CheckRange(column, *number) : TBookRefusal("NaN or infinity");
  }
  if (const auto* text = std::get_if<std::string_view>(&cell)) return CheckText(column, *text);
  const std::int64_t whole = std::get<std::int64_t>(cell);
  if (column.FKind == TColumnKind::kFlag) {
    return whole == 0 || whole == 1 ? std::nullopt : TBookRefusal("neither Y nor N");
  }
  return CheckRange(column, static_cast<double>(whole));
}

void AppendBookField(std::string& out, const TBookColumn& column, const TBookCell& cell) {
  if (const auto* text = std::get_if<std::string_view>(&cell)) {
    AppendCsvField(out, *text);
  } else if (const auto* number = std::get_if<double>(&cell)) {
    out += BookNumberText(*number);
  } else if (const auto* whole = std::get_if<std::int64_t>(&cell)) {
    out += column.FKind == TColumnKind::kFlag ? (*whole != 0 ? "Y" : "N") : std::to_string(*whole);
  }
}

std::string BookNumberText(double value) {
  const double size = std::abs(value);
  const bool plain = size == 0 || (size >= kLowestPlain && size < kHighestPlain);
  const auto format = plain ? std::chars_format::fixed : std::chars_format::scientific;
  char buffer[48];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, format).ptr;
  return {buffer, end};
}

}  // namespace margindesk
