// Totals over positions, and totals of one field over the currencies of an account.
#include <limits>

#include "model/contract/Formatter.h"
#include "tests/accountinfo/AccountTreeFixture.h"

namespace margindesk {
namespace {

class PositionTotals : public AccountTree {
 protected:
  PositionTotals() {
    AddAccount("A1");
    AddFigures("A1", "", {});
    AddPosition("A1", "AAA", 3);
    AddPosition("A1", "UUU", 2);
    AddPosition("A1", "CCC", -1);
    FControl.SetAccount(Code("A1"));
  }

  TOpenControl FControl;
};

TEST_F(PositionTotals, CountOneCurrencyAsItIsOrAllOfThemInTheBaseCurrency) {
  EXPECT_EQ(FControl.GetTotalMarketValue(Code("usd")), 40);
  EXPECT_EQ(FControl.GetTotalMarketValue(Code("USD")), 40);
  EXPECT_EQ(FControl.GetTotalMarketValue(TCode()), 30 + 40 * 7.8 - 30 * 1.1);
  EXPECT_EQ(FControl.GetTotalCompBuy(Code("CNY")), 100);
  EXPECT_EQ(FControl.GetTotalCompSell(TCode()), 40 + 40 * 7.8 + 40 * 1.1);
  EXPECT_EQ(FControl.GetTotalPL(Code("HKD")), 12);
  EXPECT_EQ(FControl.GetTotalRelizePL(Code("HKD")), 2);
  EXPECT_EQ(FControl.GetTotalUnrelizePL(Code("HKD")), 10);
  EXPECT_EQ(FControl.GetTotalPL(Code("JPY")), 0);

  FHost.Data().SetCurrency({Code("USD"), 7.8, true, false});  // excluded from calculation
  EXPECT_EQ(FControl.GetTotalMarketValue(TCode()), 30 - 30 * 1.1);
  EXPECT_EQ(FControl.GetTotalMarketValue(Code("USD")), 40);
}

TEST_F(PositionTotals, ExcludedUnitsAreNotValuedAndUnpricedOnesAddNothing) {
  TPositionFacts facts = MakePosition("A1", "AAA", 10);
  facts.FExcludedQuantity = 4;
  FHost.Data().UpsertPosition(facts);
  EXPECT_EQ(FControl.GetTotalMarketValue(Code("HKD")), 60);
  TProductFacts unpriced;
  unpriced.FSymbol = Code("NEW");
  unpriced.FCurrency = Code("HKD");
  FHost.Data().SetProduct(unpriced);
  AddPosition("A1", "NEW", 10);
  EXPECT_EQ(FControl.GetTotalMarketValue(Code("HKD")), 60);
  EXPECT_EQ(FControl.GetTotalCompBuy(Code("HKD")), 200);
}

TEST_F(PositionTotals, APositionWithoutAProductCountsByItsReferenceItemOnceThatIsReady) {
  TProductFacts unlisted;
  unlisted.FSymbol = Code("OLD");
  unlisted.FCurrency = Code("HKD");
  unlisted.FExchange = Code("HKX");
  unlisted.FListed = false;
  FHost.Data().SetProduct(unlisted);
  AddPosition("A1", "OLD", 1);
  AddPosition("A1", "NOWHERE", 1);
  FHost.Data().SetItemStatus(Code("OLD"), 2);
  EXPECT_EQ(FControl.GetTotalCompBuy(Code("HKD")), 100);
  FHost.Data().SetItemStatus(Code("OLD"), 1);
  EXPECT_EQ(FControl.GetTotalCompBuy(Code("HKD")), 200);
}

TEST_F(PositionTotals, AProfitFromPricesReplacesTheStoredPartsButNotTheUnrealisedTotal) {
  TPositionFacts facts = MakePosition("A1", "AAA", 3);
  facts.FPriceBased = true;
  facts.FAveragePrice = 8;
  FHost.Data().UpsertPosition(facts);
  EXPECT_EQ(FControl.GetTotalPL(Code("HKD")), (10 - 8) * 3);
  EXPECT_EQ(FControl.GetTotalUnrelizePL(Code("HKD")), 10);
  // While the market trades, a last price outside the spread counts as the spread's nearer side.
  TPriceFacts prices;
  prices.FLast = 10;
  prices.FBid = 8.5;
  prices.FAsk = 9;
  FHost.Data().SetPrice(Code("AAA"), prices);
  EXPECT_EQ(FControl.GetTotalPL(Code("HKD")), (9 - 8) * 3);
  FHost.Data().SetExchangeOpen(Code("HKX"), false);
  EXPECT_EQ(FControl.GetTotalPL(Code("HKD")), (10 - 8) * 3);
}

TEST_F(PositionTotals, ChinaConnectSelectsByExchangeAndAlwaysConverts) {
  FHost.Data().SetChinaConnect(true);
  EXPECT_EQ(FControl.GetTotalCompBuy(Code("HKD")), 100 + 100 * 7.8);
  FControl.SetFilterCurr(Code("CNY"));
  EXPECT_EQ(FControl.GetTotalCompBuy(Code("HKD")), 100 * 1.1);
  EXPECT_EQ(FControl.GetTotalMarketValue(TCode()), -30 * 1.1);
  AddPosition("A1", "NOWHERE", 1);  // no reference item: on neither side
  FControl.SetFilterCurr(TCode());
  EXPECT_EQ(FControl.GetTotalCompBuy(TCode()), 100 + 100 * 7.8);
}

TEST_F(PositionTotals, ThePeriodReadsThePositionsThatTheLastTotalLeft) {
  AddAccount("M1", "", 1);
  AddAccount("S1", "M1");
  AddAccount("S2", "M1");
  AddFigures("M1", "", {});
  AddPosition("S1", "UUU", 2);
  AddPosition("S2", "AAA", 0.00000001);
  AddPosition("M1", "CCC", 2);
  TOpenControl control;
  control.SetAccount(Code("M1"));
  control.SetAggregate();
  EXPECT_EQ(control.GetPeriod(Code("CNX")), Text("Res_DayTrade"));  // no total has run
  control.GetTotalPL(TCode());
  // Of the group only the last sub-account's are left; its holding counts as nothing.
  for (const char* exchange : {"CNX", "USX", "HKX"})
    EXPECT_EQ(control.GetPeriod(Code(exchange)), Text("Res_DayTrade"));
  AddPosition("S2", "AAA", -1);
  control.GetTotalPL(TCode());
  EXPECT_EQ(control.GetPeriod(Code("HKX")), Text("Res_OvernightTrade"));
  EXPECT_EQ(control.GetPeriod(Code("hkx")), Text("Res_DayTrade"));
  // Any status but unknown will do for the item's exchange; there is no product to fall back to here.
  TProductFacts unlisted;
  unlisted.FSymbol = Code("OLD");
  unlisted.FExchange = Code("OLDX");
  unlisted.FListed = false;
  FHost.Data().SetProduct(unlisted);
  AddPosition("S2", "OLD", 1);
  control.GetTotalPL(TCode());
  for (const std::int32_t status : {0, 1, 2}) {
    FHost.Data().SetItemStatus(Code("OLD"), status);
    EXPECT_EQ(control.GetPeriod(Code("OLDX")), Text(status == 0 ? "Res_DayTrade" : "Res_OvernightTrade"));
  }
  FHost.Data().SetItemStatus(Code("AAA"), 0);  // an unknown item falls back to the product
  EXPECT_EQ(control.GetPeriod(Code("HKX")), Text("Res_OvernightTrade"));
}

class AccountTotals : public AccountTree {
 protected:
  AccountTotals() {
    AddAccount("A1");
    AddFigures("A1", "",
               {{TFigure::kCashBalance, 100},
                {TFigure::kBodCashBalance, 60},
                {TFigure::kNetEquity, 50},
                {TFigure::kInitialMargin, 10},
                {TFigure::kCutLoss, 1234567.5}});
    AddFigures("A1", "HKD", {{TFigure::kCashBalance, 1000}, {TFigure::kInitialMargin, 1000}});
    AddFigures("A1", "USD",
               {{TFigure::kCashBalance, 10},
                {TFigure::kBodCashBalance, 1},
                {TFigure::kNetEquity, 20},
                {TFigure::kInitialMargin, 5}},
               true);
    AddPosition("A1", "AAA", 3);
    AddPosition("A1", "UUU", 2);
  }

