// Figures of one currency of one account, and of a master account with its sub-accounts.
#include "model/contract/FormatSettings.h"
#include "model/contract/Formatter.h"
#include "tests/accountinfo/AccountTreeFixture.h"

namespace margindesk {
namespace {

class AccountFigures : public AccountTree {
 protected:
  AccountFigures() {
    FHost.Data().SetCustomFieldKey("oms_CustomAccountInfo", "RPQLevel", "c1");
    FHost.Data().SetCustomFieldKey("oms_CustomAccountInfo", "RPQDate", "c2");
    FHost.Data().SetCustomFieldKey("oms_CustomAccountInfo", "CIES", "c3");
    FFacts.FAccount = Code("A1");
    AddAccount("A1");
    AddFigures("A1", "",
               {{TFigure::kCashBalance, 1000},
                {TFigure::kBodCashBalance, 900},
                {TFigure::kNetEquity, 1500},
                {TFigure::kAvailableBase, 10},
                {TFigure::kAvailableAddition, 5},
                {TFigure::kAvailableDeduction, 2},
                {TFigure::kTradedAmountFirst, 70},
                {TFigure::kTradedAmountSecond, 100},
                {TFigure::kOwnTotalPL, 33},
                {TFigure::kOwnUnrealizedPL, 22},
                {TFigure::kMaxMargin, 8},
                {TFigure::kCreditLimit, 60}});
    AddFigures("A1", "HKD", {{TFigure::kCashBalance, 300}});
    AddPosition("A1", "AAA", 3);
    FControl.SetAccount(Code("A1"));
  }

  void PutFacts() { FHost.Data().SetAccount(FFacts); }
  double Value(std::int32_t field) { return FControl.GetAccountCurrencyData(DataOf("A1"), field).AsFloat(); }
  std::string Shown(std::int32_t field) {
    return FControl.GetAccountCurrencyDisplayData(DataOf("A1"), field, true);
  }

