#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/book/BookCell.h"
#include "host/book/BookTables.h"
#include "host/book/Sqlite.h"

namespace margindesk {

// A row to be written. A new row is empty where the column may be, 0 in numbers, N in flags and without text;
// columns are given by index (TBookTable::Column). The values are checked when the row is written.
class TBookRow {
 public:
  explicit TBookRow(TTable table);

  TTable Table() const { return FTable; }
  TBookRow& SetText(std::size_t column, std::string_view text);  // an empty text is the same as SetEmpty
  TBookRow& SetNumber(std::size_t column, double value);
  TBookRow& SetInteger(std::size_t column, std::int64_t value);
  TBookRow& SetFlag(std::size_t column, bool value);
  TBookRow& SetEmpty(std::size_t column);

  // The value of a column; text is borrowed from the row.
  TBookCell Cell(std::size_t column) const;

 private:
  using TValue = std::variant<std::monostate, std::int64_t, double, std::string>;

  TTable FTable;
  std::vector<TValue> FValues;
};

// The rows of a table, read one after the other in the order in which they were imported or first written.
// Must not outlive its book. Reads throw TBookError only where the store is damaged.
class TBookRows {
 public:
  TBookRows(TSqliteConnection& connection, const TBookTable& table);

  // Moves to the next row, at first to the first one; false when there is none.
  bool Next() { return FStatement.Step(); }

  // Columns of the current row by index (TBookTable::Column). An empty value reads as no text, 0 or N.
  bool IsEmpty(std::size_t column) const { return FStatement.IsNull(static_cast<int>(column)); }
  std::string_view Text(std::size_t column) const { return FStatement.Text(static_cast<int>(column)); }
  double Number(std::size_t column) const { return FStatement.Number(static_cast<int>(column)); }
  int Integer(std::size_t column) const {
    return static_cast<int>(FStatement.Integer(static_cast<int>(column)));
  }
  bool Flag(std::size_t column) const { return FStatement.Integer(static_cast<int>(column)) != 0; }
  TBookCell Cell(std::size_t column) const;

 private:
  const TBookTable& FTable;
  TSqliteStatement FStatement;
};

}  // namespace margindesk
