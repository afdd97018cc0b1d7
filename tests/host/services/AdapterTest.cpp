#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/contract/AccountAdapter.h"
#include "model/contract/Constdef.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/Icommon.h"
#include "model/contract/MarketAdapter.h"
#include "model/contract/PositionAdapter.h"
#include "model/contract/SubscribeAdapter.h"
#include "tests/host/services/Recorder.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const TCode kA1("A1"), kA2("A2"), kM1("M1"), kHKD("HKD"), kTWD("TWD");

TTestBook TwoSubAccounts() {
  TTestBook book;
  book.Exchange("HK", false);
  book.Product("5", "HKD", 60);
  book.Product("700", "HKD", 400).FExchange = TCode("HK");
  book.Account("A1", "M1");
  book.Account("M1").FMasterType = 10;
  book.Account("A2", "M1");
  for (const char* account : {"A1", "A2"}) book.Figures(account, "HKD", 100);
  book.Position("A1", "5", 100);
  book.Position("A1", "700", 200);
  book.Position("A2", "5", 300);
  return book;
}

TPositionMap PositionsOf(TCode account) {
  TPositionMap positions;
  TCustomPositionAdapter::GetInstance().GetPositionList(account, positions);
  return positions;
}

double HoldingOf(const TPositionMap& positions, std::string_view key) {
  const TCustomPositionData* position = positions.Find(key);
  return position == nullptr ? 0 : position->GetHoldingQuantity();
}

class Adapters : public testing::Test {
 protected:
  void TearDown() override {
    FAccounts.RemoveAccountInfoLoadHandler(this);
    FAccounts.UnregisterMonitorInfoListener(kA1, this);
    FPositions.UnregisterPositionListener(kA2, this);
    FPositions.UnregisterSubAccountPositionListener(kM1, this);
    FPositions.RemovePositionMarketDataHandler(this);
  }

  void Upsert(std::string_view account, std::string_view symbol, double quantity) {
    FData.UpsertPosition(TTestBook().Position(account, symbol, quantity));
  }
  void SetCash(std::string_view account, double cash) {
    FData.SetFigures(TTestBook().Figures(account, "HKD", cash));
  }
  std::vector<std::string> Heard() {
    FHost.RunLoop();
    return FRecorder.Take();
  }
  static TCustomSubItem* ItemOf(std::string_view symbol) {
    return TCustomSubscribeAdapter::GetInstance().GetSubItem(TCode(symbol), "PRCDDS");
  }

  TTestBook FBook = TwoSubAccounts();
  TTestHost FHost{FBook};
  decltype(FHost.Data()) FData = FHost.Data();
  TCustomAccountAdapter& FAccounts = TCustomAccountAdapter::GetInstance();
  TCustomPositionAdapter& FPositions = TCustomPositionAdapter::GetInstance();
  TRecorder FRecorder;
};

TEST_F(Adapters, PositionsOfOneTurnArriveTogetherAndAMovedSubscriptionHearsTheNewAccount) {
  FPositions.RegisterPositionListener(kA1, FRecorder.Positions(), this, TCode());
  Upsert("A1", "5", 150);
  Upsert("A1", "9", 10);
  Upsert("A1", "5", 160);
  Upsert("A2", "5", 310);
  EXPECT_THAT(FRecorder.Take(), IsEmpty());
  EXPECT_THAT(Heard(), ElementsAre("A1(5 9 ) A2(5 ) "));
  EXPECT_EQ(HoldingOf(PositionsOf(kA1), "5"), 160);
  EXPECT_TRUE(FData.RemovePosition(kA1, "5"));
  EXPECT_THAT(Heard(), ElementsAre("A1() "));
  FPositions.RegisterPositionListener(kA2, FRecorder.Positions(), this, kA1);
  Upsert("A1", "5", 1);
  EXPECT_THAT(Heard(), IsEmpty());
  Upsert("A2", "5", 2);
  EXPECT_THAT(Heard(), ElementsAre("A2(5 ) "));
}

TEST_F(Adapters, AMasterHearsItsSubAccountsAndAHandlersOwnChangeInTheNextTurn) {
  FPositions.RegisterSubAccountPositionListener(kM1, FRecorder.Positions(), this);
  FRecorder.FOnNotice = [this] { Upsert("A1", "9", 7); };
  Upsert("A1", "700", 1);
  Upsert("A2", "5", 2);
  for (const char* heard : {"A1(700 ) A2(5 ) ", "A1(9 ) "}) {
    EXPECT_TRUE(FHost.Loop().RunOnce());
    EXPECT_THAT(FRecorder.Take(), ElementsAre(heard));
  }
}

