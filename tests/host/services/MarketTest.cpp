#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/contract/Constdef.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/MarketAdapter.h"
#include "model/contract/SubscribeAdapter.h"
#include "model/contract/UserAppProfile.h"
#include "tests/host/services/Recorder.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TCustomSubItem* ItemOf(std::string_view symbol) {
  return TCustomSubscribeAdapter::GetInstance().GetSubItem(TCode(symbol), "PRCDDS");
}

TEST(MarketTest, AnItemIsReadyWhenItsProductAndItsPriceAreKnown) {
  TTestBook book;
  book.Product("700", "HKD", 400);
  book.Product("silent", "HKD", 0);
  TTestHost host(book);
  EXPECT_EQ(ItemOf("700")->GetStatus(), 1);
  EXPECT_EQ(ItemOf("silent")->GetStatus(), 2);
  EXPECT_EQ(ItemOf("unknown")->GetStatus(), 0);
  host.Data().SetItemStatus(TCode("700"), 2);
  EXPECT_EQ(ItemOf("700")->GetStatus(), 2) << "the feed says that it is not current";
  host.Data().SetItemStatus(TCode("700"), std::nullopt);
  EXPECT_EQ(ItemOf("700")->GetStatus(), 1);
  EXPECT_EQ(TCustomSubscribeAdapter::GetInstance().GetSubItem(TCode("700"), "OTHER"), nullptr);
  EXPECT_EQ(ItemOf(""), nullptr);
}

TEST(MarketTest, AnItemAnswersTheNumberedFieldsOfItsSymbol) {
  TTestBook book;
  book.Product("bond", "USD", 98.25).Exchange("OTC").Type(6).LotSize(1000).ContractSize(0.01);
  book.Product("bond", "USD", 98.25).OverTheCounter(200000, 1000).MarketCode("OTCB").PreviousClose(98);
  book.Product("share", "HKD", 60);
  const TTestHost host(book);
  const TCustomSubItem& bond = *ItemOf("bond");
  EXPECT_EQ(bond.GetFieldCode(kItemExchange), TCode("OTC"));
  EXPECT_EQ(bond.GetFieldCode(kItemCurrency), TCode("USD"));
  const std::pair<std::int32_t, std::string> texts[] = {
      {kItemExchange, "OTC"},       {kItemCurrency, "USD"},       {kItemProductType, "6"},
      {kItemLotSize, "1000"},       {kItemMarketCode, "OTCB"},    {kItemOTC, "1"},
      {kItemBondMinimum, "200000"}, {kItemBondIncrement, "1000"}, {kItemLast, "98.25"},
      {kItemPreviousClose, "98"},   {kItemContractSize, "0.01"}};
  for (const auto& [field, text] : texts) {
    EXPECT_EQ(bond.GetFieldText(field), text) << field;
    EXPECT_TRUE(bond.HasField(field)) << field;
  }
  EXPECT_EQ(bond.GetFieldFloat(kItemBondIncrement), 1000);
  for (const std::int32_t field : {kItemPriceMultiplier, kItemReferencePrice, kItemBid, 4711}) {
    EXPECT_FALSE(bond.HasField(field)) << field;
    EXPECT_EQ(bond.GetFieldText(field), "") << field;
    EXPECT_EQ(bond.GetFieldFloat(field), 0) << field;
  }
  EXPECT_EQ(ItemOf("share")->GetFieldText(kItemOTC), "0");
  EXPECT_FALSE(ItemOf("unknown")->HasField(kItemOTC));
  EXPECT_TRUE(ItemOf("unknown")->GetFieldCode(kItemCurrency).IsEmpty());
}

TEST(MarketTest, WhoeverWaitsForASymbolIsToldWhenItIsKnown) {
  TTestHost host;
  TRecorder recorder;
  auto& adapter = TCustomSubscribeAdapter::GetInstance();
  TCustomSubItem* item = ItemOf("700");
  adapter.AddSymbolHandler(item, recorder.Plain(), &recorder);
  TProductFacts facts;
  facts.FSymbol = TCode("5");
  host.Data().SetProduct(facts);
  host.RunLoop();
  EXPECT_THAT(recorder.Take(), IsEmpty()) << "another symbol";
  facts.FSymbol = TCode("700");
  host.Data().SetProduct(facts);
  TPriceFacts prices;
  prices.FLast = 400;
  host.Data().SetPrice(TCode("700"), prices);
  host.RunLoop();
  EXPECT_THAT(recorder.Take(), ElementsAre("called"));
  EXPECT_EQ(item->GetStatus(), kItemReady) << "the item that was there before follows the product";
  adapter.RemoveSymbolHandlers(item, &recorder);
}

