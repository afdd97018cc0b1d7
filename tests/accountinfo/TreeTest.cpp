// The rows of the account tree: which there are, in which order, and what their captions say.
#include "model/contract/Formatter.h"
#include "tests/accountinfo/AccountTreeFixture.h"

namespace margindesk {
namespace {

class AccountTreeRows : public AccountTree {
 protected:
  AccountTreeRows() {
    AddAccount("A1");
    AddFigures("A1", "", {{TFigure::kCashBalance, 1000}, {TFigure::kCutLoss, 3}});
    AddFigures("A1", "HKD", {{TFigure::kCashBalance, 400}});
    AddFigures("A1", "USD", {{TFigure::kCashBalance, 50}}, true);
    AddFigures("A1", "CNY", {{TFigure::kCashBalance, 10}});
  }
};

TEST_F(AccountTreeRows, TwoLevelsShowEveryCurrencyOfTheAccountInItsOrder) {
  TOpenControl control;
  SetColumns(control, "CashBalance,CutLoss");
  control.SetAccount(Code("A1"));
  EXPECT_EQ(Print(control),
            "Cash Balance: 1,000.00\n"
            "  HK Dollar: 400.00\n"
            "  US Dollar: 50.00\n"
            "  Renminbi: 10.00\n"
            "Cut Loss Amount: 3.00\n");
}

TEST_F(AccountTreeRows, ThreeLevelsPutCurrenciesThatAreNoRowOfTheirOwnConvertedUnderTheTotal) {
  TOpenControl control;
  control.SetShow3LvInfo(true);
  SetColumns(control, "CashBalance,CutLoss");
  control.SetAccount(Code("A1"));
  // The attribute row adds the separate currencies to the total row; account-level fields have no rows below
  // them.
  EXPECT_EQ(Print(control),
            "Cash Balance: 1,390.00\n"
            "  Total(HK Dollar): 1,000.00\n"
            "    HK Dollar: 400.00\n"
            "    Renminbi: 11.00\n"
            "  US Dollar: 50.00\n"
            "Cut Loss Amount: 3\n");
  EXPECT_EQ(control.GetValue(0, kCellValue), TVariant::Float(1390));
  TDataNode* total = control.GetChildNode(control.GetChildNode(nullptr, 0), 0);
  EXPECT_EQ(control.GetValue(control.GetChildNode(total, 1), kCellValue), TVariant::Float(11));

  control.SetCurrency(Code("USD"));
  EXPECT_EQ(Print(control),
            "Cash Balance: 178.21\n"
            "  Total(US Dollar): 128.21\n"
            "    HK Dollar: 51.28\n"
            "    Renminbi: 1.41\n"
            "  US Dollar: 50.00\n"
            "Cut Loss Amount: 3\n");
}

TEST_F(AccountTreeRows, FieldsOfTheAccountHaveNoRowsBelowThem) {
  TOpenControl control;
  control.SetShow3LvInfo(true);
  SetColumns(control,
             "Account,User,AccountName,MarginLevel,BODUpdateTime,CutLoss,HoldFund,CreditLimit(DDS),RPQ,CIES,"
             "CreditLimit,MarginingBasis,PositionIsolation,MarginMethod,MaxMargin,Aggregated,OnlineStatus,"
             "MarginClass,"
             "DayTradeStatus");
  control.SetAccount(Code("A1"));
  ASSERT_EQ(control.GetCount(), 19);
  for (std::int32_t i = 0; i < 19; ++i)
    EXPECT_EQ(control.GetChildNodeCount(control.GetChildNode(nullptr, i)), 0) << i;
}

TEST_F(AccountTreeRows, AFilterLeavesOneCurrencyAndItsFigureInTheConversionCurrencyAbove) {
  TOpenControl control;
  control.SetShow3LvInfo(true);
  SetColumns(control, "CashBalance");
  control.SetAccount(Code("A1"));
  control.SetCurrency(Code("HKD"));
  control.SetFilterCurr(Code("USD"));
  EXPECT_EQ(Print(control), "Cash Balance: 390.00\n  US Dollar: 50.00\n");
  control.SetFilterCurr(Code("JPY"));
  EXPECT_EQ(Print(control), "Cash Balance: \n");
}

TEST_F(AccountTreeRows, UnknownAccountsAndSingleCurrencyModeLeaveTheAttributeRowsAlone) {
  TOpenControl control;
  SetColumns(control, "CashBalance");
  control.SetAccount(Code("nobody"));
  EXPECT_EQ(Print(control), "Cash Balance: \n");
  FHost.Data().SetMultiCurrency(false);
  FHost.Publish();
  control.SetAccount(Code("A1"));
  EXPECT_EQ(Print(control), "Cash Balance: 1,000.00\n");
}

TEST_F(AccountTreeRows, HiddenColumnsHaveNoRowAndADoubledOneSharesItsValueRows) {
  TOpenControl control;
  TColumnList columns;
  AppendCatalogueColumns("CashBalance,Charges,CashBalance", columns);
  columns[1]->FVisible = false;
  control.SetColumnList(columns);
  control.SetAccount(Code("A1"));
  ASSERT_EQ(control.GetCount(), 2);
  // Rows go under the field's last attribute row, each currency once.
  EXPECT_EQ(control.GetChildNodeCount(control.GetChildNode(nullptr, 0)), 0);
  EXPECT_EQ(control.GetChildNodeCount(control.GetChildNode(nullptr, 1)), 3);
  columns[1]->FVisible = true;
  control.SetColumnList(columns);
  EXPECT_EQ(control.GetCount(), 3);
}

TEST_F(AccountTreeRows, TheStatusColumnBecomesOneRowAnExchange) {
  TOpenControl control;
  SetColumns(control, "Status,CashBalance");
  control.SetAccount(Code("A1"));
  ASSERT_EQ(control.GetCount(), 3);
  EXPECT_EQ(control.GetResourceHeader(15015), Text("Res_Period") + "(HKX)");
  EXPECT_EQ(control.GetResourceHeader(15016), Text("Res_Period") + "(USX)");
  EXPECT_EQ(control.GetResourceHeader(10015), Text("Res_Period"));
  for (std::int32_t i = 0; i < 2; ++i) {
    EXPECT_EQ(control.GetChildNodeCount(control.GetChildNode(nullptr, i)), 0);
    EXPECT_EQ(control.GetDisplayValue(i, kCellValue), Text("Res_DayTrade"));
  }
}

TEST_F(AccountTreeRows, CustomColumnsHaveCurrencyRowsOnlyWhenTheyHoldFigures) {
  auto facts = TFigureFacts{Code("A1"), Code("USD"), true, {}, {{1, "25.5"}, {2, "Chan"}}};
  FHost.Data().SetFigures(facts);
  TColumnList columns;
  AppendCustomColumns(columns);
  ASSERT_GE(columns.size(), 2U);
  ASSERT_EQ(columns[0]->FId, 100001);
  ASSERT_TRUE(columns[0]->FNumeric && !columns[1]->FNumeric);
  TOpenControl control;
  control.SetColumnList(columns);
  control.SetAccount(Code("A1"));
  TDataNode* figures = control.GetChildNode(nullptr, 0);
  ASSERT_EQ(control.GetChildNodeCount(figures), 3);
  EXPECT_EQ(control.GetDisplayValue(control.GetChildNode(figures, 1), kCellValue), "25.50");
  EXPECT_EQ(control.GetDisplayValue(control.GetChildNode(figures, 0), kCellValue), "0.00");
  EXPECT_EQ(control.GetChildNodeCount(control.GetChildNode(nullptr, 1)), 0);
}

TEST_F(AccountTreeRows, TheFxRatioIsEmptyWhereSeveralCurrenciesStandTogether) {
  TOpenControl flat;
  SetColumns(flat, "FxRatio");
  flat.SetAccount(Code("A1"));
  TOpenControl deep;
  deep.SetShow3LvInfo(true);
  SetColumns(deep, "FxRatio");
  deep.SetAccount(Code("A1"));
  deep.SetCurrency(Code("USD"));

  TDataNode* flatRow = flat.GetChildNode(nullptr, 0);
  EXPECT_EQ(flat.GetValue(flatRow, kCellValue), TVariant::Integer(0));
  EXPECT_EQ(flat.GetDisplayValue(flatRow, kCellValue), "");
  EXPECT_EQ(flat.GetValue(flat.GetChildNode(flatRow, 1), kCellValue), TVariant::Float(7.8));

  TDataNode* deepRow = deep.GetChildNode(nullptr, 0);
  TDataNode* group = deep.GetChildNode(deepRow, 0);
  EXPECT_EQ(deep.GetDisplayValue(deepRow, kCellValue), "");
  EXPECT_EQ(deep.GetValue(group, kCellValue), TVariant::Integer(0));
  EXPECT_EQ(deep.GetDisplayValue(group, kCellValue), "");
  // In terms of the conversion currency: a US dollar is one of it.
  EXPECT_EQ(deep.GetDisplayValue(deep.GetChildNode(deepRow, 1), kCellValue),
            TCustomFormatter::GetInstance().FormatValue(1, kFormatRatio, TCode(), true));
}

TEST_F(AccountTreeRows, AReloadedAccountRebuildsItsRows) {
  TOpenControl control;
  SetColumns(control, "CashBalance");
  control.SetAccount(Code("A1"));
  FHost.Publish();
  AddFigures("A1", "EUR", {{TFigure::kCashBalance, 1}});
  control.FChanges = 0;
  FHost.Publish();
  EXPECT_EQ(control.FChanges, 1);
  EXPECT_EQ(control.GetChildNodeCount(control.GetChildNode(nullptr, 0)), 4);
}

}  // namespace
}  // namespace margindesk
