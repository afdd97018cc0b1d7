#pragma once

#include <span>
#include <string>
#include <string_view>

#include "host/book/BookCell.h"
#include "host/book/BookTables.h"
#include "host/book/Sqlite.h"

namespace margindesk {

// Every stored row has this number: rows are read in its order, and a row keeps it when it is changed.
inline constexpr std::string_view kRowNumber = "row_number";

// SQL made from the list of tables. A statement's parameters and the columns of a read follow the table's
// columns; the parameters of a statement "by key" follow its key columns.
std::string CreateTableSql(const TBookTable& table);  // with its indexes
std::string InsertSql(const TBookTable& table);
std::string UpsertSql(const TBookTable& table);
std::string ReadSql(const TBookTable& table);
std::string RemoveByKeySql(const TBookTable& table);
std::string FindByKeySql(const TBookTable& table);                                // gives row_number
std::string FindByColumnSql(const TBookTable& table, const TBookColumn& column);  // likewise
std::string ClearSql(const TBookTable& table);

// Binds values from parameter 0 on. Text is borrowed, see TSqliteStatement::BindText.
void BindBookCells(TSqliteStatement& statement, std::span<const TBookCell> cells);

// The value of a column in the current row; text is valid until the statement moves on.
TBookCell ReadBookCell(const TSqliteStatement& statement, const TBookTable& table, std::size_t column);

// A name in SQL's quotes.
std::string SqlName(std::string_view name);

}  // namespace margindesk
