// Margin level and marginable value, alone and for a group of accounts.
#include "tests/accountinfo/AccountTreeFixture.h"

namespace margindesk {
namespace {

class MarginLevels : public AccountTree {
 protected:
  static constexpr double kNone = -1;

  double Level(TOpenControl& control, const TCustomAccountData* data) {
    double level = kNone;
    const bool computed = control.GetMarginLevel(data, level);
    EXPECT_EQ(computed, level != kNone);
    return level;
  }
};

TEST_F(MarginLevels, TakeTheirNumeratorFromTheSettingsInTheirOrder) {
  AddAccount("A1");
  AddFigures("A1", "HKD",
             {{TFigure::kNetEquity, 500},
              {TFigure::kCashBalance, 300},
              {TFigure::kBodCashBalance, 100},
              {TFigure::kOwnTotalPL, 20},
              {TFigure::kInitialMargin, 200}});
  AddPosition("A1", "AAA", 1);
  AddPosition("A1", "UUU", 1);
  const auto level = [this] {
    TOpenControl control;
    control.SetAccount(Code("A1"));
    return Level(control, DataOf("A1", "HKD"));
  };
  EXPECT_DOUBLE_EQ(level(), (12 + 100) / 200.0 * 100);
  SetConfig("ApplyDDSPL", "Y");
  EXPECT_DOUBLE_EQ(level(), (20 + 100) / 200.0 * 100);
  SetConfig("MarginLevelMode", "1");
  EXPECT_DOUBLE_EQ(level(), 150);
  SetConfig("NetEquityMargin", "Y");
  EXPECT_DOUBLE_EQ(level(), 250);

  for (const double nothing : {0.0, 0.00000005, -0.0000001}) {
    AddFigures("A1", "HKD", {{TFigure::kNetEquity, 500}, {TFigure::kInitialMargin, nothing}});
    EXPECT_EQ(level(), kNone);
  }
  AddFigures("A1", "HKD", {{TFigure::kNetEquity, 500}, {TFigure::kInitialMargin, -0.0000002}});
  EXPECT_LT(level(), 0);
  TOpenControl control;
  control.SetAccount(Code("A1"));
  EXPECT_EQ(Level(control, nullptr), kNone);
  EXPECT_EQ(control.GetAccountCurrencyDisplayData(nullptr, kFieldMarginLevel, true),
            Text("Res_MarginLevel_None"));
}

class GroupMarginLevels : public MarginLevels {
 protected:
  explicit GroupMarginLevels(std::int32_t masterType = 1) {
    AddAccount("M1", "", masterType);
    AddAccount("S1", "M1");
    AddAccount("S2", "M1");
    AddFigures("M1", "HKD", {{TFigure::kCashBalance, 100}, {TFigure::kInitialMargin, 10}});
    AddFigures("S1", "HKD", {{TFigure::kCashBalance, 200}, {TFigure::kInitialMargin, 400}});
    AddPosition("M1", "AAA", 1);
    AddPosition("S1", "AAA", 1);
  }

  double GroupLevel(std::string_view currency = "HKD") {
    TOpenControl control;
    control.SetAccount(Code("M1"));
    control.SetAggregate();
    return Level(control, DataOf("M1", currency));
  }
};

TEST_F(GroupMarginLevels, AreARatioOfSumsAndCountThePositionsOnceAnAccountWithData) {
  SetConfig("MarginLevelMode", "1");
  EXPECT_DOUBLE_EQ(GroupLevel(), 300 / 410.0 * 100);
  SetConfig("MarginLevelMode", "0");
  // Master and first sub-account each add the group's 24; the second has no data and adds nothing.
  EXPECT_DOUBLE_EQ(GroupLevel(), (24 + 24) / 410.0 * 100);
  AddFigures("S2", "HKD", {{TFigure::kBodCashBalance, 6}});
  EXPECT_DOUBLE_EQ(GroupLevel(), (24 + 24 + 24 + 6) / 410.0 * 100);
  AddFigures("S2", "HKD", {{TFigure::kInitialMargin, -410}});
  EXPECT_EQ(GroupLevel(), kNone);
}

TEST_F(GroupMarginLevels, AMasterWithoutDataStillAddsItsSubAccountsTotals) {
  AddFigures("S1", "", {{TFigure::kCashBalance, 50}, {TFigure::kInitialMargin, 100}});
  SetConfig("MarginLevelMode", "1");
  EXPECT_DOUBLE_EQ(GroupLevel("USD"), 50);
}

TEST_F(GroupMarginLevels, OnTheirSideOfChinaConnectTheLinkedAccountsCount) {
  FHost.Data().SetChinaConnect(true);
  TAccountFacts facts;
  facts.FAccount = Code("S1");
  facts.FMaster = Code("M1");
  facts.FChinaConnectAccount = Code("S1C");
  FHost.Data().SetAccount(facts);
  AddAccount("S1C");
  AddFigures("S1C", "HKD", {{TFigure::kCashBalance, 7}, {TFigure::kInitialMargin, 3}});
  SetConfig("MarginLevelMode", "1");
  TOpenControl control;
  control.SetAccount(Code("M1"));
  control.SetAggregate();
  EXPECT_DOUBLE_EQ(Level(control, DataOf("M1", "HKD")), 300 / 410.0 * 100);
  control.SetFilterCurr(Code("CNY"));
  EXPECT_DOUBLE_EQ(Level(control, DataOf("M1", "HKD")), 107 / 13.0 * 100);
}

class ConsolidatedMarginLevels : public GroupMarginLevels {
 protected:
  ConsolidatedMarginLevels() : GroupMarginLevels(kMasterTypeConsolidated) {}
};

TEST_F(ConsolidatedMarginLevels, ComeFromTheConsolidatedFiguresAlone) {
  SetConfig("MarginLevelMode", "1");
  EXPECT_EQ(GroupLevel(), kNone);
  AddConsolidated("M1", "HKD", {{TFigure::kCashBalance, 33}, {TFigure::kInitialMargin, 100}});
  EXPECT_DOUBLE_EQ(GroupLevel(), 33);
  EXPECT_EQ(GroupLevel("USD"), kNone);
}

class MarginableValues : public AccountTree {
 protected:
  MarginableValues() {
    FHost.Data().SetCustomFieldKey("oms_CustomAccountBalance", "CreditLimit", "limit");
    PutAccount("A1", {}, std::nullopt, {{Code("HKD"), 1000}});
    AddFigures("A1", "HKD", {{TFigure::kMarginableAmount, 800}});
    FControl.SetAccount(Code("A1"));
  }