TEST_F(Adapters, APositionMapKeepsWhatItHoldsWhateverHappensToThePositions) {
  const TPositionMap before = PositionsOf(kA1);
  Upsert("A1", "5", 999);
  EXPECT_EQ(HoldingOf(PositionsOf(kA1), "5"), 999);
  FData.RemovePosition(kA1, "5");
  FData.Replace({});
  EXPECT_EQ(HoldingOf(before, "5"), 100);
  EXPECT_EQ(HoldingOf(before, "700"), 200);
  EXPECT_EQ(before.Find("700")->GetReferenceItem(), nullptr) << "the symbol is no longer known";
  EXPECT_TRUE(PositionsOf(kA1).IsEmpty());
}

TEST_F(Adapters, APriceAndAReopenedMarketReachTheAccountsThatHoldTheSymbolNow) {
  FPositions.AddPositionMarketDataHandler(FRecorder.Positions(), this);
  for (const double last : {61, 62}) FData.SetPrice(TCode("5"), {last});
  EXPECT_THAT(Heard(), ElementsAre("A1(5 ) A2(5 ) "));
  FData.RemovePosition(kA1, "5");
  Upsert("A2", "700", 5);
  EXPECT_THAT(Heard(), IsEmpty()) << "no price changed";
  FData.SetPrice(TCode("5"), {63});
  EXPECT_THAT(Heard(), ElementsAre("A2(5 ) "));
  for (const auto& expected : {std::vector<std::string>{"A1(700 ) A2(700 ) "}, {}}) {  // open, open already
    FData.SetExchangeOpen(TCode("HK"), true);
    EXPECT_EQ(Heard(), expected);
  }
}

TEST_F(Adapters, AccountsOfOneTurnArriveTogetherAndAnUnknownOneNotAtAll) {
  FAccounts.AddAccountInfoLoadHandler(FRecorder.Accounts(), this);
  SetCash("A2", 5);
  SetCash("A1", 6);
  SetCash("A2", 7);
  EXPECT_THAT(Heard(), ElementsAre("A1 A2 "));
  EXPECT_EQ(FAccounts.GetAccount(kA2)->GetCurrencyData(kHKD)->GetCashBalance(), 7);
  SetCash("nobody", 1);
  FData.SetOnline(TCode("nobody"), true);
  EXPECT_THAT(Heard(), IsEmpty());

  FAccounts.SubscribeAccountOnlineStatus(kA1);
  FAccounts.UnsubscribeAccountOnlineStatus(kA1);  // of a view that never began: the status stays on
  FData.SetOnline(kA1, true);
  EXPECT_THAT(Heard(), ElementsAre("A1 "));
  EXPECT_TRUE(FAccounts.GetAccount(kA1)->IsOnline());

  const TCustomAccount* kept = FAccounts.GetAccount(kA2);
  FBook.FAccounts.pop_back();
  FBook.FFigures.pop_back();
  FBook.FPositions.pop_back();
  FData.Replace(FBook);
  EXPECT_EQ(FAccounts.GetAccount(kA2), nullptr);
  EXPECT_THAT(Heard(), ElementsAre("A1 A2 M1 ")) << "an account that is gone is reported blank once more";
  EXPECT_EQ(kept->GetAccountCurrencyCount(), 0) << "a record outlives its account";
  TAccountMap subAccounts;
  FAccounts.GetSubAccountList(kM1, subAccounts);
  EXPECT_THAT(subAccounts, ElementsAre(testing::Key(kA1)));
}

TEST_F(Adapters, MonitorInfoReachesTheListenersOfItsAccount) {
  FAccounts.RegisterMonitorInfoListener(kA1, FRecorder.Accounts(), this);
  FData.SetMonitorInfo(kA2, "B", -1);
  EXPECT_THAT(Heard(), IsEmpty());
  FData.SetMonitorInfo(kA1, "A", -1);
  EXPECT_THAT(Heard(), ElementsAre("A1 "));
  EXPECT_EQ(FAccounts.GetAccount(kA1)->GetMarginClass(), "A");
}