TEST(MarketTest, AProductIsFoundWhileTheMarketListsIt) {
  TTestBook book;
  book.Exchange("HK").Exchange("US", false);
  book.Product("700", "HKD", 400).Exchange("HK").LotSize(100).Type(1).MarketCode("HKEQ");
  book.Product("grey", "USD", 1).Unlisted();
  TTestHost host(book);
  const auto& market = TCustomMarketAdapter::GetInstance();
  const TCustomProduct* product = market.GetProduct(TCode("700"));
  ASSERT_NE(product, nullptr);
  EXPECT_EQ(product->GetCurrency(), TCode("HKD"));
  EXPECT_EQ(product->GetExchange(), TCode("HK"));
  EXPECT_EQ(product->GetLotSize(), "100");
  EXPECT_EQ(product->GetProductType(), "1");
  EXPECT_EQ(product->GetMarketCode(), TCode("HKEQ"));
  EXPECT_EQ(market.GetProduct(TCode("grey")), nullptr);
  EXPECT_EQ(ItemOf("grey")->GetFieldCode(kItemCurrency), TCode("USD"));
  EXPECT_EQ(market.GetProduct(TCode("unknown")), nullptr);
  EXPECT_EQ(market.GetProduct(TCode()), nullptr);
  EXPECT_TRUE(market.IsExchangeOpen(TCode("HK")));
  EXPECT_FALSE(market.IsExchangeOpen(TCode("US")));
  EXPECT_FALSE(market.IsExchangeOpen(TCode("XX")));
  host.Data().Replace(THostContents());
  EXPECT_EQ(market.GetProduct(TCode("700")), nullptr);
  EXPECT_EQ(ItemOf("700")->GetStatus(), 0);
}

TEST(MarketTest, PeriodsAreShownInTheOrderOfTheExchanges) {
  TTestBook book;
  book.Exchange("AA").PeriodExchange("ZZ").PeriodExchange("MM");
  TTestHost host(book);
  std::vector<TCode> exchanges = {TCode("old")};
  EXPECT_TRUE(TCustomUserAppProfile::GetInstance().GetPeriodExchangeList(exchanges));
  EXPECT_THAT(exchanges, ElementsAre(TCode("ZZ"), TCode("MM")));
}

TEST(CurrencyTest, RatiosExclusionsAndTheirOrderComeFromTheBook) {
  TTestBook book;
  book.Currency("HKD", 1).Currency("USD", 7.8).ExcludedCurrency("TWD", 0.25);
  TTestHost host(book);
  const auto& currencies = TCustomCurrencyAdapter::GetInstance();
  EXPECT_EQ(currencies.GetBaseCurrency(), TCode("HKD"));
  EXPECT_EQ(currencies.GetCurrencyCount(), 3);
  EXPECT_EQ(currencies.GetCurrencyCode(1), TCode("USD"));
  EXPECT_TRUE(currencies.GetCurrencyCode(3).IsEmpty());
  EXPECT_TRUE(currencies.GetCurrencyCode(-1).IsEmpty());
  EXPECT_EQ(currencies.GetCurrencyRatio(TCode("USD")), 7.8);
  EXPECT_EQ(currencies.GetCurrencyRatio(TCode()), 1);
  EXPECT_EQ(currencies.GetCurrencyRatio(TCode("usd")), 0) << "letter case counts";
  EXPECT_TRUE(currencies.IsCurrencyExcluded(TCode("TWD")));
  EXPECT_FALSE(currencies.IsCurrencyExcluded(TCode("USD")));
  EXPECT_FALSE(currencies.IsCurrencyExcluded(TCode("a currency that came up after the book was read")));
  host.Data().Replace(THostContents());
  EXPECT_EQ(currencies.GetCurrencyRatio(TCode("USD")), 0);
  EXPECT_FALSE(currencies.IsCurrencyExcluded(TCode("TWD")));
}

TEST(CurrencyTest, EachKindOfChangeCallsItsOwnHandlers) {
  TTestBook book;
  book.Currency("HKD", 1).Currency("USD", 7.8);
  TTestHost host(book);
  auto& currencies = TCustomCurrencyAdapter::GetInstance();
  TRecorder ratios, list, mode;
  currencies.AddCurrencyRatioHandler(ratios.Plain(), &host);
  currencies.AddCurrencyListHandler(list.Plain(), &host);
  currencies.AddMultiCurrencyInfoHandler(mode.Plain(), &host);
  const auto calls = [&] {
    host.RunLoop();
    return std::vector<std::size_t>{ratios.Take().size(), list.Take().size(), mode.Take().size()};
  };
  host.Data().SetCurrencyRatio(TCode("USD"), 7.79);
  host.Data().SetCurrencyRatio(TCode("USD"), 7.81);
  EXPECT_THAT(calls(), ElementsAre(1, 0, 0));
  host.Data().SetCurrencyRatio(TCode("EUR"), 8);
  EXPECT_THAT(calls(), ElementsAre(0, 0, 0)) << "no such currency";
  host.Data().SetCurrency({TCode("EUR"), 8.4});
  EXPECT_THAT(calls(), ElementsAre(1, 1, 0));
  host.Data().SetMultiCurrency(false);
  EXPECT_THAT(calls(), ElementsAre(0, 0, 1));
  host.Data().Replace(book.Contents());
  EXPECT_THAT(calls(), ElementsAre(1, 1, 1));
  currencies.RemoveCurrencyRatioHandler(&host);
  currencies.RemoveCurrencyListHandler(&host);
  currencies.RemoveMultiCurrencyInfoHandler(&host);
}

}  // namespace
}  // namespace margindesk