  const TCustomAccount* Account() { return FHost.Data().FindAccount(Code("A1")); }
  double Value(TOpenControl& control, std::int32_t field) {
    return control.GetAccountTotalDataValue(Account(), field).AsFloat();
  }
  static std::string Amount(double value) {
    return TCustomFormatter::GetInstance().FormatValue(value, kFormatAmount, TCode(), true);
  }
};

TEST_F(AccountTotals, AddTheSeparateCurrenciesToTheTotalRowInTheBaseCurrency) {
  TOpenControl control;
  control.SetAccount(Code("A1"));
  EXPECT_EQ(Value(control, kFieldCashBalance), 100 + 10 * 7.8);
  // A position total of the total row covers every currency already; the separate row adds its own again.
  EXPECT_EQ(Value(control, kFieldTotalBuyAmount), (100 + 100 * 7.8) + 100 * 7.8);
  EXPECT_EQ(control.GetAccountTotalDataValue(Account(), kFieldFxRatio), TVariant::Float(7.8 * 7.8));
  EXPECT_EQ(control.GetAccountTotalDataDisplayValue(Account(), kFieldFxRatio), "");
  EXPECT_EQ(control.GetAccountTotalDataDisplayValue(Account(), kFieldCutLoss), "1234567.5");

  control.SetCurrency(Code("USD"));
  EXPECT_EQ(Value(control, kFieldCashBalance), 100 + 10 * 7.8);  // the value is never converted
  EXPECT_EQ(control.GetAccountTotalDataDisplayValue(Account(), kFieldCashBalance),
            Amount((100 + 10 * 7.8) / 7.8));
  control.SetCurrency(Code("ZZZ"));  // a ratio of 0 converts nothing
  EXPECT_EQ(control.GetAccountTotalDataDisplayValue(Account(), kFieldCashBalance), Amount(100 + 10 * 7.8));
}

TEST_F(AccountTotals, SingleCurrencyModeShowsTheRatioOfTheTotalRow) {
  FHost.Data().SetMultiCurrency(false);
  TOpenControl control;
  control.SetAccount(Code("A1"));
  EXPECT_EQ(Value(control, kFieldFxRatio), 1 + 7.8 * 7.8);
  EXPECT_EQ(control.GetAccountTotalDataDisplayValue(Account(), kFieldFxRatio),
            TCustomFormatter::GetInstance().FormatValue(1, kFormatRatio, TCode(), true));
  control.SetCurrency(Code("USD"));
  EXPECT_EQ(control.GetAccountTotalDataDisplayValue(Account(), kFieldFxRatio),
            TCustomFormatter::GetInstance().FormatValue(1 / 7.8, kFormatRatio, TCode(), true));
}

TEST_F(AccountTotals, ADayTradeLimitIsNotAvailableWhenItsConvertedTotalIsNothing) {
  TOpenControl control;
  control.SetAccount(Code("A1"));
  for (const auto& [field, figure] :
       {std::pair{kFieldDTL, TFigure::kDayTradeLimit}, std::pair{kFieldBODDTL, TFigure::kBodDayTradeLimit}}) {
    AddFigures("A1", "", {{figure, 0.0000005}});
    control.SetCurrency(TCode());
    EXPECT_EQ(control.GetAccountTotalDataDisplayValue(Account(), field), "0.00");
    control.SetCurrency(Code("USD"));
    EXPECT_EQ(control.GetAccountTotalDataDisplayValue(Account(), field), Text("Res_NotAvailable"));
    AddFigures("A1", "", {{figure, -78}});
    EXPECT_EQ(control.GetAccountTotalDataDisplayValue(Account(), field), "-10.00");
  }
}

TEST_F(AccountTotals, AreNothingWithoutATotalRowAndStartEmptyWithoutAnAccount) {
  AddAccount("A2");
  AddFigures("A2", "USD", {{TFigure::kCashBalance, 10}}, true);
  TOpenControl control;
  control.SetAccount(Code("A2"));
  const TCustomAccount* account = FHost.Data().FindAccount(Code("A2"));
  EXPECT_TRUE(control.GetAccountTotalDataValue(account, kFieldCashBalance).IsUnassigned());
  EXPECT_EQ(control.GetAccountTotalDataDisplayValue(account, kFieldCashBalance), "");
  EXPECT_TRUE(control.GetAccountTotalDataValue(account, kFieldMarginLevel).IsNull());
  EXPECT_EQ(control.GetAccountTotalDataValue(nullptr, kFieldMarginLevel), TVariant::EmptyText());
  EXPECT_EQ(control.GetAccountTotalDataValue(nullptr, kFieldCashBalance), TVariant::Integer(0));
}

TEST_F(AccountTotals, TheMarginLevelsNumeratorFollowsTheSettings) {
  const double margin = 10 + 5 * 7.8;
  const auto level = [&] {
    TOpenControl control;
    control.SetAccount(Code("A1"));
    return Value(control, kFieldMarginLevel);
  };
  SetConfig("MarginLevelMode", "1");
  EXPECT_DOUBLE_EQ(level(), (100 + 10 * 7.8) / margin * 100);
  for (const char* mode : {"0", "2"}) {
    SetConfig("MarginLevelMode", mode);
    EXPECT_DOUBLE_EQ(level(), ((12 + 12 * 7.8) + 12 * 7.8 + 60 + 1 * 7.8) / margin * 100);
  }
  SetConfig("NetEquityMargin", "Y");
  SetConfig("MarginLevelMode", "1");
  EXPECT_DOUBLE_EQ(level(), (50 + 20 * 7.8) / margin * 100);
}

TEST_F(AccountTotals, TheMarginLevelsTextIsTheTotalRowsOwn) {
  SetConfig("MarginLevelMode", "1");
  TOpenControl control;
  control.SetAccount(Code("A1"));
  const auto percent = [](double value) {
    return TCustomFormatter::GetInstance().FormatValue(value, kFormatMarginLevel, TCode(), true) + "%";
  };
  EXPECT_EQ(control.GetAccountTotalDataDisplayValue(Account(), kFieldMarginLevel), percent(1000));
  AddFigures("A1", "", {{TFigure::kInitialMargin, 0.0000001}});
  AddFigures("A1", "USD", {{TFigure::kInitialMargin, 0}}, true);
  EXPECT_TRUE(control.GetAccountTotalDataValue(Account(), kFieldMarginLevel).IsNull());
  EXPECT_EQ(control.GetAccountTotalDataDisplayValue(Account(), kFieldMarginLevel),
            Text("Res_MarginLevel_None"));
}

TEST_F(AccountTotals, AFilterShowsOneCurrencyAndItsValueIsNotAggregated) {
  AddAccount("M1", "", 1);
  AddAccount("S1", "M1");
  AddFigures("M1", "", {});
  AddFigures("M1", "USD", {{TFigure::kCashBalance, 3}});
  AddFigures("S1", "USD", {{TFigure::kCashBalance, 4}});
  TOpenControl control;
  control.SetAccount(Code("M1"));
  control.SetAggregate();
  control.SetFilterCurr(Code("USD"));
  const TCustomAccount* master = FHost.Data().FindAccount(Code("M1"));
  EXPECT_EQ(control.GetAccountTotalDataValue(master, kFieldCashBalance), TVariant::Float(3));
  // What is shown is the group's figure, in the conversion currency.
  EXPECT_EQ(control.GetAccountTotalDataDisplayValue(master, kFieldCashBalance), Amount(7 * 7.8));
  control.SetFilterCurr(Code("CNY"));
  EXPECT_EQ(control.GetAccountTotalDataValue(master, kFieldCashBalance), TVariant::Integer(0));
  EXPECT_EQ(control.GetAccountTotalDataDisplayValue(master, kFieldCashBalance), "");
}

TEST_F(AccountTotals, TheLinkedAccountsSideNeedsItsTotalRow) {
  FHost.Data().SetChinaConnect(true);
  TAccountFacts facts;
  facts.FAccount = Code("A1");
  facts.FChinaConnectAccount = Code("A1C");
  FHost.Data().SetAccount(facts);
  AddAccount("A1C");
  TOpenControl control;
  control.SetAccount(Code("A1"));
  control.SetFilterCurr(Code("CNY"));
  EXPECT_EQ(control.GetAccountTotalDataValue(Account(), kFieldMaxMargin), TVariant::EmptyText());
  EXPECT_EQ(control.GetAccountTotalDataDisplayValue(Account(), kFieldOptionValue), "");
  AddFigures("A1C", "", {{TFigure::kNetEquity, 9}, {TFigure::kCashBalance, 4}});
  EXPECT_EQ(control.GetAccountTotalDataValue(Account(), kFieldOptionValue), TVariant::Float(5));
  EXPECT_EQ(control.GetAccountTotalDataDisplayValue(Account(), kFieldOptionValue), Amount(5));
}

}  // namespace
}  // namespace margindesk