TEST_F(Adapters, LinksCustomFieldsAndWordsComeFromTheBook) {
  FBook.FChinaConnect = true;
  FBook.Exchange("SH").FChinaConnect = true;
  FBook.FCustomFieldKeys = {{{"info", "CIES"}, "C7"}, {{"balance", "CreditLimit"}, "L1"}};
  TAccountFacts& facts = FBook.FAccounts.front();
  facts.FChinaConnectAccount = TCode("A1C");
  facts.FCustomBalances["L1"] = {{kHKD, 500}, {TCode("USD"), 7}};
  facts.FMarginMethod = "Portfolio";
  facts.FPositionIsolation = "Sideways";
  EXPECT_FALSE(IsChinaConnectOn());
  FData.Replace(FBook);
  EXPECT_TRUE(IsChinaConnectOn());
  EXPECT_TRUE(IsChinaConnectExchange(TCode("SH")));
  EXPECT_FALSE(IsChinaConnectExchange(TCode("HK")));
  EXPECT_EQ(GetChinaConnectAccount(kA1), TCode("A1C"));
  EXPECT_TRUE(GetChinaConnectAccount(TCode("A1C")).IsEmpty());

  EXPECT_EQ(FAccounts.GetCustomFieldKey("balance", "CreditLimit"), "L1");
  EXPECT_EQ(FAccounts.GetCustomFieldKey("info", "CreditLimit"), "");
  EXPECT_EQ(FAccounts.GetAccount(kA1)->GetCustomBalance(TCode("USD"), "L1"), 7);
  EXPECT_EQ(FPositions.GetMarginMethodText(kA1), "Portfolio Margin");
  EXPECT_EQ(FPositions.GetPositionIsolationText(kA1), "Sideways") << "a word without a text is its own";
}

TEST_F(Adapters, EveryFigureIsReadByItsNameAsUnderItsField) {
  TFigureFacts figures = TTestBook().Figures("A1", "HKD");
  for (std::size_t i = 0; i < kFigureCount; ++i) figures.FFigures[i] = 1000 + static_cast<double>(i * i);
  figures.FCustomFigures = {{1, "12.5"}, {2, "007"}};
  FData.SetFigures(figures);
  const TCustomAccountData& data = *FAccounts.GetAccount(kA1)->GetCurrencyData(kHKD);
  using TData = TCustomAccountData;
  // clang-format off
  const std::pair<double (TData::*)() const, std::int32_t> reads[] = {
      {&TData::GetBODCashBalance, 186}, {&TData::GetCashBalance, 156}, {&TData::GetInitialMargin, 604},
      {&TData::GetBODLotLimit, 195}, {&TData::GetLotLimit, 194}, {&TData::GetForthcomingLimit, 196},
      {&TData::GetBODDayTradeLimit, 432}, {&TData::GetDayTradeLimit, 431}, {&TData::GetPendingBuyAmount, 10013},
      {&TData::GetWithdrawableCashBalance, 700}, {&TData::GetWebTradingLimit, 468}, {&TData::GetInterest, 526},
      {&TData::GetBODWebTradingLimit, 467}, {&TData::GetHoldFund, 626}, {&TData::GetNetEquity, 1503},
      {&TData::GetGrossTradingLimit, 10000}, {&TData::GetCreditInterest, 10002}, {&TData::GetMarginLimit, 449},
      {&TData::GetDebitInterest, 10001}, {&TData::GetMaximumMargin, 10007}};
  // clang-format on
  for (const auto& [read, field] : reads) {
    EXPECT_EQ(data.GetDataValue(field), TVariant::Float((data.*read)())) << field;
    EXPECT_EQ((data.*read)(), FigureOf(figures, *FigureOfField(field))) << field;
  }
  // A custom column is a number where the language files say so.
  EXPECT_EQ(data.GetDataValue(100001), TVariant::Float(12.5));
  EXPECT_EQ(data.GetDataValue(100002), TVariant::Text("007"));
}

TEST_F(Adapters, AnItemAnswersTheFieldsOfItsSymbolAndIsReadyWhenItIsKnownAndHasAPrice) {
  TProductFacts& facts = FBook.Product("bond", "USD", 98.25);
  facts.FLotSize = 1000;
  facts.FOverTheCounter = true;
  FBook.Product("silent", "HKD", 0).FListed = false;
  FData.Replace(FBook);
  const TCustomSubItem& bond = *ItemOf("bond");
  ItemOf("silent");
  FHost.RunLoop();
  for (const auto& [field, text] : {std::pair(kItemCurrency, "USD"),
                                    {kItemLotSize, "1000"},
                                    {kItemOTC, "1"},
                                    {kItemLast, "98.25"},
                                    {kItemReferencePrice, ""},
                                    {kItemBid, ""}}) {
    EXPECT_EQ(bond.GetFieldText(field), text) << field;
    EXPECT_EQ(bond.HasField(field), *text != '\0') << field;
  }
  EXPECT_EQ(bond.GetStatus(), 1);
  EXPECT_EQ(ItemOf("silent")->GetStatus(), 2);
  EXPECT_EQ(ItemOf("unknown")->GetStatus(), 0);
  FData.SetItemStatus(TCode("bond"), 2);
  EXPECT_EQ(bond.GetStatus(), 2) << "the feed says that it is not current";
  EXPECT_NE(TCustomMarketAdapter::GetInstance().GetProduct(TCode("bond")), nullptr);
  EXPECT_EQ(TCustomMarketAdapter::GetInstance().GetProduct(TCode("silent")), nullptr) << "not listed";
}

