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

TTestBook TwoAccounts() {
  TTestBook book;
  book.Currency("HKD", 1);
  book.Account("A1").Figures("HKD").Set(TFigure::kCashBalance, 100);
  book.Account("A2").Figures("HKD").Set(TFigure::kCashBalance, 200);
  return book;
}

class AccountAdapterTest : public testing::Test {
 protected:
  void TearDown() override {
    FAdapter.RemoveAccountInfoLoadHandler(this);
    FAdapter.UnregisterMonitorInfoListener(kA1, this);
  }

  // New figures of an account that was there before.
  void SetCash(TCode account, double cash) {
    TFigureFacts facts;
    facts.FAccount = account;
    facts.FCurrency = kHKD;
    facts.FFigures[static_cast<std::size_t>(TFigure::kCashBalance)] = cash;
    FHost.Data().SetFigures(facts);
  }

  TTestHost FHost{TwoAccounts()};
  TCustomAccountAdapter& FAdapter = TCustomAccountAdapter::GetInstance();
  TRecorder FRecorder;
};

TEST_F(AccountAdapterTest, LoadsOfOneTurnArriveTogether) {
  FAdapter.AddAccountInfoLoadHandler(FRecorder.Accounts(), this);
  SetCash(kA2, 5);
  SetCash(kA1, 6);
  SetCash(kA2, 7);
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), ElementsAre("A1 A2"));
  EXPECT_EQ(FAdapter.GetAccount(kA2)->GetCurrencyData(kHKD)->GetCashBalance(), 7);
}

TEST_F(AccountAdapterTest, NoViewsEndStopsTheOnlineStatusOfAnother) {
  FAdapter.AddAccountInfoLoadHandler(FRecorder.Accounts(), this);
  FAdapter.SubscribeAccountOnlineStatus(kA1);
  FAdapter.UnsubscribeAccountOnlineStatus(kA1);  // of a view that never began
  FHost.Data().SetOnline(kA1, true);
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), ElementsAre("A1"));
  EXPECT_TRUE(FAdapter.GetAccount(kA1)->IsOnline());
}

TEST_F(AccountAdapterTest, MonitorInformationReachesTheListenersOfItsAccount) {
  FAdapter.RegisterMonitorInfoListener(kA1, FRecorder.Accounts(), this);
  FHost.Data().SetMonitorInfo(kA2, "B", -1);
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), IsEmpty());
  FHost.Data().SetMonitorInfo(kA1, "A", -1);
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), ElementsAre("A1"));
  EXPECT_EQ(FAdapter.GetAccount(kA1)->GetMarginClass(), "A");
  EXPECT_EQ(FAdapter.GetAccount(kA1)->GetDayTradeStatus(), -1);
}

TEST_F(AccountAdapterTest, AnAccountThatIsGoneIsReportedBlankOnceMore) {
  const TCustomAccount* kept = FAdapter.GetAccount(kA2);
  FAdapter.AddAccountInfoLoadHandler(FRecorder.Accounts(), this);
  TTestBook book;
  book.Currency("HKD", 1);
  book.Account("A1").Figures("HKD").Set(TFigure::kCashBalance, 101);
  FHost.Data().Replace(book.Contents());
  EXPECT_EQ(FAdapter.GetAccount(kA2), nullptr);
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), ElementsAre("A1 A2"));
  EXPECT_EQ(kept->GetAccountCurrencyCount(), 0) << "a record outlives its account";
  EXPECT_EQ(FAdapter.GetAccount(kA1)->GetCurrencyData(kHKD)->GetCashBalance(), 101);
}

TEST_F(AccountAdapterTest, ChangesOfAnUnknownAccountDoNothing) {
  FAdapter.AddAccountInfoLoadHandler(FRecorder.Accounts(), this);
  SetCash(TCode("nobody"), 1);
  FHost.Data().SetOnline(TCode("nobody"), true);
  FHost.Data().SetPositions(TCode("nobody"), {});
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), IsEmpty());
  EXPECT_EQ(FAdapter.GetAccount(TCode("nobody"), true), nullptr);
}

