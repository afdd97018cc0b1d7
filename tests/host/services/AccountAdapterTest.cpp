#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/contract/AccountAdapter.h"
#include "model/contract/Icommon.h"
#include "model/contract/PositionAdapter.h"
#include "tests/host/services/Recorder.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const TCode kA1("A1");
const TCode kA2("A2");
const TCode kHKD("HKD");

TEST(AccountAdapterTest, ChangesOfOneTurnArriveTogetherAndThoseOfAnUnknownAccountNotAtAll) {
  TTestBook book;
  for (const char* account : {"A1", "A2"}) {
    book.Account(account);
    book.Figures(account, "HKD", 100);
  }
  TTestHost host(book);
  auto& adapter = TCustomAccountAdapter::GetInstance();
  TRecorder recorder;
  const auto heard = [&] {
    host.RunLoop();
    return recorder.Take();
  };
  const auto setCash = [&host](std::string_view account, double cash) {
    host.Data().SetFigures(TTestBook().Figures(account, "HKD", cash));
  };
  adapter.AddAccountInfoLoadHandler(recorder.Accounts(), &recorder);
  setCash("A2", 5);
  setCash("A1", 6);
  setCash("A2", 7);
  EXPECT_THAT(heard(), ElementsAre("A1 A2 "));
  EXPECT_EQ(adapter.GetAccount(kA2)->GetCurrencyData(kHKD)->GetCashBalance(), 7);
  setCash("nobody", 1);
  host.Data().SetOnline(TCode("nobody"), true);
  host.Data().SetPositions(TCode("nobody"), {});
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_EQ(adapter.GetAccount(TCode("nobody"), true), nullptr);

  adapter.SubscribeAccountOnlineStatus(kA1);
  adapter.UnsubscribeAccountOnlineStatus(kA1);  // of a view that never began: the status stays on
  host.Data().SetOnline(kA1, true);
  EXPECT_THAT(heard(), ElementsAre("A1 "));
  EXPECT_TRUE(adapter.GetAccount(kA1)->IsOnline());

  const TCustomAccount* kept = adapter.GetAccount(kA2);
  book.FAccounts.pop_back();
  book.FFigures.pop_back();
  host.Data().Replace(book);
  EXPECT_EQ(adapter.GetAccount(kA2), nullptr);
  EXPECT_THAT(heard(), ElementsAre("A1 A2 ")) << "an account that is gone is reported blank once more";
  EXPECT_EQ(kept->GetAccountCurrencyCount(), 0) << "a record outlives its account";
  EXPECT_EQ(adapter.GetAccount(kA1)->GetCurrencyData(kHKD)->GetCashBalance(), 100);
  adapter.RemoveAccountInfoLoadHandler(&recorder);

  adapter.RegisterMonitorInfoListener(kA1, recorder.Accounts(), &recorder);
  host.Data().SetMonitorInfo(kA2, "B", -1);
  EXPECT_THAT(heard(), IsEmpty());
  host.Data().SetMonitorInfo(kA1, "A", -1);
  EXPECT_THAT(heard(), ElementsAre("A1 "));
  EXPECT_EQ(adapter.GetAccount(kA1)->GetMarginClass(), "A");
  adapter.UnregisterMonitorInfoListener(kA1, &recorder);
}

TEST(AccountAdapterTest, AMasterHasTheSubAccountsThatNameItNow) {
  TTestBook book;
  book.Account("B", "M");
  book.Account("M").FMasterType = 10;
  book.Account("A", "M");
  TTestHost host(book);
  const auto subAccounts = [] {
    TAccountMap map;
    TCustomAccountAdapter::GetInstance().GetSubAccountList(TCode("M"), map);
    std::string names;
    for (const auto& [account, record] : map) names += account.Text();
    return names;
  };
  EXPECT_EQ(subAccounts(), "AB");
  host.Data().SetAccount(TTestBook().Account("A"));
  EXPECT_EQ(subAccounts(), "B");
  host.Data().Replace(book);
  EXPECT_EQ(subAccounts(), "AB");
  book.FAccounts.pop_back();
  host.Data().Replace(book);
  EXPECT_EQ(subAccounts(), "B") << "an account that is gone is nobody's sub-account";
}