  TAccountFacts FFacts;
  TOpenControl FControl;
};

TEST_F(AccountFigures, AreCombinedFromTheReadsOfTheRecord) {
  EXPECT_EQ(Value(kFieldAvailableBal), 13);
  EXPECT_EQ(Value(kFieldOptionValue), 500);
  EXPECT_EQ(Value(kFieldNetTradedAmount), -30);
  EXPECT_EQ(Value(kFieldTotalPortfolio), 30 + 1000);
  EXPECT_EQ(Value(kFieldNetValue), 12 + 900);
  EXPECT_EQ(Value(kFieldTotalBuyAmount), 100);
  EXPECT_EQ(Value(kFieldTotalSellAmount), 40);
  EXPECT_EQ(FControl.GetAccountCurrencyData(DataOf("A1"), kFieldMarginLevel), TVariant::Integer(0));
  EXPECT_EQ(FControl.GetAccountCurrencyData(DataOf("A1", "HKD"), kFieldPL), TVariant::Float(12));
}

TEST_F(AccountFigures, EveryPlainReadShowsItsOwnFigure) {
  TFigureFacts facts{Code("A1"), Code("HKD"), false, {}, {}};
  for (const TFigureInfo& info : kFigureList) {
    facts.FFigures[static_cast<std::size_t>(info.FFigure)] = 1000 + info.FField;
  }
  FHost.Data().SetFigures(facts);
  for (const TFigureInfo& info : kFigureList) {
    if (info.FField == kNoField) continue;
    EXPECT_EQ(FControl.GetAccountCurrencyData(DataOf("A1", "HKD"), info.FField),
              TVariant::Float(1000 + info.FField));
  }
}

TEST_F(AccountFigures, StartAtZeroOrAtNoTextWhereThereIsNoData) {
  EXPECT_EQ(FControl.GetAccountCurrencyData(nullptr, kFieldCashBalance), TVariant::Integer(0));
  EXPECT_EQ(FControl.GetAccountCurrencyData(nullptr, kFieldUser), TVariant::Integer(0));
  for (const std::int32_t text :
       {10, 21, 23, 33, 3409, 3602, 10004, 10005, 10006, 10008, 10009, 10010, 10011}) {
    EXPECT_EQ(FControl.GetAccountCurrencyData(nullptr, text), TVariant::EmptyText()) << text;
  }
  EXPECT_EQ(FControl.GetAccountCurrencyData(nullptr, 100001), TVariant::Integer(0));
  EXPECT_EQ(FControl.GetAccountCurrencyData(nullptr, 100002), TVariant::EmptyText());
  EXPECT_EQ(FControl.GetAccountCurrencyDisplayData(nullptr, kFieldCashBalance, true), "");
  EXPECT_EQ(FControl.GetAccountCurrencyDisplayData(nullptr, kFieldDTL, true), "");
}

TEST_F(AccountFigures, TheBackOfficesOwnProfitAndLossReplacesAllButTheRealisedPart) {
  for (const char* yes : {"Yes", "y"}) {
    SetConfig("ApplyDDSPL", yes);
    TOpenControl control;
    control.SetAccount(Code("A1"));
    EXPECT_EQ(control.GetAccountCurrencyData(DataOf("A1"), kFieldPL), TVariant::Float(33));
    EXPECT_EQ(control.GetAccountCurrencyData(DataOf("A1"), kFieldUnrealizedPL), TVariant::Float(22));
    EXPECT_EQ(control.GetAccountCurrencyData(DataOf("A1"), kFieldRealizedPL), TVariant::Float(2));
    EXPECT_EQ(control.GetAccountCurrencyData(DataOf("A1"), kFieldNetValue), TVariant::Float(933));
  }
  for (const char* no : {"N", "1", "true", ""}) {
    SetConfig("ApplyDDSPL", no);
    TOpenControl control;
    control.SetAccount(Code("A1"));
    EXPECT_EQ(control.GetAccountCurrencyData(DataOf("A1"), kFieldPL), TVariant::Float(12)) << no;
    EXPECT_EQ(control.GetAccountCurrencyData(DataOf("A1"), kFieldUnrealizedPL), TVariant::Float(10)) << no;
  }
}

TEST_F(AccountFigures, TextsOfTheAccountFollowItsAttributesAndStatuses) {
  const auto shown = [this](std::int32_t field) {
    PutFacts();
    return Shown(field);
  };
  FFacts.FAttributes["ClientFeature"] = "1";
  EXPECT_EQ(shown(kFieldMarginingBasis), Text("res_MarginingBasis_Net"));
  FFacts.FAttributes["ClientFeature"] = "2";
  EXPECT_EQ(shown(kFieldMarginingBasis), Text("res_MarginingBasis_Gross"));
  FFacts.FAttributes["ClientFeature"] = "12";
  EXPECT_EQ(shown(kFieldMarginingBasis), "");
  FFacts.FMarginClass = "N/A";
  EXPECT_EQ(shown(kFieldMarginClass), "");
  FFacts.FMarginClass = "B";
  EXPECT_EQ(shown(kFieldMarginClass), "B");
  EXPECT_EQ(shown(kFieldOnlineStatus), "");
  FFacts.FOnline = true;
  EXPECT_EQ(shown(kFieldOnlineStatus), Text("Res_Online"));
  FFacts.FBODUpdateTime = "08:15";
  EXPECT_EQ(shown(kFieldBODUpdateTime), "08:15");
  FFacts.FPositionIsolation = "isolated by whim";
  FFacts.FMarginMethod = "method of its own";
  EXPECT_EQ(shown(kFieldPositionIsolation), "isolated by whim");
  EXPECT_EQ(shown(kFieldMarginMethod), "method of its own");
  EXPECT_EQ(shown(kFieldDayTradeStatus), Text("Res_DayTrade_Active"));
  FFacts.FDayTradeStatus = -1;
  EXPECT_EQ(shown(kFieldDayTradeStatus), Text("Res_DayTrade_Inactive"));
  FFacts.FDayTradeStatus = 1;
  EXPECT_EQ(shown(kFieldDayTradeStatus), "");
  FFacts.FCustomValues["c3"] = " y ";
  EXPECT_EQ(shown(kFieldCIES), Text("Res_Yes"));
  FFacts.FCustomValues["c3"] = "n";
  EXPECT_EQ(shown(kFieldCIES), Text("Res_No"));
  FFacts.FCustomValues["c3"] = "no";
  EXPECT_EQ(shown(kFieldCIES), "");
  EXPECT_EQ(shown(kFieldAggregated), "");
  FFacts.FMasterType = 1;
  EXPECT_EQ(shown(kFieldAggregated), Text("Res_No"));
  FControl.SetAggregate();
  EXPECT_EQ(shown(kFieldAggregated), Text("Res_Yes"));
}

TEST_F(AccountFigures, TheRiskProfileShowsItsLevelAndItsTwelveMonthsAndSetsTheProcesssDateFormat) {
  GetProcessFormatSettings() = TFormatSettings{};
  const std::string level3 = TCustomLanguageManager::GetInstance().GetLanguageText("RPQLevel", "3");
  const auto rpq = [this](const char* level, const char* date) {
    FFacts.FCustomValues["c1"] = level;
    FFacts.FCustomValues["c2"] = date;
    PutFacts();
    return Shown(kFieldRPQ);
  };
  EXPECT_EQ(rpq("three", "20200131"), Text("Res_undefined"));
  EXPECT_EQ(rpq(" 3", ""), level3);
  EXPECT_EQ(rpq("3", "2020013"), level3);
  EXPECT_EQ(rpq("3", ""), level3);
  EXPECT_EQ(rpq("77", ""), "77");
  EXPECT_EQ(GetProcessFormatSettings().FShortDateFormat, TFormatSettings{}.FShortDateFormat);

  EXPECT_EQ(rpq("3", " 20200131 "), level3 + " (01/31/20~01/31/21)");
  EXPECT_EQ(GetProcessFormatSettings().FShortDateFormat, "mm/dd/yy");
  EXPECT_EQ(GetProcessFormatSettings().FDateSeparator, '/');
  EXPECT_EQ(rpq("3", "20200229"), level3 + " (02/29/20~02/28/21)");
  EXPECT_EQ(rpq("3", "20201301"), level3 + " (2020-13-01~)");
  EXPECT_EQ(GetProcessFormatSettings().FShortDateFormat, "yyyy-mm-dd");
  EXPECT_EQ(GetProcessFormatSettings().FDateSeparator, '-');
  EXPECT_EQ(rpq("3", "二〇二〇〇一三一"), level3 + " (二〇二〇-〇一-三一~)");
}

TEST_F(AccountFigures, ADayTradeLimitOfNothingIsNotAvailable) {
  for (const std::int32_t field : {kFieldDTL, kFieldBODDTL}) {
    const TFigure figure = field == kFieldDTL ? TFigure::kDayTradeLimit : TFigure::kBodDayTradeLimit;
    for (const double nothing : {0.0, 0.00000005, -0.00000005}) {
      AddFigures("A1", "", {{figure, nothing}});
      EXPECT_EQ(Shown(field), Text("Res_NotAvailable"));
    }
    AddFigures("A1", "", {{figure, 0.0000001}});
    EXPECT_EQ(Shown(field),
              TCustomFormatter::GetInstance().FormatValue(0.0000001, kFormatAmount, TCode(), true));
  }
}

TEST_F(AccountFigures, ReadsGoToTheLinkedAccountOnItsSideOfChinaConnectAndRulesDoNot) {
  FHost.Data().SetChinaConnect(true);
  FFacts.FChinaConnectAccount = Code("A1C");
  FFacts.FMarginClass = "own";
  PutFacts();
  AddAccount("A1C");
  AddFigures("A1C", "", {{TFigure::kMaxMargin, 80}, {TFigure::kCashBalance, 7}});
  AddFigures("A1C", "CNY", {});
  FControl.SetFilterCurr(Code("CNY"));
  EXPECT_EQ(Value(kFieldMaxMargin), 80);
  EXPECT_EQ(FControl.GetAccountCurrencyData(DataOf("A1"), kFieldMarginClass), TVariant::Text("own"));
  EXPECT_EQ(Value(kFieldNetValue), 0);  // own profit and loss (none on this side), the linked account's cash
  // The inherited reads stay with the account's own data.
  EXPECT_EQ(Value(kFieldCashBalance), 1000);
  // Without linked data every figure that is read from data stays at its initial value.
  EXPECT_EQ(FControl.GetAccountCurrencyData(DataOf("A1", "HKD"), kFieldMaxMargin), TVariant::Integer(0));
  EXPECT_EQ(FControl.GetAccountCurrencyData(DataOf("A1", "HKD"), kFieldCashBalance), TVariant::Integer(0));
  FControl.SetFilterCurr(TCode());
  EXPECT_EQ(Value(kFieldMaxMargin), 8);
}

TEST_F(AccountFigures, TheSideOfChinaConnectFollowsTheSwitchOfTheHost) {
  FFacts.FChinaConnectAccount = Code("A1C");
  PutFacts();
  AddAccount("A1C");
  AddFigures("A1C", "", {{TFigure::kMaxMargin, 80}});
  FControl.SetFilterCurr(Code("CNY"));
  for (const bool on : {true, false, true}) {
    FHost.Data().SetChinaConnect(on);
    FHost.Publish();
    EXPECT_EQ(Value(kFieldMaxMargin), on ? 80 : 8);
  }
  FControl.FChanges = 0;
  AddFigures("A1C", "", {{TFigure::kMaxMargin, 81}});
  FHost.Publish();
  EXPECT_GE(FControl.FChanges, 1);  // the linked account's figures are this one's
}

class AggregatedFigures : public AccountTree {
 protected:
  AggregatedFigures() {
    AddAccount("M1", "", 1);
    AddAccount("S1", "M1");
    AddAccount("S2", "M1");
    AddFigures("M1", "",
               {{TFigure::kCashBalance, 100},
                {TFigure::kBodCashBalance, 10},
                {TFigure::kCreditLimit, 1},
                {TFigure::kInitialMargin, 60},
                {TFigure::kMarginableAmount, -7}});
    AddFigures("S1", "",
               {{TFigure::kCashBalance, 200}, {TFigure::kBodCashBalance, 20}, {TFigure::kCreditLimit, 2}});
    AddFigures("S2", "",
               {{TFigure::kCashBalance, 400}, {TFigure::kBodCashBalance, 40}, {TFigure::kCreditLimit, 4}});
    AddFigures("M1", "USD", {{TFigure::kCashBalance, 5}}, true);
    AddFigures("S2", "USD", {{TFigure::kCashBalance, 7}}, true);
    AddPosition("S1", "AAA", 3);
    AddPosition("S2", "UUU", 2);
    FControl.SetAccount(Code("M1"));
    FControl.SetAggregate();
  }