  void PutAccount(std::string_view account, std::string_view master, std::optional<std::int32_t> masterType,
                  std::vector<std::pair<TCode, double>> limits) {
    TAccountFacts facts;
    facts.FAccount = Code(account);
    facts.FMaster = Code(master);
    facts.FMasterType = masterType;
    facts.FCustomBalances["limit"] = std::move(limits);
    FHost.Data().SetAccount(facts);
  }

  TOpenControl FControl;
};

TEST_F(MarginableValues, AreTheSmallerOfCreditLimitAndMarginableAmount) {
  EXPECT_EQ(FControl.GetMarginableValue(*DataOf("A1", "HKD")), 800);
  AddFigures("A1", "USD", {{TFigure::kMarginableAmount, 800}});
  EXPECT_EQ(FControl.GetMarginableValue(*DataOf("A1", "USD")), 0);
  AddFigures("A1", "USD", {{TFigure::kMarginableAmount, -5}});
  EXPECT_EQ(FControl.GetMarginableValue(*DataOf("A1", "USD")), -5);
}

TEST_F(MarginableValues, TheTotalRowAddsTheLimitsOfEveryCurrencyThatIsNotExcluded) {
  PutAccount("A1", {}, std::nullopt, {{Code("HKD"), 1000}, {Code("USD"), 10}, {Code("CNY"), 100}});
  AddFigures("A1", "", {{TFigure::kMarginableAmount, 1e9}});
  AddFigures("A1", "USD", {});
  AddFigures("A1", "CNY", {});
  EXPECT_DOUBLE_EQ(FControl.GetMarginableValue(*DataOf("A1")), 1000 + 10 * 7.8 + 100 * 1.1);
  FHost.Data().SetCurrency({Code("CNY"), 1.1, true, false});
  EXPECT_DOUBLE_EQ(FControl.GetMarginableValue(*DataOf("A1")), 1000 + 10 * 7.8);
  FHost.Data().SetMultiCurrency(false);
  EXPECT_DOUBLE_EQ(FControl.GetMarginableValue(*DataOf("A1")), 1000);
}

TEST_F(MarginableValues, AGroupAddsItsSubAccountsAndAConsolidatedOneReplacesTheAmount) {
  PutAccount("M1", {}, 1, {{Code("HKD"), 100}});
  PutAccount("S1", "M1", std::nullopt, {{Code("HKD"), 500}});
  PutAccount("S2", "M1", std::nullopt, {{Code("HKD"), 5000}});
  AddFigures("M1", "HKD", {{TFigure::kMarginableAmount, 300}});
  AddFigures("S1", "HKD", {{TFigure::kMarginableAmount, 400}});
  FControl.SetAccount(Code("M1"));
  FControl.SetAggregate();
  EXPECT_EQ(FControl.GetMarginableValue(*DataOf("M1", "HKD")), 600);  // limits 100 + 500 against 700
  PutAccount("M1", {}, kMasterTypeConsolidated, {{Code("HKD"), 100}});
  EXPECT_EQ(FControl.GetMarginableValue(*DataOf("M1", "HKD")), 0);
  AddConsolidated("M1", "HKD", {{TFigure::kMarginableAmount, 50}});
  EXPECT_EQ(FControl.GetMarginableValue(*DataOf("M1", "HKD")), 50);
}

TEST_F(MarginableValues, OnTheLinkedSideTheLinkedAccountsBaseCurrencyLimitCounts) {
  FHost.Data().SetChinaConnect(true);
  PutAccount("A1C", {}, std::nullopt, {{Code("HKD"), 70}, {Code("CNY"), 1}});
  TAccountFacts facts;
  facts.FAccount = Code("A1");
  facts.FChinaConnectAccount = Code("A1C");
  FHost.Data().SetAccount(facts);
  AddFigures("A1", "CNY", {{TFigure::kMarginableAmount, 1}});
  FControl.SetFilterCurr(Code("CNY"));
  EXPECT_EQ(FControl.GetMarginableValue(*DataOf("A1", "CNY")), 0);
  AddFigures("A1C", "CNY", {{TFigure::kMarginableAmount, 90}});
  EXPECT_EQ(FControl.GetMarginableValue(*DataOf("A1", "CNY")), 70);
}

}  // namespace
}  // namespace margindesk
