#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "host/services/HostContents.h"

struct sqlite3;
struct sqlite3_stmt;

namespace margindesk {

// The limit: the six totals over plain arrays with numbered currencies and symbols, one pass a total, with
// the same selection, arithmetic and number of passes as the data control.
class TFlatTotals {
 public:
  explicit TFlatTotals(const THostContents& contents);

  // Of one currency by its index; -1 for all of them, in the base currency.
  double GetSixTotals(int currency) const;

 private:
  std::vector<double> FRatios;                         // by currency
  std::vector<bool> FExcluded;                         // by currency
  std::vector<int> FProductCurrencies;                 // by product
  std::vector<double> FPrices;                         // by product
  std::vector<int> FProducts;                          // by position
  std::vector<double> FQuantities;                     // by position, less what is excluded
  std::vector<double> FBought, FSold;                  // by position
  std::vector<double> FPLFirst, FPLSecond, FRealized;  // by position
};

// A peer: SQLite in memory, asked for the same six totals grouped by currency in one statement.
class TSqliteTotals {
 public:
  explicit TSqliteTotals(const THostContents& contents);
  ~TSqliteTotals();
  TSqliteTotals(const TSqliteTotals&) = delete;
  TSqliteTotals& operator=(const TSqliteTotals&) = delete;

  // The sum of all six totals of every currency, in the base currency.
  double GetSixTotals();

 private:
  void Run(std::string_view statement);

  sqlite3* FDatabase = nullptr;
  sqlite3_stmt* FQuery = nullptr;
};

}  // namespace margindesk