  TVariant Sum(std::int32_t field, std::string_view currency = {}) {
    return FControl.GetAggregatedAccountCurrencyData(DataOf("M1", currency), field);
  }

  TOpenControl FControl;
};

TEST_F(AggregatedFigures, AddTheSubAccountsUnlessTheFigureCoversThemAlready) {
  EXPECT_EQ(Sum(kFieldCashBalance), TVariant::Float(700));
  EXPECT_EQ(Sum(kFieldCreditLimit), TVariant::Float(7));
  EXPECT_EQ(Sum(kFieldCashBalance, "USD"), TVariant::Float(12));
  EXPECT_EQ(Sum(kFieldFxRatio, "USD"), TVariant::Float(7.8));
  EXPECT_EQ(Sum(kFieldMarketValue), TVariant::Float(3 * 10 + 2 * 20 * 7.8));
  EXPECT_EQ(Sum(kFieldTotalBuyAmount), TVariant::Float(100 + 100 * 7.8));
  EXPECT_EQ(Sum(kFieldTotalSellAmount), TVariant::Float(40 + 40 * 7.8));
  EXPECT_EQ(Sum(kFieldPL), TVariant::Float(12 + 12 * 7.8));
  EXPECT_EQ(Sum(kFieldUnrealizedPL), TVariant::Float(10 + 10 * 7.8));
  EXPECT_EQ(Sum(kFieldRealizedPL), TVariant::Float(2 + 2 * 7.8));
  EXPECT_EQ(Sum(kFieldMarginableValue), TVariant::Float(FControl.GetMarginableValue(*DataOf("M1"))));
  EXPECT_EQ(Sum(kFieldMarginLevel), TVariant::Float((3 * (12 + 12 * 7.8) + 70) / 60 * 100));
  EXPECT_EQ(Sum(kFieldTotalPortfolio), TVariant::Float(3 * 10 + 2 * 20 * 7.8 + 700));
  EXPECT_EQ(Sum(kFieldTotalPortfolio, "USD"), TVariant::Float(2 * 20 + 12));
  EXPECT_EQ(Sum(kFieldNetValue), TVariant::Float(12 + 12 * 7.8 + 70));
}

TEST_F(AggregatedFigures, AMastersLimitsAreNotAvailableInTwoLevelsAndTextsOfTheTotalInThree) {
  SetColumns(FControl, "CreditLimit,MaxMargin,CashBalance");
  EXPECT_EQ(FControl.GetDisplayValue(0, kCellValue), Text("Res_NotAvailable"));
  EXPECT_EQ(FControl.GetDisplayValue(1, kCellValue), Text("Res_NotAvailable"));
  EXPECT_EQ(FControl.GetDisplayValue(2, kCellValue), "700.00");
  TOpenControl deep;
  deep.SetShow3LvInfo(true);
  SetColumns(deep, "CreditLimit");
  deep.SetAccount(Code("M1"));
  deep.SetAggregate();
  EXPECT_EQ(deep.GetDisplayValue(0, kCellValue), "7");
}

}  // namespace
}  // namespace margindesk