TEST(AccountTest, AMasterHasTheSubAccountsThatNameItNow) {
  TTestBook book;
  book.Account("B").Master("M");
  book.Account("M").MasterType(10);
  book.Account("A").Master("M");
  book.Account("alone");
  TTestHost host(book);
  const auto& adapter = TCustomAccountAdapter::GetInstance();
  const auto subAccounts = [&adapter] {
    TAccountMap map;
    adapter.GetSubAccountList(TCode("M"), map);
    std::string names;
    for (const auto& [account, record] : map) names += account.Text();
    return names;
  };
  EXPECT_EQ(subAccounts(), "AB");
  EXPECT_TRUE(adapter.GetAccount(TCode("M"))->IsMasterAccount());
  EXPECT_EQ(adapter.GetAccount(TCode("M"))->GetMasterType(), 10);
  EXPECT_TRUE(adapter.GetAccount(TCode("A"))->IsSubAccount());
  EXPECT_FALSE(adapter.GetAccount(TCode("alone"))->IsSubAccount());
  EXPECT_FALSE(adapter.GetAccount(TCode("alone"))->IsMasterAccount());

  TAccountFacts moved;
  moved.FAccount = TCode("A");
  host.Data().SetAccount(moved);
  EXPECT_EQ(subAccounts(), "B");
  host.Data().Replace(book.Contents());
  EXPECT_EQ(subAccounts(), "AB");
  TTestBook smaller;
  smaller.Account("M").MasterType(10);
  smaller.Account("B").Master("M");
  host.Data().Replace(smaller.Contents());
  EXPECT_EQ(subAccounts(), "B") << "an account that is gone is nobody's sub-account";
}

TEST(AccountTest, CustomFieldsAreFoundUnderTheKeysOfTheDeployment) {
  TTestBook book;
  book.CustomField("oms_CustomAccountInfo", "CIES", "C7")
      .CustomField("oms_CustomAccountBalance", "CreditLimit", "L1");
  book.Account("A1").CustomValue("C7", "Y").CustomBalance("HKD", "L1", 500).CustomBalance("USD", "L1", 7);
  book.Account("A1").Attribute("ClientFeature", "2");
  const TTestHost host(book);
  const auto& adapter = TCustomAccountAdapter::GetInstance();
  EXPECT_EQ(adapter.GetCustomFieldKey("oms_CustomAccountInfo", "CIES"), "C7");
  EXPECT_EQ(adapter.GetCustomFieldKey("oms_CustomAccountBalance", "CreditLimit"), "L1");
  EXPECT_EQ(adapter.GetCustomFieldKey("oms_CustomAccountInfo", "CreditLimit"), "");
  const TCustomAccount& account = *adapter.GetAccount(kA1);
  EXPECT_EQ(account.GetCustomValue("C7"), "Y");
  EXPECT_EQ(account.GetCustomValue(""), "");
  EXPECT_EQ(account.GetCustomBalance(TCode("USD"), "L1"), 7);
  EXPECT_EQ(account.GetCustomBalance(TCode("CNY"), "L1"), 0);
  EXPECT_EQ(account.GetCustomBalance(TCode("USD"), "C7"), 0);
  EXPECT_EQ(account.GetAttributeValue("ClientFeature"), "2");
  EXPECT_EQ(account.GetAttributeValue("clientfeature"), "");
}

TEST(AccountTest, ChinaConnectLinksAndExchangesComeFromTheBook) {
  TTestBook book;
  book.ChinaConnectOn().Exchange("HK").ChinaConnectExchange("SH");
  book.Account("A1").ChinaConnectAccount("A1C");
  TTestHost host(book);
  EXPECT_TRUE(IsChinaConnectOn());
  EXPECT_TRUE(IsChinaConnectExchange(TCode("SH")));
  EXPECT_FALSE(IsChinaConnectExchange(TCode("HK")));
  EXPECT_FALSE(IsChinaConnectExchange(TCode("XX")));
  EXPECT_EQ(GetChinaConnectAccount(kA1), TCode("A1C"));
  EXPECT_TRUE(GetChinaConnectAccount(TCode("A1C")).IsEmpty());
  host.Data().Replace(THostContents());
  EXPECT_FALSE(IsChinaConnectOn());
  EXPECT_FALSE(IsChinaConnectExchange(TCode("SH")));
}

