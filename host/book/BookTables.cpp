#include "host/book/BookTables.h"

namespace margindesk {

namespace {

// What the rest of the book takes for granted about the list of tables is settled when it is compiled.

constexpr bool HasColumn(const TBookTable& table, std::string_view name) {
  return std::any_of(table.FColumns.begin(), table.FColumns.end(),
                     [name](const TBookColumn& column) { return column.FName == name; });
}

constexpr bool NamesAreUnique(const TBookTable& table) {
  for (std::size_t i = 0; i < table.FColumns.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (table.FColumns[i].FName == table.FColumns[j].FName) return false;
    }
  }
  return true;
}

// A referenced column has to be unique and filled in: SQLite accepts no other as a parent.
constexpr bool IsUniqueColumn(const TBookTable& table, const TBookColumn& column) {
  const auto keys = std::count_if(table.FColumns.begin(), table.FColumns.end(),
                                  [](const TBookColumn& other) { return other.FKey; });
  return !column.FNullable && (column.FUnique || (column.FKey && keys == 1));
}

constexpr bool IsSound(const TBookTable& table) {
  if (!NamesAreUnique(table)) return false;
  bool hasKey = false;
  for (const TBookColumn& column : table.FColumns) {
    hasKey = hasKey || column.FKey;
    if (!column.FWhenEmpty.empty() && !HasColumn(table, column.FWhenEmpty)) return false;
    if (!column.FReference) continue;
    if (column.FReference->FTable > table.FTable) return false;
    const TBookTable& referenced = BookTable(column.FReference->FTable);
    if (!HasColumn(referenced, column.FReference->FColumn)) return false;
    if (!IsUniqueColumn(referenced, referenced.FColumns[referenced.Column(column.FReference->FColumn)])) {
      return false;
    }
  }
  return hasKey;
}

constexpr bool StandInOrder() {
  for (std::size_t i = 0; i < kBookTables.size(); ++i) {
    if (static_cast<std::size_t>(kBookTables[i].FTable) != i) return false;
  }
  for (std::size_t i = 0; i < kFigureCount; ++i) {
    if (static_cast<std::size_t>(kFigureList[i].FFigure) != i) return false;
  }
  return true;
}

static_assert(StandInOrder(), "the lists of tables and of figures follow their enumerations");
static_assert(
    std::all_of(kBookTables.begin(), kBookTables.end(), IsSound),
    "a table has a key, columns of different names and references to unique columns of tables before it");

}  // namespace

const TBookTable* FindBookTable(std::string_view name) {
  const auto found = std::find_if(kBookTables.begin(), kBookTables.end(),
                                  [name](const TBookTable& table) { return table.FName == name; });
  return found == kBookTables.end() ? nullptr : &*found;
}

}  // namespace margindesk
