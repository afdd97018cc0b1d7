#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string_view>

namespace margindesk {

enum class TTable : std::size_t;

// What a column holds, in the CSV file and in the store.
enum class TColumnKind {
  kText,     // UTF-8
  kNumber,   // a finite double
  kInteger,  // 32-bit signed
  kFlag,     // Y or N
  kChoice,   // one of a fixed list of texts
  kDate,     // yyyy-mm-dd, a day of the calendar
};

// The column of another table (or of the same one) whose values alone are allowed here.
struct TBookReference {
  TTable FTable;
  std::string_view FColumn;
};

// One column of a table of the book. A description is built by chaining: NumberColumn("ratio").Above(0).
struct TBookColumn {
  std::string_view FName;
  TColumnKind FKind = TColumnKind::kText;
  bool FKey = false;       // part of the table's key
  bool FUnique = false;    // no two rows hold the same value; rows where it is empty do not count
  bool FNullable = false;  // may be empty
  double FLowest = std::numeric_limits<double>::lowest();
  double FHighest = std::numeric_limits<double>::max();
  bool FAboveLowest = false;                        // FLowest itself is not allowed
  std::span<const std::string_view> FChoices = {};  // of a kChoice column
  std::optional<TBookReference> FReference = std::nullopt;
  std::string_view FWhenEmpty = {};  // column of the same row whose value an empty field takes

  constexpr TBookColumn Key() const {
    TBookColumn column = *this;
    column.FKey = true;
    return column;
  }
  constexpr TBookColumn Unique() const {
    TBookColumn column = *this;
    column.FUnique = true;
    return column;
  }
  constexpr TBookColumn Nullable() const {
    TBookColumn column = *this;
    column.FNullable = true;
    return column;
  }
  constexpr TBookColumn Above(double lowest) const {
    TBookColumn column = *this;
    column.FLowest = lowest;
    column.FAboveLowest = true;
    return column;
  }
  constexpr TBookColumn AtLeast(double lowest) const {
    TBookColumn column = *this;
    column.FLowest = lowest;
    return column;
  }
  constexpr TBookColumn To(TTable table, std::string_view referenced) const {
    TBookColumn column = *this;
    column.FReference = TBookReference{table, referenced};
    return column;
  }
  constexpr TBookColumn WhenEmpty(std::string_view other) const {
    TBookColumn column = *this;
    column.FWhenEmpty = other;
    return column;
  }
};

constexpr TBookColumn TextColumn(std::string_view name) { return {.FName = name}; }
constexpr TBookColumn NumberColumn(std::string_view name) {
  return {.FName = name, .FKind = TColumnKind::kNumber};
}
constexpr TBookColumn FlagColumn(std::string_view name) {
  return {.FName = name, .FKind = TColumnKind::kFlag};
}
constexpr TBookColumn DateColumn(std::string_view name) {
  return {.FName = name, .FKind = TColumnKind::kDate};
}
constexpr TBookColumn IntegerColumn(std::string_view name) {
  return {.FName = name,
          .FKind = TColumnKind::kInteger,
          .FLowest = std::numeric_limits<std::int32_t>::min(),
          .FHighest = std::numeric_limits<std::int32_t>::max()};
}
constexpr TBookColumn ChoiceColumn(std::string_view name, std::span<const std::string_view> choices) {
  return {.FName = name, .FKind = TColumnKind::kChoice, .FChoices = choices};
}

}  // namespace margindesk