TEST_F(Adapters, WhoeverWaitsForASymbolIsToldWhenItIsKnown) {
  auto& adapter = TCustomSubscribeAdapter::GetInstance();
  TCustomSubItem* item = ItemOf("388");
  adapter.AddSymbolHandler(item, FRecorder.Plain(), this);
  FData.SetProduct(TTestBook().Product("other", "HKD", 0));
  EXPECT_THAT(Heard(), IsEmpty());
  FData.SetProduct(TTestBook().Product("388", "HKD", 0));
  FData.SetPrice(TCode("388"), {400});
  EXPECT_THAT(Heard(), ElementsAre("called"));
  EXPECT_EQ(item->GetStatus(), kItemReady) << "the item that was there before follows the product";
  adapter.RemoveSymbolHandlers(item, this);
}

TEST_F(Adapters, TheItemOfASymbolThatNobodyHoldsArrivesInALaterTurnAndIsAnnouncedOnce) {
  FData.SetProduct(TTestBook().Product("388", "HKD", 0));
  FData.SetPrice(TCode("388"), {400});
  FHost.RunLoop();
  EXPECT_EQ(ItemOf("5")->GetStatus(), kItemReady) << "held, so it is there from the start";
  EXPECT_NE(TCustomMarketAdapter::GetInstance().GetProduct(TCode("388")), nullptr) << "the list is known";
  auto& adapter = TCustomSubscribeAdapter::GetInstance();
  TCustomSubItem* item = ItemOf("388");
  adapter.AddSymbolHandler(item, FRecorder.Plain(), this);
  EXPECT_EQ(ItemOf("388"), item) << "asked for once more";
  FHost.Publish();
  EXPECT_EQ(item->GetStatus(), kItemUnknown);
  EXPECT_FALSE(item->HasField(kItemLotSize));
  EXPECT_THAT(FRecorder.Take(), IsEmpty());
  EXPECT_THAT(Heard(), ElementsAre("called"));
  EXPECT_EQ(item->GetStatus(), kItemReady);
  ItemOf("388");
  EXPECT_THAT(Heard(), IsEmpty());
  adapter.RemoveSymbolHandlers(item, this);
}

TEST_F(Adapters, EachKindOfCurrencyChangeCallsItsOwnHandlers) {
  FBook.Currency("TWD", 0.25).FExcluded = true;
  FData.Replace(FBook);
  FHost.RunLoop();
  auto& currencies = TCustomCurrencyAdapter::GetInstance();
  TRecorder ratios, list, mode;
  currencies.AddCurrencyRatioHandler(ratios.Plain(), this);
  currencies.AddCurrencyListHandler(list.Plain(), this);
  currencies.AddMultiCurrencyInfoHandler(mode.Plain(), this);
  const auto calls = [&] {
    FHost.RunLoop();
    return std::vector<std::size_t>{ratios.Take().size(), list.Take().size(), mode.Take().size()};
  };
  for (const double ratio : {0.3, 0.5}) FData.SetCurrencyRatio(kTWD, ratio);
  FData.SetCurrencyRatio(TCode("EUR"), 8);  // no such currency
  EXPECT_THAT(calls(), ElementsAre(1, 0, 0));
  EXPECT_EQ(currencies.GetCurrencyRatio(kTWD), 0.5);
  EXPECT_TRUE(currencies.IsCurrencyExcluded(kTWD));
  FData.SetCurrency({TCode("EUR"), 8.4});
  EXPECT_THAT(calls(), ElementsAre(1, 1, 0));
  FData.SetMultiCurrency(false);
  EXPECT_THAT(calls(), ElementsAre(0, 0, 1));
  currencies.RemoveCurrencyRatioHandler(this);
  currencies.RemoveCurrencyListHandler(this);
  currencies.RemoveMultiCurrencyInfoHandler(this);
}

}  // namespace
}  // namespace margindesk
