// The figures of a simulated account, and the totals that completed simulated orders add to.
#include "tests/marginsim/SimulatorFixture.h"

namespace margindesk {
namespace {

TEST_F(Simulator, ShowsTheRealFiguresUntilTheHostHasTheSimulatedOnes) {
  const auto cash = [this](const char* currency) {
    return FControl->GetAccountCurrencyData(DataOf("A1", currency), kFieldCashBalance).AsFloat();
  };
  AddOrder("AAA", kSideBuy, 10, 5);
  FControl->Simulate();
  EXPECT_EQ(cash("USD"), 100);
  EXPECT_EQ(FControl->GetTotalPL(Code("USD")), 0) << "the profit alone does not wait";
  EXPECT_EQ(FControl->GetTotalUnrelizePL(Code("HKD")), 0);

  FAdapter.FSimulations["A1/K1"] = "SIM";
  EXPECT_EQ(cash("USD"), 90);
  EXPECT_EQ(cash("HKD"), 220) << "a currency that the simulation lacks";
  EXPECT_EQ(FControl->GetTotalPL(Code("USD")), 8);
  EXPECT_EQ(FControl->GetTotalUnrelizePL(Code("USD")), 6);
  EXPECT_EQ(FControl->GetTotalPL(TCode()), 3);

  // Another account knows nothing of this one's key; going back to the account shows it again.
  FControl->SetAccount(Code("A2"));
  EXPECT_EQ(FControl->GetTotalPL(Code("USD")), 0);
  FControl->SetAccount(Code("A1"));
  EXPECT_EQ(cash("USD"), 90);

  FControl->SetAccountInfoMode(TAccountInfoMode::aimNormal);
  EXPECT_EQ(cash("USD"), 100);
  EXPECT_EQ(FControl->GetTotalPL(Code("HKD")), 12);
  FControl->SetAccountInfoMode(TAccountInfoMode::aimSimulate);
  EXPECT_EQ(cash("USD"), 100) << "the key went with the mode";
}

TEST_F(Simulator, NeverConvertsTheSimulatedTextOfOneCurrency) {
  FControl->SetCurrency(Code("HKD"));
  const auto text = [this] {
    return FControl->GetAccountCurrencyDisplayData(DataOf("A1", "USD"), kFieldCashBalance, true);
  };
  EXPECT_EQ(text(), "780.00");
  AddOrder("AAA", kSideBuy, 10, 5);
  FControl->Simulate();
  EXPECT_EQ(text(), "780.00");
  FAdapter.FSimulations["A1/K1"] = "SIM";
  EXPECT_EQ(text(), "90.00");
}

TEST_F(Simulator, TellsWhichCellsChangedAndWhatTheyShowedBefore) {
  SetColumns(*FControl, "CashBalance");
  FControl->Changed();
  TDataNode* field = FControl->GetChildNode(nullptr, 0);
  TDataNode* hkd = FControl->GetChildNode(field, 0);
  TDataNode* usd = FControl->GetChildNode(field, 1);
  AddOrder("AAA", kSideBuy, 10, 5);
  FAdapter.FSimulations["A1/K1"] = "SIM";
  std::string original = "untouched";
  EXPECT_FALSE(FControl->IsValueChanged(usd, kCellValue, original)) << "nothing is simulated";
  EXPECT_EQ(original, "untouched");
  FControl->Simulate();
  const int changes = FControl->FChanges;
  EXPECT_TRUE(FControl->IsValueChanged(usd, kCellValue, original));
  EXPECT_EQ(original, "100.00");
  EXPECT_TRUE(FControl->IsValueChanged(field, kCellValue, original));
  EXPECT_EQ(original, "1,000.00");
  EXPECT_FALSE(FControl->IsValueChanged(hkd, kCellValue, original));
  EXPECT_EQ(original, "220.00");
  original = "untouched";
  EXPECT_FALSE(FControl->IsValueChanged(usd, kCellCaption, original));
  EXPECT_FALSE(FControl->IsValueChanged(nullptr, kCellValue, original));
  EXPECT_EQ(original, "untouched");
  EXPECT_EQ(FControl->FChanges, changes) << "looking at the real figures tells nobody";
  EXPECT_EQ(FControl->GetAccountInfoMode(), TAccountInfoMode::aimSimulate);
}

TEST_F(Simulator, AddsCompletedOrdersToThreeTotalsAtOnce) {
  AddOrder("AAA", kSideBuy, 9, 5);
  AddOrder("AAA", kSideSell, 11, 2);
  AddOrder("UUU", kSideBuy, 20, 1);
  AddOrder("UUU", kSideBuy, 20, 1000, kStatusPending);
  EXPECT_EQ(FControl->GetTotalCompBuy(Code("HKD")), 100) << "not simulating";
  FActions.FAnswer = false;
  FControl->Simulate();
  EXPECT_EQ(FControl->GetTotalCompBuy(Code("HKD")), 100 + 45) << "whatever the host answered";
  EXPECT_EQ(FControl->GetTotalCompSell(Code("HKD")), 40 + 22);
  EXPECT_EQ(FControl->GetTotalMarketValue(Code("HKD")), 30 + 50 + 20) << "sales add as well";
  EXPECT_EQ(FControl->GetTotalCompBuy(Code("USD")), 20);
  EXPECT_EQ(FControl->GetTotalCompBuy(TCode()), 100 + 45 + 20 * 7.8);
  FControl->ResetSimulate();
  EXPECT_EQ(FControl->GetTotalCompBuy(TCode()), 100);
}

TEST_F(Simulator, CountsOrdersByTheirSideOfChinaConnect) {
  TAccountFacts linked;
  linked.FAccount = Code("A1");
  linked.FChinaConnectAccount = Code("A2");
  FHost.Data().SetAccount(linked);
  FHost.Data().SetChinaConnect(true);
  AddOrder("UUU", kSideBuy, 20, 1);
  AddOrder("CCC", kSideBuy, 30, 1);
  FControl->Simulate();
  FAdapter.FSimulations["A2/K1"] = "SIM";
  EXPECT_EQ(FControl->GetTotalCompBuy(Code("HKD")), 100 + 20 * 7.8) << "the currency does not select";
  EXPECT_EQ(FControl->GetTotalPL(Code("USD")), 0);
  FControl->SetFilterCurr(Code("CNY"));
  EXPECT_EQ(FControl->GetTotalCompBuy(Code("HKD")), 30 * 1.1);
  EXPECT_EQ(FControl->GetTotalPL(Code("USD")), 8) << "of the linked account";
}

TEST_F(Simulator, FollowsTheSimulationsOfItsAccountAlone) {
  FControl->SetAccount(Code("A2"));
  FControl->SetAccount(Code("A2"));
  FControl->SetAccount(Code("A1"));
  EXPECT_EQ(FAdapter.FListeners, ">A1 A1>A2 A2>A1 ");

  TAccountMap others{{Code("A2"), nullptr}};
  TAccountMap mine{{Code("A1"), nullptr}};
  FControl->FChanges = 0;
  FControl->AccountSimulateUpdate(nullptr, &mine);
  FControl->SetAccountInfoMode(TAccountInfoMode::aimNormal);
  FControl->SetAccountInfoMode(TAccountInfoMode::aimSimulate);
  FControl->AccountSimulateUpdate(nullptr, &others);
  FControl->AccountSimulateUpdate(nullptr, nullptr);
  EXPECT_EQ(FControl->FChanges, 0);
  FControl->AccountSimulateUpdate(nullptr, &mine);
  EXPECT_EQ(FControl->FChanges, 1);
  FControl->SetAccountInfoMode(TAccountInfoMode::aimNormal);
  EXPECT_EQ(FControl->FChanges, 2);
}

}  // namespace
}  // namespace margindesk