TEST(AccountAdapterTest, LinksCustomFieldsAndWordsComeFromTheBook) {
  TTestBook book;
  book.FChinaConnect = true;
  book.Exchange("HK");
  book.Exchange("SH").FChinaConnect = true;
  book.FCustomFieldKeys = {{{"info", "CIES"}, "C7"}, {{"balance", "CreditLimit"}, "L1"}};
  TAccountFacts& facts = book.Account("A1");
  facts.FChinaConnectAccount = TCode("A1C");
  facts.FCustomBalances["L1"] = {{kHKD, 500}, {TCode("USD"), 7}};
  facts.FMarginMethod = "Portfolio";
  facts.FPositionIsolation = "Sideways";
  TTestHost host(book);
  EXPECT_TRUE(IsChinaConnectOn());
  EXPECT_TRUE(IsChinaConnectExchange(TCode("SH")));
  EXPECT_FALSE(IsChinaConnectExchange(TCode("HK")));
  EXPECT_EQ(GetChinaConnectAccount(kA1), TCode("A1C"));
  EXPECT_TRUE(GetChinaConnectAccount(TCode("A1C")).IsEmpty());

  const auto& accounts = TCustomAccountAdapter::GetInstance();
  EXPECT_EQ(accounts.GetCustomFieldKey("balance", "CreditLimit"), "L1");
  EXPECT_EQ(accounts.GetCustomFieldKey("info", "CreditLimit"), "");
  EXPECT_EQ(accounts.GetAccount(kA1)->GetCustomBalance(TCode("USD"), "L1"), 7);
  EXPECT_EQ(accounts.GetAccount(kA1)->GetCustomBalance(TCode("CNY"), "L1"), 0);

  const auto& positions = TCustomPositionAdapter::GetInstance();
  EXPECT_EQ(positions.GetMarginMethodText(kA1), "Portfolio Margin");
  EXPECT_EQ(positions.GetPositionIsolationText(kA1), "Sideways") << "a word without a text is its own";
  EXPECT_EQ(positions.GetMarginMethodText(TCode("nobody")), "");
  host.Language().SetLanguage(kLanguageTraditionalChinese);
  EXPECT_NE(positions.GetMarginMethodText(kA1), "Portfolio Margin");
  host.Data().Replace({});
  EXPECT_FALSE(IsChinaConnectOn());
  EXPECT_FALSE(IsChinaConnectExchange(TCode("SH")));
}

// A record whose every figure is a number of its own.
TEST(AccountFiguresTest, EveryFigureIsReadByItsNameAsUnderItsField) {
  TTestBook book;
  book.Account("A1").FMarginClass = "B";
  book.Figures("A1", "", 9);
  TFigureFacts& figures = book.Figures("A1", "HKD");
  for (std::size_t i = 0; i < kFigureCount; ++i) figures.FFigures[i] = 1000 + static_cast<double>(i * i);
  figures.FCustomFigures = {{1, "12.5"}, {2, "007"}, {99, "1"}};
  const TTestHost host(book);
  const TCustomAccount& account = *TCustomAccountAdapter::GetInstance().GetAccount(kA1);
  EXPECT_EQ(account.GetAccountCurrencyCount(), 1) << "the total row is no currency";
  EXPECT_EQ(account.GetCurrencyData(TCode())->GetCashBalance(), 9);

  const TCustomAccountData& data = *account.GetCurrencyData(kHKD);
  using TData = TCustomAccountData;
  const std::pair<double (TData::*)() const, std::int32_t> reads[] = {
      {&TData::GetBODCashBalance, 186},   {&TData::GetCashBalance, 156},
      {&TData::GetInitialMargin, 604},    {&TData::GetBODLotLimit, 195},
      {&TData::GetLotLimit, 194},         {&TData::GetForthcomingLimit, 196},
      {&TData::GetBODDayTradeLimit, 432}, {&TData::GetWithdrawableCashBalance, 700},
      {&TData::GetDayTradeLimit, 431},    {&TData::GetPendingBuyAmount, 10013},
      {&TData::GetWebTradingLimit, 468},  {&TData::GetBODWebTradingLimit, 467},
      {&TData::GetInterest, 526},         {&TData::GetHoldFund, 626},
      {&TData::GetNetEquity, 1503},       {&TData::GetGrossTradingLimit, 10000},
      {&TData::GetCreditInterest, 10002}, {&TData::GetDebitInterest, 10001},
      {&TData::GetMarginLimit, 449},      {&TData::GetMaximumMargin, 10007},
  };
  for (const auto& [read, field] : reads) {
    EXPECT_EQ(data.GetDataValue(field), TVariant::Float((data.*read)())) << field;
    EXPECT_EQ((data.*read)(), FigureOf(figures, *FigureOfField(field))) << field;
  }
  EXPECT_EQ(data.GetDataValue(469).AsFloat(), FigureOf(figures, TFigure::kAvailableBase) +
                                                  FigureOf(figures, TFigure::kAvailableAddition) -
                                                  FigureOf(figures, TFigure::kAvailableDeduction));
  EXPECT_EQ(data.GetDataValue(10012).AsFloat(),
            FigureOf(figures, TFigure::kTradedAmountFirst) - FigureOf(figures, TFigure::kTradedAmountSecond));
  EXPECT_EQ(data.GetDataString(10), "A1");
  EXPECT_EQ(data.GetDataString(10010), "B");
  EXPECT_TRUE(data.GetDataValue(95).IsUnassigned());
  // A custom column is a number where the language files say so.
  EXPECT_EQ(data.GetDataValue(100001), TVariant::Float(12.5));
  EXPECT_EQ(data.GetDataValue(100002), TVariant::Text("007"));
  EXPECT_TRUE(data.GetDataValue(100003).IsUnassigned());
}

}  // namespace
}  // namespace margindesk
