#pragma once

#include <string_view>

#include "host/services/HostContents.h"

namespace margindesk {

inline double& FigureOf(TFigureFacts& facts, TFigure figure) {
  return facts.FFigures[static_cast<std::size_t>(figure)];
}

// The contents of a host, written in a test. Every operation adds a row and hands it out to be described
// further; it is lent until the next row of its kind. Nothing is checked: a position may name a symbol that
// is no product.
struct TTestBook : THostContents {
  // The first currency is the base currency.
  TCurrencyFacts& Currency(std::string_view currency, double ratio) {
    return FCurrencies.emplace_back(TCurrencyFacts{TCode(currency), ratio, false, FCurrencies.empty()});
  }

  TExchangeFacts& Exchange(std::string_view exchange, bool open = true) {
    FExchanges.emplace_back().FExchange = TCode(exchange);
    FExchanges.back().FOpen = open;
    return FExchanges.back();
  }

  // Its prices are the last of FPrices; a last price of 0 is none.
  TProductFacts& Product(std::string_view symbol, std::string_view currency, double last) {
    FPrices.emplace_back().first = TCode(symbol);
    FPrices.back().second.FLast = last;
    FProducts.emplace_back().FSymbol = TCode(symbol);
    FProducts.back().FCurrency = TCode(currency);
    return FProducts.back();
  }

  TAccountFacts& Account(std::string_view account, std::string_view master = "") {
    FAccounts.emplace_back().FAccount = TCode(account);
    FAccounts.back().FMaster = TCode(master);
    return FAccounts.back();
  }

  TFigureFacts& Figures(std::string_view account, std::string_view currency, double cashBalance = 0) {
    TFigureFacts& figures = FFigures.emplace_back();
    figures.FAccount = TCode(account);
    figures.FCurrency = TCode(currency);
    FigureOf(figures, TFigure::kCashBalance) = cashBalance;
    return figures;
  }

  TPositionFacts& Position(std::string_view account, std::string_view symbol, double holdingQuantity) {
    TPositionFacts& position = FPositions.emplace_back();
    position.FAccount = TCode(account);
    position.FSymbol = TCode(symbol);
    position.FHoldingQuantity = holdingQuantity;
    return position;
  }
};

}  // namespace margindesk
