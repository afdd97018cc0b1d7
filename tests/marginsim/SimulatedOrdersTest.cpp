// Simulated orders on their way to the host: checked, simulated, confirmed and placed.
#include "model/contract/Datadef.h"
#include "tests/marginsim/SimulatorFixture.h"

namespace margindesk {
namespace {

class SimulatorOrders : public Simulator {
 protected:
  // Answers the batch confirmation; FAsked takes the texts of its cells.
  void Answer(bool confirm, std::function<void()> meanwhile = {}) {
    FHost.Channels().SetResponder(kMessageBatchConfirmation, [this, confirm, meanwhile](void* message) {
      auto& record = *static_cast<TOrderTakeActionRecord*>(message);
      EXPECT_EQ(record.FAction, 54);
      EXPECT_EQ(record.FViewID, 621);
      EXPECT_FALSE(record.FResult);
      FColumns.push_back(record.FDataControl->GetColList());
      for (std::int32_t row = -1; row <= record.FDataControl->GetCount(); ++row) {
        for (const std::int32_t column : {0, 11, 10, 3, 4, 5, 25, 12})
          FCells += record.FDataControl->GetDisplayValue(row, column) + "|";
        FCells += "\n";
      }
      if (meanwhile) meanwhile();
      record.FResult = confirm;
    });
  }

  std::string FCells;
  std::vector<const TColumnList*> FColumns;
};

TEST_F(SimulatorOrders, AreCheckedWithTheActionOfTheirProduct) {
  EXPECT_TRUE(FControl->CheckOrderValidation(Code("AAA"), kSideSell, 9.5, 3, 2, 12, 0));
  FActions.FAnswer = false;
  EXPECT_FALSE(FControl->CheckOrderValidation(Code("FFF"), kSideBuy, 5, 1, 0, 0, 0));
  EXPECT_FALSE(FControl->CheckOrderValidation(Code("BBB"), kSideBuy, 99, 10000, 0, 0, 0));
  EXPECT_EQ(FActions.FAsked,
            "check 1 A1 AAA 1 3@9.5 2 12 0\n"
            "check 37 A1 FFF 0 1@5 0 0 0\n"
            "check 38 A1 BBB 0 10000@99 0 0 0\n");
}

TEST_F(SimulatorOrders, AreSimulatedTogetherUnderANewKeyEachTime) {
  FControl->Simulate();
  EXPECT_EQ(FHost.Messages(), std::vector{Text("Res_NoOrderSimulate")});
  EXPECT_EQ(FActions.FAsked, "");

  FAdapter.FSimulations["A1/K1"] = "SIM";
  FControl->AddSimulateOrder(Code("AAA"), kSideBuy, 9, 5, 1, 11, kStatusPending);
  FControl->AddSimulateOrder(Code("UUU"), kSideSell, 20, 1, 0, 0, kStatusCompleted);
  FControl->CheckOrderValidation(Code("CCC"), kSideSell, 30, 2, 1, 11, 1);  // leaves nothing behind
  FActions.FAsked.clear();
  FControl->Simulate();
  EXPECT_EQ(FActions.FAsked, "take 54 A1 [0 A1 AAA 0 5@9 1 11 1] [0 A1 UUU 1 1@20 0 0 3]\n");
  EXPECT_EQ(FControl->GetTotalPL(Code("USD")), 8);
  FActions.FAnswer = false;
  FControl->SimulateOrder();
  EXPECT_EQ(FControl->GetTotalPL(Code("USD")), 8) << "a refusal keeps the key of before";
  FActions.FAnswer = true;
  FActions.FNextID = "K2";
  FControl->SimulateOrder();
  EXPECT_EQ(FControl->GetTotalPL(Code("USD")), 0) << "the new key's figures have not come";
  ASSERT_EQ(FActions.FKeys.size(), 3U);
  EXPECT_FALSE(FActions.FKeys[0].empty());
  EXPECT_NE(FActions.FKeys[0], FActions.FKeys[1]);
  EXPECT_NE(FActions.FKeys[1], FActions.FKeys[2]);
}

TEST_F(SimulatorOrders, ArePlacedOnceConfirmedWhateverBecomesOfEach) {
  EXPECT_FALSE(FControl->SubmitOrder());
  EXPECT_EQ(FHost.Messages(), std::vector{Text("Res_NoOrderAdd")});

  Answer(true);
  FActions.FAnswer = false;
  AddOrder("AAA", kSideBuy, 9, 1500, 0);
  AddOrder("FFF", kSideSell, 1, 2, 0);
  AddOrder("BBB", kSideBuy, 99, 10000, 0);
  EXPECT_TRUE(FControl->SubmitOrder());
  EXPECT_EQ(FActions.FAsked,
            "take 1 A1 AAA 0 1500@9 0 0 0Y\n"
            "take 37 A1 FFF 1 2@1 0 0 0Y\n"
            "take 38 A1 BBB 0 10000@99 0 0 0Y\n");
  EXPECT_TRUE(FControl->GetSimulateOrders().empty());
  EXPECT_EQ(FCells,
            "||||||||\n"
            "AAA|Buy|A1|9.000|1,500||||\n"
            "FFF|Sell|A1|1.000|2||Fund Redemption||\n"
            "BBB|Buy|A1|99.000|10,000||OTC Bond||\n"
            "||||||||\n")
      << "rows and columns that are not there are empty";

  AddOrder("AAA", kSideBuy, 9, 1, 0);
  EXPECT_TRUE(FControl->SubmitOrder());
  ASSERT_EQ(FColumns.size(), 2U);
  EXPECT_EQ(FColumns[0], FColumns[1]);
  std::string columns;
  for (const auto& column : *FColumns[0])
    columns += IntegerToText(column->FId) + ":" + IntegerToText(column->FWidth) + " ";
  EXPECT_EQ(columns, "0:50 11:80 10:80 3:70 4:70 5:40 25:100 ");
}

TEST_F(SimulatorOrders, AreForgottenWhenTheyAreNotConfirmedOrTheirViewCloses) {
  Answer(false);
  AddOrder("AAA", kSideBuy, 9, 5, 0);
  EXPECT_FALSE(FControl->SubmitOrder());
  EXPECT_TRUE(FControl->GetSimulateOrders().empty());
  Answer(true, [this] { FControl.reset(); });
  AddOrder("AAA", kSideBuy, 9, 5, 0);
  EXPECT_FALSE(FControl->SubmitOrder());
  EXPECT_EQ(FActions.FAsked, "");
}

TEST_F(SimulatorOrders, AreThoseThatTheQuestionShowed) {
  Answer(true, [this] {
    Answer(false);
    AddOrder("UUU", kSideBuy, 20, 7, 0);
    EXPECT_FALSE(FControl->SubmitOrder()) << "another question over the first one";
  });
  AddOrder("AAA", kSideBuy, 9, 5, 0);
  EXPECT_TRUE(FControl->SubmitOrder());
  EXPECT_EQ(FActions.FAsked, "take 1 A1 AAA 0 5@9 0 0 0Y\n");
}

}  // namespace
}  // namespace margindesk
