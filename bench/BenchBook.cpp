#include "bench/BenchBook.h"

#include <array>
#include <random>
#include <string>

namespace margindesk {

namespace {

constexpr std::array<std::string_view, kCurrencyCount> kCurrencies = {"HKD", "USD", "CNY", "JPY", "EUR",
                                                                      "GBP", "AUD", "CAD", "CHF", "SGD"};

TPositionFacts MakePosition(TCode account, std::size_t number, std::mt19937& random) {
  const auto amount = [&random] { return static_cast<double>(random() % 1000000) / 100; };
  TPositionFacts position;
  position.FAccount = account;
  position.FKey = std::to_string(number);
  position.FSymbol = TCode("P" + std::to_string(random() % kProductCount));
  position.FHoldingQuantity = static_cast<double>(random() % 10000);
  position.FExcludedQuantity = static_cast<double>(random() % 100);
  position.FCompletedBuyAmount = amount();
  position.FCompletedSellAmount = amount();
  position.FPLFirstPart = amount();
  position.FPLSecondPart = -amount();
  position.FRealizedPL = amount();
  return position;
}

void AddAccount(THostContents& contents, TCode account, TCode master, std::mt19937& random) {
  TAccountFacts facts;
  facts.FAccount = account;
  facts.FMaster = master;
  if (master.IsEmpty()) facts.FMasterType = 1;
  contents.FAccounts.push_back(facts);
  std::vector<TCode> currencies = GetBenchCurrencies();
  currencies.insert(currencies.begin(), TCode());
  for (const TCode currency : currencies) {
    TFigureFacts figures;
    figures.FAccount = account;
    figures.FCurrency = currency;
    figures.FSeparateRow = !currency.IsEmpty();
    for (double& figure : figures.FFigures) figure = static_cast<double>(random() % 100000000) / 100;
    contents.FFigures.push_back(figures);
  }
}

}  // namespace

std::vector<TCode> GetBenchCurrencies() { return {kCurrencies.begin(), kCurrencies.end()}; }

THostContents MakeBenchBook(std::size_t positionCount, std::size_t subAccountCount) {
  std::mt19937 random(20260101);
  THostContents contents;
  double ratio = 1;
  for (const TCode currency : GetBenchCurrencies()) {
    contents.FCurrencies.push_back({currency, ratio, false, ratio == 1});
    ratio += 0.37;
  }
  contents.FExchanges.push_back({TCode("X1"), false, true, 1});
  contents.FExchanges.push_back({TCode("X2"), false, true, 2});
  for (std::size_t i = 0; i < kProductCount; ++i) {
    TProductFacts product;
    product.FSymbol = TCode("P" + std::to_string(i));
    product.FExchange = TCode(i % 2 == 0 ? "X1" : "X2");
    product.FCurrency = TCode(kCurrencies[i % kCurrencyCount]);
    contents.FProducts.push_back(product);
    TPriceFacts prices;
    prices.FLast = 1 + static_cast<double>(random() % 10000) / 100;
    contents.FPrices.emplace_back(product.FSymbol, prices);
  }
  const TCode master("M");
  AddAccount(contents, master, TCode(), random);
  std::vector<TCode> holders;
  for (std::size_t i = 0; i < subAccountCount; ++i) {
    holders.emplace_back("S" + std::to_string(i));
    AddAccount(contents, holders.back(), master, random);
  }
  if (holders.empty()) holders.push_back(master);
  for (std::size_t i = 0; i < positionCount; ++i) {
    contents.FPositions.push_back(MakePosition(holders[i % holders.size()], i, random));
  }
  return contents;
}

TReferenceHostOptions GetBenchOptions() {
  TReferenceHostOptions options;
  options.FLanguageDirectory = MARGINDESK_SOURCE_DIR "/resources/languages";
  return options;
}

}  // namespace margindesk
