#include "bench/Peers.h"

#include <stdexcept>
#include <string>
#include <unordered_map>

#include <sqlite3.h>

#include "model/contract/Variant.h"

namespace margindesk {

TFlatTotals::TFlatTotals(const THostContents& contents) {
  std::unordered_map<TCode, int> currencies;
  for (const TCurrencyFacts& currency : contents.FCurrencies) {
    currencies[currency.FCurrency] = static_cast<int>(FRatios.size());
    FRatios.push_back(currency.FRatio);
    FExcluded.push_back(currency.FExcluded);
  }
  std::unordered_map<TCode, int> products;
  for (const TProductFacts& product : contents.FProducts) {
    products[product.FSymbol] = static_cast<int>(FProductCurrencies.size());
    FProductCurrencies.push_back(currencies.at(product.FCurrency));
  }
  FPrices.resize(FProductCurrencies.size());
  for (const auto& [symbol, prices] : contents.FPrices) {
    FPrices[static_cast<std::size_t>(products.at(symbol))] = prices.FLast;
  }
  for (const TPositionFacts& position : contents.FPositions) {
    FProducts.push_back(products.at(position.FSymbol));
    FQuantities.push_back(position.FHoldingQuantity - position.FExcludedQuantity);
    FBought.push_back(position.FCompletedBuyAmount);
    FSold.push_back(position.FCompletedSellAmount);
    FPLFirst.push_back(position.FPLFirstPart);
    FPLSecond.push_back(position.FPLSecondPart);
    FRealized.push_back(position.FRealizedPL);
  }
}

double TFlatTotals::GetSixTotals(int currency) const {
  const auto total = [this, currency](auto amount) {
    double sum = 0;
    for (std::size_t i = 0; i < FProducts.size(); ++i) {
      const int own = FProductCurrencies[static_cast<std::size_t>(FProducts[i])];
      const auto index = static_cast<std::size_t>(own);
      if (currency >= 0 ? own != currency : FExcluded[index]) continue;
      sum += currency >= 0 ? amount(i) : amount(i) * FRatios[index];
    }
    return sum;
  };
  return total([this](std::size_t i) {
           return FQuantities[i] * FPrices[static_cast<std::size_t>(FProducts[i])];
         }) +
         total([this](std::size_t i) { return FBought[i]; }) +
         total([this](std::size_t i) { return FSold[i]; }) +
         total([this](std::size_t i) { return FPLFirst[i] + FPLSecond[i]; }) +
         total([this](std::size_t i) { return FRealized[i]; }) +
         total([this](std::size_t i) { return FPLFirst[i] + FPLSecond[i] - FRealized[i]; });
}

TSqliteTotals::TSqliteTotals(const THostContents& contents) {
  if (sqlite3_open(":memory:", &FDatabase) != SQLITE_OK) throw std::runtime_error("SQLite cannot be opened");
  Run("CREATE TABLE currencies(currency TEXT PRIMARY KEY, ratio REAL, excluded INTEGER) WITHOUT ROWID");
  Run("CREATE TABLE products(symbol TEXT PRIMARY KEY, currency TEXT, price REAL) WITHOUT ROWID");
  Run("CREATE TABLE positions(symbol TEXT, quantity REAL, bought REAL, sold REAL, first REAL, second REAL, "
      "realized "
      "REAL)");
  Run("BEGIN");
  for (const TCurrencyFacts& c : contents.FCurrencies) {
    Run("INSERT INTO currencies VALUES('" + c.FCurrency.Text() + "'," + FloatToText(c.FRatio) + "," +
        (c.FExcluded ? "1" : "0") + ")");
  }
  for (const TProductFacts& p : contents.FProducts) {
    Run("INSERT INTO products VALUES('" + p.FSymbol.Text() + "','" + p.FCurrency.Text() + "',0)");
  }
  for (const auto& [symbol, prices] : contents.FPrices) {
    Run("UPDATE products SET price=" + FloatToText(prices.FLast) + " WHERE symbol='" + symbol.Text() + "'");
  }
  for (const TPositionFacts& p : contents.FPositions) {
    std::string values = "'" + p.FSymbol.Text() + "'";
    for (const double value : {p.FHoldingQuantity - p.FExcludedQuantity, p.FCompletedBuyAmount,
                               p.FCompletedSellAmount, p.FPLFirstPart, p.FPLSecondPart, p.FRealizedPL}) {
      values += "," + FloatToText(value);
    }
    Run("INSERT INTO positions VALUES(" + values + ")");
  }
  Run("COMMIT");
  Run("ANALYZE");
  constexpr const char* kQuery =
      "SELECT currencies.ratio, SUM(quantity * price), SUM(bought), SUM(sold), SUM(first + second), "
      "SUM(realized), "
      "SUM(first + second - realized) FROM positions JOIN products USING(symbol) JOIN currencies "
      "USING(currency) "
      "WHERE excluded = 0 GROUP BY currency";
  if (sqlite3_prepare_v2(FDatabase, kQuery, -1, &FQuery, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(FDatabase));
  }
}

TSqliteTotals::~TSqliteTotals() {
  sqlite3_finalize(FQuery);
  sqlite3_close(FDatabase);
}

void TSqliteTotals::Run(std::string_view statement) {
  if (sqlite3_exec(FDatabase, std::string(statement).c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(FDatabase));
  }
}

double TSqliteTotals::GetSixTotals() {
  double sum = 0;
  while (sqlite3_step(FQuery) == SQLITE_ROW) {
    double row = 0;
    for (int column = 1; column <= 6; ++column) row += sqlite3_column_double(FQuery, column);
    sum += row * sqlite3_column_double(FQuery, 0);
  }
  sqlite3_reset(FQuery);
  return sum;
}

}  // namespace margindesk
