#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "host/services/HostContents.h"

namespace margindesk {

class TTestAccount;
class TTestProduct;

// A little book, written in a test:
//
//   TTestBook book;
//   book.Currency("HKD", 1).Currency("USD", 7.8);
//   book.Product("5", "HKD", 60).Exchange("HKEX");
//   book.Account("A1").Master("M1")
//       .Figures("HKD").Set(TFigure::kCashBalance, 100).SeparateRow()
//       .Figures("").Set(TFigure::kCashBalance, 100)
//       .Position("5", 400).Bought(24000).PL(30, 12);
//
// Nothing is checked: a position may name a symbol that is no product, an account a master that is not there.
class TTestBook {
 public:
  // The first currency is the base currency.
  TTestBook& Currency(std::string_view currency, double ratio);
  TTestBook& ExcludedCurrency(std::string_view currency, double ratio);
  TTestBook& SingleCurrency();  // instead of several currencies
  TTestBook& ChinaConnectOn();
  TTestBook& Exchange(std::string_view exchange, bool open = true);
  TTestBook& ChinaConnectExchange(std::string_view exchange);
  TTestBook& PeriodExchange(std::string_view exchange);  // shown in the order of these calls
  TTestBook& CustomField(std::string_view table, std::string_view field, std::string_view key);

  // A listed product with a last price, 0 for none. A product named again is the same one.
  TTestProduct Product(std::string_view symbol, std::string_view currency, double last);
  // An account named again is the same one.
  TTestAccount Account(std::string_view account);

  const THostContents& Contents() const noexcept { return FContents; }
  THostContents& Contents() noexcept { return FContents; }

 private:
  TExchangeFacts& AddExchange(std::string_view exchange);

  THostContents FContents;
};

// A product of a little book, to be described further. The book must outlive it.
class TTestProduct {
 public:
  TTestProduct(THostContents& contents, std::size_t index) : FContents(contents), FIndex(index) {}

  TTestProduct& Exchange(std::string_view exchange);
  TTestProduct& Type(std::int32_t type);  // 6 bond, 10 fund
  TTestProduct& ContractSize(double size);
  TTestProduct& LotSize(double size);
  TTestProduct& OverTheCounter(double minimum = 0, double increment = 0);
  TTestProduct& PriceMultiplier(double multiplier);
  TTestProduct& MarketCode(std::string_view code);
  TTestProduct& BidAsk(double bid, double ask);
  TTestProduct& PreviousClose(double price);
  TTestProduct& Unlisted();  // known to its subscription item alone

 private:
  TProductFacts& Facts() { return FContents.FProducts[FIndex]; }
  TPriceFacts& Prices() { return FContents.FPrices[FIndex].second; }

  THostContents& FContents;
  std::size_t FIndex;
};

// An account of a little book, to be described further. What is said of figures is about the last Figures or
// Consolidated, what is said of a position about the last Position. The book must outlive it.
class TTestAccount {
 public:
  TTestAccount(THostContents& contents, std::size_t index) : FContents(contents), FIndex(index) {}

  TTestAccount& Name(std::string_view name);
  TTestAccount& User(std::string_view user);
  TTestAccount& Type(std::string_view type);  // "S" stock, "F" futures
  TTestAccount& Master(std::string_view master);
  TTestAccount& MasterType(std::int32_t type);  // makes it a master account; 10 for a consolidated one
  TTestAccount& MarginType(std::int32_t type);
  TTestAccount& Contact(std::string_view mobile, std::string_view email);
  TTestAccount& StatusFlags(std::int32_t flags);
  TTestAccount& BODUpdateTime(std::string_view time);
  TTestAccount& MarginClass(std::string_view marginClass);
  TTestAccount& DayTradeStatus(std::int32_t status);
  TTestAccount& Online();
  TTestAccount& PositionIsolation(std::string_view word);
  TTestAccount& MarginMethod(std::string_view word);
  TTestAccount& Attribute(std::string_view name, std::string_view value);
  TTestAccount& CustomValue(std::string_view key, std::string_view value);
  TTestAccount& CustomBalance(std::string_view currency, std::string_view key, double amount);
  TTestAccount& ChinaConnectAccount(std::string_view account);

  TTestAccount& Figures(std::string_view currency);  // "" for the total row
  TTestAccount& Consolidated(std::string_view currency);
  TTestAccount& Set(TFigure figure, double value);
  TTestAccount& Custom(std::int32_t number, std::string_view value);
  TTestAccount& SeparateRow();

  TTestAccount& Position(std::string_view symbol, double holdingQuantity);
  TTestAccount& Key(std::string_view key);
  TTestAccount& Excluded(double quantity);
  TTestAccount& Bought(double amount);
  TTestAccount& Sold(double amount);
  TTestAccount& PL(double firstPart, double secondPart);
  TTestAccount& Realized(double amount);
  TTestAccount& PriceBased(double averagePrice);

 private:
  TAccountFacts& Facts() { return FContents.FAccounts[FIndex]; }
  TFigureFacts& LastFigures();
  TPositionFacts& LastPosition() { return FContents.FPositions.back(); }

  THostContents& FContents;
  std::size_t FIndex;
  bool FIsConsolidated = false;
};

}  // namespace margindesk