TEST(AccountTest, WordsOfAnAccountAreShownInTheCurrentLanguage) {
  TTestBook book;
  book.Account("A1").MarginMethod("Portfolio").PositionIsolation("Sideways");
  book.Account("A2");
  TTestHost host(book);
  const auto& adapter = TCustomPositionAdapter::GetInstance();
  EXPECT_EQ(adapter.GetMarginMethodText(kA1), "Portfolio Margin");
  EXPECT_EQ(adapter.GetPositionIsolationText(kA1), "Sideways") << "a word without a text is its own";
  EXPECT_EQ(adapter.GetMarginMethodText(kA2), "");
  EXPECT_EQ(adapter.GetMarginMethodText(TCode("nobody")), "");
  host.Language().SetLanguage(kLanguageTraditionalChinese);
  EXPECT_NE(adapter.GetMarginMethodText(kA1), "Portfolio Margin");
}

TEST(AccountTest, CurrenciesKeepTheirOrderAndTheTotalRowIsNoneOfThem) {
  TTestBook book;
  book.Account("A1").Figures("USD").SeparateRow().Figures("").Set(TFigure::kCashBalance, 9).Figures("CNY");
  book.Account("A1").Consolidated("USD").Set(TFigure::kInitialMargin, 4);
  const TTestHost host(book);
  const auto& adapter = TCustomAccountAdapter::GetInstance();
  const TCustomAccount& account = *adapter.GetAccount(kA1);
  std::vector<TCode> currencies = {TCode("XXX")};
  account.GetCurrencyList(currencies);
  EXPECT_THAT(currencies, ElementsAre(TCode("XXX"), TCode("USD"), TCode("CNY")));
  EXPECT_EQ(account.GetAccountCurrencyCount(), 2);
  EXPECT_EQ(account.GetAccountCurrency(1), TCode("CNY"));
  EXPECT_TRUE(account.GetAccountCurrency(2).IsEmpty());
  EXPECT_TRUE(account.GetAccountCurrency(-1).IsEmpty());
  EXPECT_EQ(account.GetCurrencyData(TCode())->GetCashBalance(), 9);
  EXPECT_TRUE(account.GetCurrencyData(TCode("USD"))->IsSeparateCurrencyRow());
  EXPECT_FALSE(account.GetCurrencyData(TCode("CNY"))->IsSeparateCurrencyRow());
  EXPECT_EQ(adapter.GetConsolidatedAccountData(kA1, TCode("USD"))->GetInitialMargin(), 4);
  EXPECT_EQ(adapter.GetConsolidatedAccountData(kA1, TCode("CNY")), nullptr);
  EXPECT_EQ(adapter.GetConsolidatedAccountData(kA2, TCode("USD")), nullptr);
  EXPECT_EQ(account.GetSimulatedAccountData("{any key}", TCode("USD")), nullptr);
}

// A record whose every figure is a number of its own.
class AccountFiguresTest : public testing::Test {
 protected:
  AccountFiguresTest() {
    TTestBook book;
    TTestAccount account = book.Account("A1").Name("Lee").User("u1").BODUpdateTime("08:00").MarginClass("B");
    account.Figures("HKD").Custom(1, "12.5").Custom(2, "007").Custom(99, "1");
    for (std::size_t i = 0; i < kFigureCount; ++i)
      account.Set(static_cast<TFigure>(i), 1000 + static_cast<double>(i));
    FHost.Data().Replace(book.Contents());
  }

  const TCustomAccountData& Data() const {
    return *TCustomAccountAdapter::GetInstance().GetAccount(kA1)->GetCurrencyData(kHKD);
  }
  static double Expected(TFigure figure) { return 1000 + static_cast<double>(figure); }

  TTestHost FHost;
};

