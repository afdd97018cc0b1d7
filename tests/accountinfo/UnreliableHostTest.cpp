// The host may answer "none" to nearly everything, at any moment.
#include <cmath>

#include "tests/accountinfo/AccountTreeFixture.h"
#include "tests/accountinfo/UnreliableHost.h"

namespace margindesk {
namespace {

class UnreliableHost : public AccountTree {
 protected:
  UnreliableHost() {
    FHost.Data().SetCustomFieldKey("oms_CustomAccountInfo", "RPQLevel", "c1");
    FHost.Data().SetCustomFieldKey("oms_CustomAccountInfo", "RPQDate", "c2");
    FHost.Data().SetCustomFieldKey("oms_CustomAccountBalance", "CreditLimit", "limit");
    AddAccount("M1", "", kMasterTypeConsolidated);
    AddAccount("M2", "", 1);
    for (const char* account : {"M1", "M2", "S1", "S2", "S3", "S1C"}) {
      TAccountFacts facts;
      facts.FAccount = Code(account);
      if (facts.FAccount == Code("M1")) facts.FMasterType = kMasterTypeConsolidated;
      if (facts.FAccount == Code("M2")) facts.FMasterType = 1;
      if (facts.FAccount == Code("S1") || facts.FAccount == Code("S2")) facts.FMaster = Code("M2");
      if (facts.FAccount == Code("S3")) facts.FMaster = Code("M1");
      if (facts.FAccount == Code("S1")) facts.FChinaConnectAccount = Code("S1C");
      facts.FCustomValues = {{"c1", "3"}, {"c2", "20200131"}};
      facts.FCustomBalances["limit"] = {{Code("HKD"), 100}, {Code("USD"), 10}};
      FHost.Data().SetAccount(facts);
      for (const char* currency : {"", "HKD", "USD", "CNY"}) {
        AddFigures(
            account, currency,
            {{TFigure::kCashBalance, 50}, {TFigure::kInitialMargin, 20}, {TFigure::kMarginableAmount, 70}},
            Code(currency) == Code("USD"));
      }
      for (const char* symbol : {"AAA", "UUU", "CCC", "NOWHERE"}) AddPosition(account, symbol, 3);
    }
    AddConsolidated("M1", "HKD", {{TFigure::kInitialMargin, 5}});
    FHost.Publish();
  }

  // The figure is its initial value, a number or a text where the field is one; and never infinite or no
  // number.
  static void ExpectSound(const TVariant& value, std::int32_t field) {
    if (value.IsFloat()) {
      EXPECT_TRUE(std::isfinite(value.AsFloat())) << field;
    } else {
      EXPECT_TRUE(value.IsText() || value == TVariant::Integer(0) || value.IsNull() || value.IsUnassigned())
          << field;
    }
  }

  void AskEverything(TOpenControl& control, TDataNode* parent) {
    for (std::int32_t i = 0; i < control.GetChildNodeCount(parent); ++i) {
      TDataNode* node = control.GetChildNode(parent, i);
      ExpectSound(control.GetValue(node, kCellValue), i);
      const std::string text = control.GetDisplayValue(node, kCellValue);
      for (const char* broken : {"nan", "inf"}) EXPECT_EQ(text.find(broken), std::string::npos) << text;
      FTexts += text.empty() ? 0 : 1;
      control.GetDisplayValue(node, kCellCaption);
      AskEverything(control, node);
    }
  }

  int FTexts = 0;
};

TEST_F(UnreliableHost, NeverBreaksAFigureOrTheTree) {
  TWhim whim{std::mt19937(20260101), 4};
  TUnreliableAccounts accounts(whim);
  TUnreliablePositions positions(whim);
  TUnreliableMarket market(whim);
  TUnreliableProfile profile(whim);
  TServiceScope<TCustomAccountAdapter> accountScope(accounts);
  TServiceScope<TCustomPositionAdapter> positionScope(positions);
  TServiceScope<TCustomMarketAdapter> marketScope(market);
  TServiceScope<TCustomUserAppProfile> profileScope(profile);

  TColumnList columns;
  for (const TCatalogueRow& row : GetCatalogue()) columns.push_back(CreateCatalogueColumn(row));
  AppendCustomColumns(columns);
  const std::vector<TCode> names{Code("M1"), Code("M2"), Code("S1"), Code("S1C"), Code("nobody"), TCode()};
  const std::vector<TCode> currencies{TCode(), Code("HKD"), Code("USD"), Code("CNY"), Code("JPY")};
  for (int round = 0; round < 60; ++round) {
    auto& random = whim.FRandom;
    if (round % 10 == 0) FHost.Data().SetChinaConnect(random() % 2 == 0);
    TOpenControl control;
    control.SetShow3LvInfo(random() % 2 == 0);
    for (int step = 0; step < 4; ++step) {
      control.SetColumnList(columns);
      control.SetAccount(names[random() % names.size()]);
      if (random() % 2 == 0) control.SetAggregate();
      control.SetFilterCurr(currencies[random() % currencies.size()]);
      control.SetCurrency(currencies[random() % currencies.size()]);
      AskEverything(control, nullptr);
      for (const auto& column : columns) {
        ExpectSound(control.GetAccountCurrencyData(DataOf("M2", "HKD"), column->FId), column->FId);
        ExpectSound(control.GetAggregatedAccountCurrencyData(DataOf("S1"), column->FId), column->FId);
      }
    }
  }
  EXPECT_GT(FTexts, 1000);  // the whims left something to ask for
}

}  // namespace
}  // namespace margindesk
