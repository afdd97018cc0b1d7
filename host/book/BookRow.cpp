#include "host/book/BookRow.h"

#include "host/book/BookSql.h"

namespace margindesk {

TBookRow::TBookRow(TTable table) : FTable(table) {
  for (const TBookColumn& column : BookTable(table).FColumns) {
    TValue value;
    if (!column.FNullable && column.FKind == TColumnKind::kNumber) value = 0.0;
    if (!column.FNullable && (column.FKind == TColumnKind::kInteger || column.FKind == TColumnKind::kFlag)) {
      value = std::int64_t{0};
    }
    FValues.push_back(std::move(value));
  }
}

TBookRow& TBookRow::SetText(std::size_t column, std::string_view text) {
  if (text.empty()) return SetEmpty(column);
  FValues.at(column) = std::string(text);
  return *this;
}

TBookRow& TBookRow::SetNumber(std::size_t column, double value) {
  // The store has no negative zero.
  FValues.at(column) = value + 0.0;
  return *this;
}

TBookRow& TBookRow::SetInteger(std::size_t column, std::int64_t value) {
  FValues.at(column) = value;
  return *this;
}

TBookRow& TBookRow::SetFlag(std::size_t column, bool value) { return SetInteger(column, value ? 1 : 0); }

TBookRow& TBookRow::SetEmpty(std::size_t column) {
  FValues.at(column) = std::monostate();
  return *this;
}

TBookCell TBookRow::Cell(std::size_t column) const {
  return std::visit([](const auto& value) -> TBookCell { return value; }, FValues.at(column));
}

TBookRows::TBookRows(TSqliteConnection& connection, const TBookTable& table)
    : FTable(table), FStatement(connection, ReadSql(table)) {}

TBookCell TBookRows::Cell(std::size_t column) const { return ReadBookCell(FStatement, FTable, column); }

}  // namespace margindesk
