#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/book/BookTables.h"
#include "host/book/Sqlite.h"

namespace margindesk {

// A place where the stored book breaks one of its rules.
struct TBookFinding {
  std::optional<TTable> FTable = std::nullopt;  // none when the store itself is damaged
  std::int64_t FRow = 0;  // row_number, which counts the imported rows from 1; 0 for the table as a whole
  std::string_view FColumn = {};
  std::string FReason = {};

  // "table:row:column: reason" on one line, without the parts that it has not.
  std::string Text() const;
};

// The rules that reach beyond one value, over the rows as they stand now, also inside a transaction. At most
// a hundred findings a rule, in the order of the tables and rows.
//
// References: a value is among those of the column that it refers to.
std::vector<TBookFinding> FindBrokenReferences(TSqliteConnection& connection);
// The rest: exactly one base currency, whose ratio is 1; a master is a master account and no account is its
// own master through any number of others; no account is linked to itself; the price bands of a market follow
// each other upward without gaps; no more of an order is filled than was ordered. Only the rules about the
// given tables are looked at.
std::vector<TBookFinding> FindBrokenRules(TSqliteConnection& connection, const std::set<TTable>& tables);
std::vector<TBookFinding> FindBrokenRules(TSqliteConnection& connection);

}  // namespace margindesk