TEST_F(AccountFiguresTest, EveryFigureIsReadByItsNameAsUnderItsField) {
  using TRead = double (TCustomAccountData::*)() const;
  const std::pair<TRead, std::int32_t> reads[] = {
      {&TCustomAccountData::GetBODCashBalance, 186},
      {&TCustomAccountData::GetCashBalance, 156},
      {&TCustomAccountData::GetInitialMargin, 604},
      {&TCustomAccountData::GetBODLotLimit, 195},
      {&TCustomAccountData::GetLotLimit, 194},
      {&TCustomAccountData::GetForthcomingLimit, 196},
      {&TCustomAccountData::GetWithdrawableCashBalance, 700},
      {&TCustomAccountData::GetBODDayTradeLimit, 432},
      {&TCustomAccountData::GetDayTradeLimit, 431},
      {&TCustomAccountData::GetPendingBuyAmount, 10013},
      {&TCustomAccountData::GetBODWebTradingLimit, 467},
      {&TCustomAccountData::GetWebTradingLimit, 468},
      {&TCustomAccountData::GetInterest, 526},
      {&TCustomAccountData::GetHoldFund, 626},
      {&TCustomAccountData::GetNetEquity, 1503},
      {&TCustomAccountData::GetGrossTradingLimit, 10000},
      {&TCustomAccountData::GetCreditInterest, 10002},
      {&TCustomAccountData::GetDebitInterest, 10001},
      {&TCustomAccountData::GetMarginLimit, 449},
      {&TCustomAccountData::GetMaximumMargin, 10007},
  };
  for (const auto& [read, field] : reads) {
    EXPECT_EQ(Data().GetDataValue(field), TVariant::Float((Data().*read)())) << field;
    EXPECT_EQ((Data().*read)(), Expected(*FigureOfField(field))) << field;
  }
  const std::pair<TRead, TFigure> unnumbered[] = {
      {&TCustomAccountData::GetOwnTotalPL, TFigure::kOwnTotalPL},
      {&TCustomAccountData::GetOwnUnrealizedPL, TFigure::kOwnUnrealizedPL},
      {&TCustomAccountData::AvailableBase, TFigure::kAvailableBase},
      {&TCustomAccountData::AvailableAddition, TFigure::kAvailableAddition},
      {&TCustomAccountData::AvailableDeduction, TFigure::kAvailableDeduction},
      {&TCustomAccountData::MarginableAmount, TFigure::kMarginableAmount},
      {&TCustomAccountData::TradedAmountFirst, TFigure::kTradedAmountFirst},
      {&TCustomAccountData::TradedAmountSecond, TFigure::kTradedAmountSecond},
  };
  for (const auto& [read, figure] : unnumbered) EXPECT_EQ((Data().*read)(), Expected(figure));
}

TEST_F(AccountFiguresTest, FieldsMadeOfSeveralFiguresAndTextsOfTheAccountAreAnsweredToo) {
  EXPECT_EQ(Data().GetDataValue(469).AsFloat(), Expected(TFigure::kAvailableBase) +
                                                    Expected(TFigure::kAvailableAddition) -
                                                    Expected(TFigure::kAvailableDeduction));
  EXPECT_EQ(Data().GetDataValue(10003).AsFloat(),
            Expected(TFigure::kNetEquity) - Expected(TFigure::kCashBalance));
  EXPECT_EQ(Data().GetDataValue(10012).AsFloat(),
            Expected(TFigure::kTradedAmountFirst) - Expected(TFigure::kTradedAmountSecond));
  EXPECT_EQ(Data().GetDataString(10), "A1");
  EXPECT_EQ(Data().GetDataString(13), "u1");
  EXPECT_EQ(Data().GetDataString(21), "Lee");
  EXPECT_EQ(Data().GetDataString(23), "HKD");
  EXPECT_EQ(Data().GetDataString(33), "08:00");
  EXPECT_EQ(Data().GetDataString(10010), "B");
  EXPECT_TRUE(Data().GetDataValue(95).IsUnassigned());
}

TEST_F(AccountFiguresTest, ACustomColumnIsANumberWhereTheLanguageFilesSaySo) {
  EXPECT_EQ(Data().GetDataValue(100001), TVariant::Float(12.5));
  EXPECT_EQ(Data().GetDataValue(100002), TVariant::Text("007"));
  EXPECT_TRUE(Data().GetDataValue(100003).IsUnassigned());
}

}  // namespace
}  // namespace margindesk
