#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/contract/Constdef.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/MarketAdapter.h"
#include "model/contract/SubscribeAdapter.h"
#include "tests/host/services/Recorder.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TCustomSubItem* ItemOf(std::string_view symbol) {
  return TCustomSubscribeAdapter::GetInstance().GetSubItem(TCode(symbol), "PRCDDS");
}

TEST(MarketTest, AnItemAnswersTheFieldsOfItsSymbolAndIsReadyWhenItIsKnownAndHasAPrice) {
  TTestBook book;
  TProductFacts& facts = book.Product("bond", "USD", 98.25);
  facts.FLotSize = 1000;
  facts.FOverTheCounter = true;
  facts.FMinimum = 200000;
  book.Product("silent", "HKD", 0).FListed = false;
  TTestHost host(book);
  const TCustomSubItem& bond = *ItemOf("bond");
  const std::pair<std::int32_t, std::string> texts[] = {
      {kItemCurrency, "USD"}, {kItemLotSize, "1000"},    {kItemOTC, "1"}, {kItemBondMinimum, "200000"},
      {kItemLast, "98.25"},   {kItemReferencePrice, ""}, {kItemBid, ""},  {4711, ""}};
  for (const auto& [field, text] : texts) {
    EXPECT_EQ(bond.GetFieldText(field), text) << field;
    EXPECT_EQ(bond.HasField(field), !text.empty()) << field;
  }
  EXPECT_EQ(ItemOf("silent")->GetFieldText(kItemOTC), "0");
  EXPECT_FALSE(ItemOf("unknown")->HasField(kItemOTC));
  EXPECT_EQ(bond.GetStatus(), 1);
  EXPECT_EQ(ItemOf("silent")->GetStatus(), 2);
  EXPECT_EQ(ItemOf("unknown")->GetStatus(), 0);
  host.Data().SetItemStatus(TCode("bond"), 2);
  EXPECT_EQ(bond.GetStatus(), 2) << "the feed says that it is not current";

  const auto& market = TCustomMarketAdapter::GetInstance();
  EXPECT_NE(market.GetProduct(TCode("bond")), nullptr);
  EXPECT_EQ(market.GetProduct(TCode("silent")), nullptr) << "not listed";
  host.Data().Replace({});
  EXPECT_EQ(market.GetProduct(TCode("bond")), nullptr);
}

TEST(MarketTest, WhoeverWaitsForASymbolIsToldWhenItIsKnown) {
  TTestHost host;
  TRecorder recorder;
  auto& adapter = TCustomSubscribeAdapter::GetInstance();
  TCustomSubItem* item = ItemOf("700");
  adapter.AddSymbolHandler(item, recorder.Plain(), &recorder);
  host.Data().SetProduct(TTestBook().Product("5", "HKD", 0));
  host.RunLoop();
  EXPECT_THAT(recorder.Take(), IsEmpty()) << "another symbol";
  host.Data().SetProduct(TTestBook().Product("700", "HKD", 0));
  host.Data().SetPrice(TCode("700"), {400});
  host.RunLoop();
  EXPECT_THAT(recorder.Take(), ElementsAre("called"));
  EXPECT_EQ(item->GetStatus(), kItemReady) << "the item that was there before follows the product";
  adapter.RemoveSymbolHandlers(item, &recorder);
}

TEST(CurrencyTest, EachKindOfChangeCallsItsOwnHandlers) {
  TTestBook book;
  book.Currency("HKD", 1);
  book.Currency("TWD", 0.25).FExcluded = true;
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
  host.Data().SetCurrencyRatio(TCode("TWD"), 0.3);
  host.Data().SetCurrencyRatio(TCode("TWD"), 0.5);
  EXPECT_THAT(calls(), ElementsAre(1, 0, 0));
  EXPECT_EQ(currencies.GetCurrencyRatio(TCode("TWD")), 0.5);
  EXPECT_EQ(currencies.GetCurrencyRatio(TCode()), 1);
  EXPECT_TRUE(currencies.IsCurrencyExcluded(TCode("TWD")));
  host.Data().SetCurrencyRatio(TCode("EUR"), 8);
  EXPECT_THAT(calls(), ElementsAre(0, 0, 0)) << "no such currency";
  host.Data().SetCurrency({TCode("EUR"), 8.4});
  EXPECT_THAT(calls(), ElementsAre(1, 1, 0));
  host.Data().SetMultiCurrency(false);
  EXPECT_THAT(calls(), ElementsAre(0, 0, 1));
  host.Data().Replace({});
  EXPECT_THAT(calls(), ElementsAre(1, 1, 1));
  EXPECT_EQ(currencies.GetCurrencyRatio(TCode("TWD")), 0);
  EXPECT_FALSE(currencies.IsCurrencyExcluded(TCode("TWD")));
  currencies.RemoveCurrencyRatioHandler(&host);
  currencies.RemoveCurrencyListHandler(&host);
  currencies.RemoveMultiCurrencyInfoHandler(&host);
}

}  // namespace
}  // namespace margindesk
