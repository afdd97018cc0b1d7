#include "tests/support/TestBook.h"

#include <algorithm>

namespace margindesk {

TTestBook& TTestBook::Currency(std::string_view currency, double ratio) {
  FContents.FCurrencies.push_back({TCode(currency), ratio, false, FContents.FCurrencies.empty()});
  return *this;
}

TTestBook& TTestBook::ExcludedCurrency(std::string_view currency, double ratio) {
  Currency(currency, ratio);
  FContents.FCurrencies.back().FExcluded = true;
  return *this;
}

TTestBook& TTestBook::SingleCurrency() {
  FContents.FMultiCurrency = false;
  return *this;
}

TTestBook& TTestBook::ChinaConnectOn() {
  FContents.FChinaConnect = true;
  return *this;
}

TTestBook& TTestBook::Exchange(std::string_view exchange, bool open) {
  AddExchange(exchange).FOpen = open;
  return *this;
}

TTestBook& TTestBook::ChinaConnectExchange(std::string_view exchange) {
  AddExchange(exchange).FChinaConnect = true;
  return *this;
}

TTestBook& TTestBook::PeriodExchange(std::string_view exchange) {
  const auto shown = std::ranges::count_if(
      FContents.FExchanges, [](const TExchangeFacts& facts) { return facts.FPeriodOrder.has_value(); });
  AddExchange(exchange).FPeriodOrder = static_cast<std::int32_t>(shown);
  return *this;
}

TTestBook& TTestBook::CustomField(std::string_view table, std::string_view field, std::string_view key) {
  FContents.FCustomFieldKeys[{std::string(table), std::string(field)}] = key;
  return *this;
}

TTestProduct TTestBook::Product(std::string_view symbol, std::string_view currency, double last) {
  const TCode code(symbol);
  const auto found = std::ranges::find(FContents.FProducts, code, &TProductFacts::FSymbol);
  const auto index = static_cast<std::size_t>(found - FContents.FProducts.begin());
  if (found == FContents.FProducts.end()) {
    FContents.FProducts.emplace_back();
    FContents.FPrices.emplace_back();
  }
  FContents.FProducts[index].FSymbol = code;
  FContents.FProducts[index].FCurrency = TCode(currency);
  FContents.FPrices[index].first = code;
  FContents.FPrices[index].second.FLast = last;
  return {FContents, index};
}

TTestAccount TTestBook::Account(std::string_view account) {
  const TCode code(account);
  const auto found = std::ranges::find(FContents.FAccounts, code, &TAccountFacts::FAccount);
  const auto index = static_cast<std::size_t>(found - FContents.FAccounts.begin());
  if (found == FContents.FAccounts.end()) FContents.FAccounts.emplace_back().FAccount = code;
  return {FContents, index};
}

TExchangeFacts& TTestBook::AddExchange(std::string_view exchange) {
  const TCode code(exchange);
  const auto found = std::ranges::find(FContents.FExchanges, code, &TExchangeFacts::FExchange);
  if (found != FContents.FExchanges.end()) return *found;
  TExchangeFacts& facts = FContents.FExchanges.emplace_back();
  facts.FExchange = code;
  return facts;
}

TTestProduct& TTestProduct::Exchange(std::string_view exchange) {
  Facts().FExchange = TCode(exchange);
  return *this;
}

TTestProduct& TTestProduct::Type(std::int32_t type) {
  Facts().FProductType = type;
  return *this;
}

TTestProduct& TTestProduct::ContractSize(double size) {
  Facts().FContractSize = size;
  return *this;
}

TTestProduct& TTestProduct::LotSize(double size) {
  Facts().FLotSize = size;
  return *this;
}

TTestProduct& TTestProduct::OverTheCounter(double minimum, double increment) {
  Facts().FOverTheCounter = true;
  Facts().FMinimum = minimum;
  Facts().FIncrement = increment;
  return *this;
}

TTestProduct& TTestProduct::PriceMultiplier(double multiplier) {
  Facts().FPriceMultiplier = multiplier;
  return *this;
}

TTestProduct& TTestProduct::MarketCode(std::string_view code) {
  Facts().FMarketCode = TCode(code);
  return *this;
}

TTestProduct& TTestProduct::BidAsk(double bid, double ask) {
  Prices().FBid = bid;
  Prices().FAsk = ask;
  return *this;
}

TTestProduct& TTestProduct::PreviousClose(double price) {
  Prices().FPreviousClose = price;
  return *this;
}

TTestProduct& TTestProduct::Unlisted() {
  Facts().FListed = false;
  return *this;
}

TTestAccount& TTestAccount::Name(std::string_view name) {
  Facts().FName = name;
  return *this;
}

TTestAccount& TTestAccount::User(std::string_view user) {
  Facts().FUser = user;
  return *this;
}

TTestAccount& TTestAccount::Type(std::string_view type) {
  Facts().FType = type;
  return *this;
}

TTestAccount& TTestAccount::Master(std::string_view master) {
  Facts().FMaster = TCode(master);
  return *this;
}

TTestAccount& TTestAccount::MasterType(std::int32_t type) {
  Facts().FMasterType = type;
  return *this;
}

TTestAccount& TTestAccount::MarginType(std::int32_t type) {
  Facts().FMarginType = type;
  return *this;
}

TTestAccount& TTestAccount::Contact(std::string_view mobile, std::string_view email) {
  Facts().FMobile = mobile;
  Facts().FEmail = email;
  return *this;
}

TTestAccount& TTestAccount::StatusFlags(std::int32_t flags) {
  Facts().FStatusFlags = flags;
  return *this;
}

TTestAccount& TTestAccount::BODUpdateTime(std::string_view time) {
  Facts().FBODUpdateTime = time;
  return *this;
}

TTestAccount& TTestAccount::MarginClass(std::string_view marginClass) {
  Facts().FMarginClass = marginClass;
  return *this;
}

TTestAccount& TTestAccount::DayTradeStatus(std::int32_t status) {
  Facts().FDayTradeStatus = status;
  return *this;
}

TTestAccount& TTestAccount::Online() {
  Facts().FOnline = true;
  return *this;
}

TTestAccount& TTestAccount::PositionIsolation(std::string_view word) {
  Facts().FPositionIsolation = word;
  return *this;
}

TTestAccount& TTestAccount::MarginMethod(std::string_view word) {
  Facts().FMarginMethod = word;
  return *this;
}

TTestAccount& TTestAccount::Attribute(std::string_view name, std::string_view value) {
  Facts().FAttributes[std::string(name)] = value;
  return *this;
}

TTestAccount& TTestAccount::CustomValue(std::string_view key, std::string_view value) {
  Facts().FCustomValues[std::string(key)] = value;
  return *this;
}

TTestAccount& TTestAccount::CustomBalance(std::string_view currency, std::string_view key, double amount) {
  Facts().FCustomBalances[std::string(key)].emplace_back(TCode(currency), amount);
  return *this;
}

TTestAccount& TTestAccount::ChinaConnectAccount(std::string_view account) {
  Facts().FChinaConnectAccount = TCode(account);
  return *this;
}

TTestAccount& TTestAccount::Figures(std::string_view currency) {
  FIsConsolidated = false;
  TFigureFacts& figures = FContents.FFigures.emplace_back();
  figures.FAccount = Facts().FAccount;
  figures.FCurrency = TCode(currency);
  return *this;
}

TTestAccount& TTestAccount::Consolidated(std::string_view currency) {
  FIsConsolidated = true;
  TFigureFacts& figures = FContents.FConsolidated.emplace_back();
  figures.FAccount = Facts().FAccount;
  figures.FCurrency = TCode(currency);
  return *this;
}

TTestAccount& TTestAccount::Set(TFigure figure, double value) {
  LastFigures().FFigures[static_cast<std::size_t>(figure)] = value;
  return *this;
}

TTestAccount& TTestAccount::Custom(std::int32_t number, std::string_view value) {
  LastFigures().FCustomFigures[number] = value;
  return *this;
}

TTestAccount& TTestAccount::SeparateRow() {
  LastFigures().FSeparateRow = true;
  return *this;
}

TTestAccount& TTestAccount::Position(std::string_view symbol, double holdingQuantity) {
  TPositionFacts& position = FContents.FPositions.emplace_back();
  position.FAccount = Facts().FAccount;
  position.FKey = symbol;
  position.FSymbol = TCode(symbol);
  position.FHoldingQuantity = holdingQuantity;
  position.FQuantity = holdingQuantity;
  position.FShort = holdingQuantity < 0;
  return *this;
}

TTestAccount& TTestAccount::Key(std::string_view key) {
  LastPosition().FKey = key;
  return *this;
}

TTestAccount& TTestAccount::Excluded(double quantity) {
  LastPosition().FExcludedQuantity = quantity;
  return *this;
}

TTestAccount& TTestAccount::Bought(double amount) {
  LastPosition().FCompletedBuyAmount = amount;
  return *this;
}

TTestAccount& TTestAccount::Sold(double amount) {
  LastPosition().FCompletedSellAmount = amount;
  return *this;
}

TTestAccount& TTestAccount::PL(double firstPart, double secondPart) {
  LastPosition().FPLFirstPart = firstPart;
  LastPosition().FPLSecondPart = secondPart;
  return *this;
}

TTestAccount& TTestAccount::Realized(double amount) {
  LastPosition().FRealizedPL = amount;
  return *this;
}

TTestAccount& TTestAccount::PriceBased(double averagePrice) {
  LastPosition().FPriceBased = true;
  LastPosition().FAveragePrice = averagePrice;
  return *this;
}

TFigureFacts& TTestAccount::LastFigures() {
  return FIsConsolidated ? FContents.FConsolidated.back() : FContents.FFigures.back();
}

}  // namespace margindesk
