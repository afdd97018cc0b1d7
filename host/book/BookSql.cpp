#include "host/book/BookSql.h"

#include <limits>

namespace margindesk {

namespace {

// The parts of a list with a separator between them.
class TSqlList {
 public:
  explicit TSqlList(std::string_view separator) : FSeparator(separator) {}

  void Add(std::string_view part) {
    if (!FText.empty()) FText += FSeparator;
    FText += part;
  }
  const std::string& Text() const { return FText; }

 private:
  std::string_view FSeparator;
  std::string FText;
};

std::string_view SqlType(TColumnKind kind) {
  switch (kind) {
    case TColumnKind::kNumber:
      return "REAL";
    case TColumnKind::kInteger:
    case TColumnKind::kFlag:
      return "INTEGER";
    case TColumnKind::kText:
    case TColumnKind::kChoice:
    case TColumnKind::kDate:
      break;
  }
  return "TEXT";
}

// The literal 9e999 is SQLite's infinity.
std::string SqlRange(const TBookColumn& column, const std::string& name) {
  using TLimits = std::numeric_limits<double>;
  std::string low = name + " > -9e999";
  if (column.FLowest > TLimits::lowest()) {
    low = name + (column.FAboveLowest ? " > " : " >= ") + BookNumberText(column.FLowest);
  }
  std::string high = name + " < 9e999";
  if (column.FHighest < TLimits::max()) high = name + " <= " + BookNumberText(column.FHighest);
  return low + " AND " + high;
}

// What the store itself enforces on a value, so that a book changed by other means is found out. An empty
// value passes every condition.
std::string SqlCondition(const TBookColumn& column) {
  const std::string name = SqlName(column.FName);
  switch (column.FKind) {
    case TColumnKind::kNumber:
    case TColumnKind::kInteger:
      return SqlRange(column, name);
    case TColumnKind::kFlag:
      return name + " IN (0, 1)";
    case TColumnKind::kDate:
      return name + " IS date(" + name + ")";
    case TColumnKind::kChoice: {
      TSqlList choices(", ");
      for (const std::string_view choice : column.FChoices) choices.Add("'" + std::string(choice) + "'");
      return name + " IN (" + choices.Text() + ")";
    }
    case TColumnKind::kText:
      break;
  }
  return name + " <> ''";
}

std::string SqlColumn(const TBookColumn& column) {
  std::string sql = SqlName(column.FName) + " " + std::string(SqlType(column.FKind));
  if (!column.FNullable) sql += " NOT NULL";
  sql += " CHECK (" + SqlCondition(column) + ")";
  if (column.FReference) {
    // Deferred, so that the rows of a transaction may be written in any order.
    sql += " REFERENCES " + SqlName(BookTable(column.FReference->FTable).FName) + " (" +
           SqlName(column.FReference->FColumn) + ") DEFERRABLE INITIALLY DEFERRED";
  }
  return sql;
}

// A key column as its index and lookups see it: an empty value is a value like any other, which SQL's NULL is
// not.
std::string SqlKeyPart(const TBookColumn& column) {
  return column.FNullable ? "ifnull(" + SqlName(column.FName) + ", '')" : SqlName(column.FName);
}

std::string SqlKey(const TBookTable& table) {
  TSqlList parts(", ");
  for (const TBookColumn& column : table.FColumns) {
    if (column.FKey) parts.Add(SqlKeyPart(column));
  }
  return parts.Text();
}

std::string SqlKeyCondition(const TBookTable& table) {
  TSqlList parts(" AND ");
  for (const TBookColumn& column : table.FColumns) {
    if (column.FKey) parts.Add(SqlKeyPart(column) + (column.FNullable ? " = ifnull(?, '')" : " = ?"));
  }
  return parts.Text();
}

std::string SqlColumnNames(const TBookTable& table) {
  TSqlList names(", ");
  for (const TBookColumn& column : table.FColumns) names.Add(SqlName(column.FName));
  return names.Text();
}

std::string SqlIndex(const TBookTable& table, std::string_view kind, std::string_view name,
                     const std::string& parts) {
  return "CREATE " + std::string(kind) + " " + SqlName(std::string(table.FName) + "_" + std::string(name)) +
         " ON " + SqlName(table.FName) + " (" + parts + ");\n";
}

}  // namespace

std::string SqlName(std::string_view name) { return "\"" + std::string(name) + "\""; }

std::string CreateTableSql(const TBookTable& table) {
  TSqlList columns(",\n  ");
  columns.Add(std::string(kRowNumber) + " INTEGER PRIMARY KEY");
  for (const TBookColumn& column : table.FColumns) columns.Add(SqlColumn(column));
  std::string sql = "CREATE TABLE " + SqlName(table.FName) + " (\n  " + columns.Text() + "\n) STRICT;\n";
  sql += SqlIndex(table, "UNIQUE INDEX", "key", SqlKey(table));
  for (const TBookColumn& column : table.FColumns) {
    const std::string by = "by_" + std::string(column.FName);
    if (column.FUnique) sql += SqlIndex(table, "UNIQUE INDEX", by, SqlName(column.FName));
    // Without an index, removing a referenced row reads the whole table. The key's first column has one.
    const bool leadsKey = column.FKey && &column == &table.FColumns.front();
    if (column.FReference && !column.FUnique && !leadsKey)
      sql += SqlIndex(table, "INDEX", by, SqlName(column.FName));
  }
  return sql;
}

std::string InsertSql(const TBookTable& table) {
  TSqlList parameters(", ");
  for (std::size_t i = 0; i < table.FColumns.size(); ++i) parameters.Add("?");
  return "INSERT INTO " + SqlName(table.FName) + " (" + SqlColumnNames(table) + ") VALUES (" +
         parameters.Text() + ")";
}

std::string UpsertSql(const TBookTable& table) {
  TSqlList changes(", ");
  for (const TBookColumn& column : table.FColumns) {
    if (!column.FKey) changes.Add(SqlName(column.FName) + " = excluded." + SqlName(column.FName));
  }
  return InsertSql(table) + " ON CONFLICT (" + SqlKey(table) + ") DO " +
         (changes.Text().empty() ? "NOTHING" : "UPDATE SET " + changes.Text());
}

std::string ReadSql(const TBookTable& table) {
  return "SELECT " + SqlColumnNames(table) + " FROM " + SqlName(table.FName) + " ORDER BY " +
         std::string(kRowNumber);
}

std::string RemoveByKeySql(const TBookTable& table) {
  return "DELETE FROM " + SqlName(table.FName) + " WHERE " + SqlKeyCondition(table);
}

std::string FindByKeySql(const TBookTable& table) {
  return "SELECT " + std::string(kRowNumber) + " FROM " + SqlName(table.FName) + " WHERE " +
         SqlKeyCondition(table);
}

std::string FindByColumnSql(const TBookTable& table, const TBookColumn& column) {
  return "SELECT " + std::string(kRowNumber) + " FROM " + SqlName(table.FName) + " WHERE " +
         SqlName(column.FName) + " = ?";
}

std::string ClearSql(const TBookTable& table) { return "DELETE FROM " + SqlName(table.FName); }

void BindBookCells(TSqliteStatement& statement, std::span<const TBookCell> cells) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const int parameter = static_cast<int>(i);
    if (const auto* text = std::get_if<std::string_view>(&cells[i])) {
      statement.BindText(parameter, *text);
    } else if (const auto* number = std::get_if<double>(&cells[i])) {
      statement.BindNumber(parameter, *number);
    } else if (const auto* whole = std::get_if<std::int64_t>(&cells[i])) {
      statement.BindInteger(parameter, *whole);
    } else {
      statement.BindNull(parameter);
    }
  }
}

TBookCell ReadBookCell(const TSqliteStatement& statement, const TBookTable& table, std::size_t column) {
  const int index = static_cast<int>(column);
  if (statement.IsNull(index)) return std::monostate();
  switch (table.FColumns[column].FKind) {
    case TColumnKind::kNumber:
      return statement.Number(index);
    case TColumnKind::kInteger:
    case TColumnKind::kFlag:
      return statement.Integer(index);
    case TColumnKind::kText:
    case TColumnKind::kChoice:
    case TColumnKind::kDate:
      break;
  }
  return statement.Text(index);
}

}  // namespace margindesk
