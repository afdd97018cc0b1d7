#include "host/book/BookRules.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <unordered_map>
#include <utility>

#include "host/book/BookSql.h"

namespace margindesk {

namespace {

constexpr std::size_t kMostFindings = 100;

void FindBrokenReference(TSqliteConnection& connection, const TBookTable& table, const TBookColumn& column,
                         std::vector<TBookFinding>& findings) {
  const TBookReference& reference = *column.FReference;
  const std::string value = "child." + SqlName(column.FName);
  TSqliteStatement statement(connection, "SELECT child." + std::string(kRowNumber) + ", " + value + " FROM " +
                                             SqlName(table.FName) + " child WHERE " + value +
                                             " IS NOT NULL AND NOT EXISTS (SELECT 1 FROM " +
                                             SqlName(BookTable(reference.FTable).FName) +
                                             " parent WHERE parent." + SqlName(reference.FColumn) + " = " +
                                             value + ") ORDER BY 1 LIMIT " + std::to_string(kMostFindings));
  while (statement.Step()) {
    findings.push_back(
        {table.FTable, statement.Integer(0), column.FName,
         "unknown " + std::string(reference.FColumn) + " " + QuotedForMessage(statement.Text(1))});
  }
}

std::vector<TBookFinding> FindBaseCurrencyFaults(TSqliteConnection& connection) {
  std::vector<TBookFinding> findings;
  TSqliteStatement statement(
      connection, "SELECT row_number, currency, ratio FROM currencies WHERE base = 1 ORDER BY row_number");
  std::string first;
  while (statement.Step()) {
    const std::string currency(statement.Text(1));
    if (!first.empty()) {
      findings.push_back({TTable::kCurrencies, statement.Integer(0), "base",
                          "a second base currency: " + QuotedForMessage(first) + " is the base currency"});
      break;
    }
    first = currency;
    if (statement.Number(2) != 1) {
      findings.push_back(
          {TTable::kCurrencies, statement.Integer(0), "ratio", "the ratio of the base currency is 1"});
    }
  }
  if (first.empty()) findings.push_back({TTable::kCurrencies, 0, "base", "no currency is the base currency"});
  return findings;
}

// An account as the rules about masters see it.
struct TMemberAccount {
  std::int64_t FRow;
  std::string FAccount;
  std::string FMaster;  // empty when it has none
  bool FIsMaster;
  std::size_t FVisit = 0;  // number of the walk up the masters that came by, from 1
};

std::vector<TMemberAccount> ReadMemberAccounts(TSqliteConnection& connection) {
  std::vector<TMemberAccount> accounts;
  TSqliteStatement statement(
      connection, "SELECT row_number, account, master, master_type FROM accounts ORDER BY row_number");
  while (statement.Step()) {
    accounts.push_back({statement.Integer(0), std::string(statement.Text(1)), std::string(statement.Text(2)),
                        !statement.IsNull(3)});
  }
  return accounts;
}

// "A, whose master is B, whose master is A", cut short when it goes on for long.
std::string LoopText(const std::vector<const TMemberAccount*>& loop) {
  constexpr std::size_t kMostNamed = 5;
  std::string text = "a loop of masters: " + QuotedForMessage(loop.front()->FAccount);
  for (std::size_t i = 1; i < std::min(loop.size(), kMostNamed); ++i) {
    text += " > " + QuotedForMessage(loop[i]->FAccount);
  }
  if (loop.size() > kMostNamed) text += " > ...";
  return text + " > " + QuotedForMessage(loop.front()->FAccount);
}

std::vector<TBookFinding> FindMasterFaults(TSqliteConnection& connection) {
  std::vector<TBookFinding> findings;
  std::vector<TMemberAccount> accounts = ReadMemberAccounts(connection);
  std::unordered_map<std::string_view, TMemberAccount*> byName;
  for (TMemberAccount& account : accounts) byName.emplace(account.FAccount, &account);
  const auto masterOf = [&byName](const TMemberAccount& account) {
    const auto found = byName.find(account.FMaster);
    return found == byName.end() ? nullptr : found->second;
  };

  std::size_t walk = 0;
  for (TMemberAccount& account : accounts) {
    const TMemberAccount* const master = masterOf(account);
    if (master != nullptr && !master->FIsMaster) {
      findings.push_back(
          {TTable::kAccounts, account.FRow, "master",
           QuotedForMessage(account.FMaster) + " is not a master account (it has no master_type)"});
    }
    // Each account is walked over once; a walk that meets itself has found a loop.
    ++walk;
    TMemberAccount* at = &account;
    std::vector<const TMemberAccount*> path;
    while (at != nullptr && at->FVisit == 0) {
      at->FVisit = walk;
      path.push_back(at);
      at = masterOf(*at);
    }
    if (at == nullptr || at->FVisit != walk) continue;
    path.erase(path.begin(), std::ranges::find(path, at));
    std::rotate(path.begin(), std::ranges::min_element(path, {}, &TMemberAccount::FRow), path.end());
    findings.push_back({TTable::kAccounts, path.front()->FRow, "master", LoopText(path)});
  }
  std::ranges::stable_sort(findings, {}, &TBookFinding::FRow);
  findings.resize(std::min(findings.size(), kMostFindings));
  return findings;
}

std::vector<TBookFinding> FindLinkFaults(TSqliteConnection& connection) {
  std::vector<TBookFinding> findings;
  TSqliteStatement statement(connection,
                             "SELECT row_number FROM china_connect_links WHERE account = linked_account "
                             "ORDER BY row_number LIMIT " +
                                 std::to_string(kMostFindings));
  while (statement.Step()) {
    findings.push_back({TTable::kChinaConnectLinks, statement.Integer(0), "linked_account",
                        "an account cannot be linked to itself"});
  }
  return findings;
}

std::vector<TBookFinding> FindSpreadBandFaults(TSqliteConnection& connection) {
  std::vector<TBookFinding> findings;
  TSqliteStatement statement(
      connection,
      "SELECT row_number, market_code, lower_limit, upper_limit FROM spread_bands ORDER BY row_number");
  std::unordered_map<std::string, double> ends;  // of the market's bands so far
  while (statement.Step() && findings.size() < kMostFindings) {
    const double lower = statement.Number(2);
    const double upper = statement.Number(3);
    const auto [end, isFirst] = ends.try_emplace(std::string(statement.Text(1)), upper);
    if (!isFirst && lower != std::exchange(end->second, upper)) {
      findings.push_back({TTable::kSpreadBands, statement.Integer(0), "lower_limit",
                          "must be the upper limit of the market's band before"});
    } else if (upper <= lower) {
      findings.push_back(
          {TTable::kSpreadBands, statement.Integer(0), "upper_limit", "must be above the lower limit"});
    }
  }
  return findings;
}

std::vector<TBookFinding> FindOrderFaults(TSqliteConnection& connection) {
  std::vector<TBookFinding> findings;
  TSqliteStatement statement(connection,
                             "SELECT row_number FROM orders WHERE filled_quantity > quantity ORDER BY "
                             "row_number LIMIT " +
                                 std::to_string(kMostFindings));
  while (statement.Step()) {
    findings.push_back(
        {TTable::kOrders, statement.Integer(0), "filled_quantity", "more is filled than was ordered"});
  }
  return findings;
}

struct TBookRule {
  TTable FTable;
  std::vector<TBookFinding> (*FFind)(TSqliteConnection& connection);
};

constexpr TBookRule kRules[] = {
    {TTable::kCurrencies, FindBaseCurrencyFaults},
    {TTable::kAccounts, FindMasterFaults},
    {TTable::kChinaConnectLinks, FindLinkFaults},
    {TTable::kSpreadBands, FindSpreadBandFaults},
    {TTable::kOrders, FindOrderFaults},
};

}  // namespace

std::string TBookFinding::Text() const {
  std::string text;
  if (FTable) {
    text = std::string(BookTable(*FTable).FName) + ":";
    if (FRow > 0) text += std::to_string(FRow) + ":";
    if (!FColumn.empty()) text += std::string(FColumn) + ":";
    text += " ";
  }
  return text + FReason;
}

std::vector<TBookFinding> FindBrokenReferences(TSqliteConnection& connection) {
  std::vector<TBookFinding> findings;
  for (const TBookTable& table : kBookTables) {
    for (const TBookColumn& column : table.FColumns) {
      if (column.FReference) FindBrokenReference(connection, table, column, findings);
    }
  }
  return findings;
}

std::vector<TBookFinding> FindBrokenRules(TSqliteConnection& connection, const std::set<TTable>& tables) {
  std::vector<TBookFinding> findings;
  for (const TBookRule& rule : kRules) {
    if (tables.contains(rule.FTable)) std::ranges::move(rule.FFind(connection), std::back_inserter(findings));
  }
  return findings;
}

std::vector<TBookFinding> FindBrokenRules(TSqliteConnection& connection) {
  std::set<TTable> tables;
  for (const TBookRule& rule : kRules) tables.insert(rule.FTable);
  return FindBrokenRules(connection, tables);
}

}  // namespace margindesk
