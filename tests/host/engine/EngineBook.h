#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/services/ClientOrderRecord.h"
#include "model/contract/Constdef.h"
#include "tests/support/TestBook.h"

namespace margindesk {

// A small market: stocks, futures on one index in two sizes, options on it, a bond and a fund over the
// counter. The margin account A holds figures in HKD and USD below a consolidated master M; B is a futures
// account.
struct TEngineBook : TTestBook {
  TEngineBook() {
    Currency("HKD", 1);
    Currency("USD", 8);
    Currency("CNY", 2);
    Currency("TWD", 0.25).FExcluded = true;
    for (const char* exchange : {"HK", "HF", "US", "SH", "TW", "OTC"}) Exchange(exchange);
    FExchanges[3].FChinaConnect = true;
    FCharges = {{TCode("HK"), 0.001, 0, 10}, {TCode("HF"), 0, 15, 0}, {TCode("US"), 0.0013, 0.01, 1}};
    Stock("700", "HK", "HKD", 10).FLotSize = 100;
    Stock("AA", "US", "USD", 20);
    Stock("601", "SH", "CNY", 5);
    Stock("TW1", "TW", "TWD", 100);
    Derivative("IDX", "", 7, 1, 25142.3);
    Derivative("F1", "IDX", 2, 50, 25168);
    Derivative("F2", "IDX", 2, 50, 25236);
    Derivative("MF", "IDX", 2, 10, 25167);
    FMargins.push_back({TCode("F1"), 0, 0, 0, 0, 118000, 94400, 24000, 19200});
    FMargins.push_back({TCode("F2"), 0, 0, 0, 0, 118000, 94400, 24000, 19200});
    FMargins.push_back({TCode("MF"), 0, 0, 0, 0, 23600, 18880, 4800, 3840});
    Option("C27", 'C', 27000, 146);
    Option("P24", 'P', 24000, 205);
    TProductFacts& bond = Derivative("BOND", "", kProductTypeBond, 0.01, 98);
    bond.FExchange = TCode("OTC");
    bond.FOverTheCounter = true;
    bond.FLotSize = 1000;
    bond.FMinimum = 100000;
    bond.FIncrement = 50000;
    TProductFacts& fund = Derivative("FUND", "", kProductTypeFund, 1, 12.5);
    fund.FExchange = TCode("OTC");
    fund.FOverTheCounter = true;
    fund.FLotSize = 0.001;
    fund.FMinimum = 1000;
    Account("M").FMasterType = kMasterTypeConsolidated;
    Account("A", "M").FMarginType = 1;
    Account("B", "M").FType = "F";
    for (const char* account : {"A", "B"}) {
      for (const char* currency : {"", "HKD", "USD"}) Limit(Figures(account, currency, 1e6), 1e6);
    }
  }

  TProductFacts& Stock(std::string_view symbol, std::string_view exchange, std::string_view currency,
                       double price) {
    TProductFacts& product = Quoted(symbol, currency, price);
    product.FProductType = 1;
    product.FExchange = TCode(exchange);
    FMargins.push_back({TCode(symbol), 0.4, 0.3, 0, 0.6, 0, 0, 0, 0});
    return product;
  }
  TProductFacts& Derivative(std::string_view symbol, std::string_view underlying, std::int32_t type,
                            double size, double price) {
    TProductFacts& product = Quoted(symbol, "HKD", price);
    product.FExchange = TCode("HF");
    product.FUnderlying = TCode(underlying);
    product.FProductType = type;
    product.FContractSize = size;
    return product;
  }
  void Option(std::string_view symbol, char right, double strike, double price) {
    TProductFacts& product = Derivative(symbol, "IDX", 3, 50, price);
    product.FOptionRight = right;
    product.FStrike = strike;
    FMargins.push_back({TCode(symbol), 0.07, 0.056, 0.03, 0, 0, 0, 0, 0});
  }
  // A market a tenth wide around the last price.
  TProductFacts& Quoted(std::string_view symbol, std::string_view currency, double price) {
    TProductFacts& product = Product(symbol, currency, price);
    FPrices.back().second.FBid = price - 0.05;
    FPrices.back().second.FAsk = price + 0.05;
    return product;
  }
  static void Limit(TFigureFacts& figures, double limit) {
    FigureOf(figures, TFigure::kGrossTradingLimit) = limit;
    FigureOf(figures, TFigure::kTradingLimit) = limit;
  }
};

inline TOrderFacts OrderFor(std::string_view account, std::string_view symbol, std::int32_t side,
                            double price, double quantity) {
  TOrderFacts order;
  order.FAccount = TCode(account);
  order.FSymbol = TCode(symbol);
  order.FSide = side;
  order.FPrice = price;
  order.FQuantity = quantity;
  return order;
}

inline std::unique_ptr<TClientOrderRecord> ClientOrderOf(const TOrderFacts& facts,
                                                         std::int32_t status = kStatusNotGiven) {
  auto order = std::make_unique<TClientOrderRecord>();
  order->SetAccount(facts.FAccount);
  order->SetSymbol(facts.FSymbol);
  order->SetSide(facts.FSide);
  order->SetPrice(facts.FPrice);
  order->SetQuantity(facts.FQuantity);
  order->SetStatus(status);
  if (facts.FMarket) order->SetExtraField(kOrderTypeField, kOrderTypeMarket);
  return order;
}

}  // namespace margindesk
