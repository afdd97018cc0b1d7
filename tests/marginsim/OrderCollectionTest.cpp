// The rows of the order grid on their way into the list of simulated orders.
#include "accountinfo/view/AccountInfoView.h"
#include "marginsim/MarginSimulatorView.h"
#include "model/contract/Datadef.h"
#include "tests/marginsim/SimulatorFixture.h"

namespace margindesk {
namespace {

struct TOpenGrid : TMarginSimulatorFrame {
  using TMarginSimulatorFrame::GetSimulatorControl;
  using TMarginSimulatorFrame::TMarginSimulatorFrame;
};

class OrderGridRows : public Simulator {
 protected:
  OrderGridRows() {
    InitializeAccountInfoView();
    FFrame = CreateViewFrame<TOpenGrid>(nullptr);
    FFrame->edtAccount->SetText("A1");
    FFrame->edtAccount->Exit();
  }
  ~OrderGridRows() override {
    FFrame.reset();
    FinalizeAccountInfoView();
  }

  void Set(std::int32_t column, TVariant value) {
    FFrame->OrderGridView->SetValue(FFrame->OrderGridView->GetRecordCount() - 2, column, std::move(value));
  }
  // A row above the blank one.
  void AddRow(std::string_view symbol, std::string_view side, double price, double quantity) {
    FFrame->OrderGridView->SetRecordCount(FFrame->OrderGridView->GetRecordCount() + 1);
    Set(kOrderColumnSymbol, TVariant::Text(std::string(symbol)));
    Set(kOrderColumnSide, TVariant::Text(std::string(side)));
    Set(kOrderColumnPrice, TVariant::Float(price));
    Set(kOrderColumnQuantity, TVariant::Float(quantity));
  }
  std::string Orders() {
    std::string text;
    for (const auto& order : FFrame->GetSimulatorControl()->GetSimulateOrders()) {
      text += order->FSymbol.Text() + " " + IntegerToText(order->FSide) + " " + FloatToText(order->FQty) +
              "@" + FloatToText(order->FPrice);
      for (const std::int32_t code : {order->FOpenClose, order->FPrincipal, order->FStatus})
        text += " " + IntegerToText(code);
      text += "\n";
    }
    return text;
  }
  std::string Marks() {
    std::string text;
    for (std::int32_t row = 0; row < FFrame->OrderGridView->GetRecordCount(); ++row)
      text += FFrame->OrderGridView->GetValue(row, kOrderColumnValidity).AsText() + "|";
    return text;
  }

  std::unique_ptr<TOpenGrid> FFrame;
};

TEST_F(OrderGridRows, BecomeOrdersAsTheyStand) {
  EXPECT_TRUE(FFrame->AddSimulateOrder(false)) << "nothing but the blank row";
  AddRow(" AAA ", "Buy", 9, 5);
  Set(kOrderColumnOpenClose, TVariant::Text(Text("Res_OrderClose")));
  Set(kOrderColumnPrincipal, TVariant::Text(Text("Res_Principal_H")));
  Set(kOrderColumnStatus, TVariant::Text(Text("Res_Status_Comp")));
  for (int i = 0; i < 2; ++i) {
    AddRow("UUU", "Sell", 20, 1);
    Set(kOrderColumnPrice, TVariant::Null());
    Set(kOrderColumnStatus, TVariant::Text("later"));
  }
  EXPECT_TRUE(FFrame->AddSimulateOrder(false));
  EXPECT_EQ(Orders(), "AAA 0 5@9 2 12 3\nUUU 1 1@0 0 0 1\nUUU 1 1@0 0 0 1\n");
  EXPECT_EQ(Marks(), "0|0|0||");
  EXPECT_EQ(FActions.FAsked, "");
  EXPECT_TRUE(FFrame->AddSimulateOrder(true));
  EXPECT_EQ(Orders(), "AAA 0 5@9 2 12 0\nUUU 1 1@0 0 0 0\nUUU 1 1@0 0 0 0\n");
  EXPECT_TRUE(FActions.FAsked.starts_with("check 1 A1 AAA 0 5@9 2 12 0\n")) << FActions.FAsked;
  EXPECT_TRUE(FHost.Messages().empty());

  TProductFacts shownTenfold;
  shownTenfold.FSymbol = Code("AAA");
  shownTenfold.FPriceMultiplier = 10;
  FHost.Data().SetProduct(shownTenfold);
  EXPECT_TRUE(FFrame->AddSimulateOrder(false));
  EXPECT_TRUE(Orders().starts_with("AAA 0 5@0.9 ")) << Orders();
}

TEST_F(OrderGridRows, AreReadNoFurtherThanTheFirstIncompleteOne) {
  AddRow("AAA", "Buy", 9, 5);
  AddRow("UUU", "Acquire", 20, 1);
  AddRow("", "Buy", 9, 5);
  EXPECT_FALSE(FFrame->AddSimulateOrder(false));
  EXPECT_EQ(Marks(), "0|1|||");
  EXPECT_EQ(FHost.Messages(), std::vector{Text("Res_FillMarginSimulateInfo")});
  EXPECT_EQ(Orders(), "AAA 0 5@9 0 0 1\n");
}

TEST_F(OrderGridRows, OfBondsFollowTheMinimumAndTheIncrement) {
  AddRow("BBB", "Sell", 99, 12500);
  AddRow("AAA", "Buy", 9, 5);
  EXPECT_FALSE(FFrame->AddSimulateOrder(true));
  ASSERT_EQ(FHost.Messages().size(), 1U);
  EXPECT_NE(FHost.Messages()[0].find("10000"), std::string::npos) << FHost.Messages()[0];
  EXPECT_NE(FHost.Messages()[0].find("5000"), std::string::npos);
  EXPECT_EQ(Marks(), "1|||");
  EXPECT_EQ(FActions.FAsked + Orders(), "");
}

TEST_F(OrderGridRows, OfFundsAreBoughtForAnAmountAndSoldByUnits) {
  AddRow("FFF", "Buy", 5000, 77);
  AddRow("FFF", "Sell", 12, 30);
  EXPECT_TRUE(FFrame->AddSimulateOrder(false));
  EXPECT_EQ(Orders(), "FFF 0 1@5000 0 0 1\nFFF 1 30@1 0 0 1\n");
  AddRow("FFF", "Buy", 0, 77);
  EXPECT_FALSE(FFrame->AddSimulateOrder(false));
  EXPECT_EQ(Marks(), "0|0|1||");
  EXPECT_EQ(FHost.Messages().size(), 1U);
}

TEST_F(OrderGridRows, ThatTheHostRefusesAreMarkedWithoutAnotherMessage) {
  AddRow("AAA", "Buy", 9, 5);
  EXPECT_TRUE(FFrame->AddSimulateOrder(false));
  FFrame->edtAccount->SetText("");
  FFrame->edtAccount->Exit();
  EXPECT_FALSE(FFrame->AddSimulateOrder(true));
  EXPECT_EQ(FHost.Messages().size(), 1U) << "no account";
  EXPECT_EQ(Marks() + Orders(), "0||AAA 0 5@9 0 0 1\n") << "and not even forgotten";
  FFrame->edtAccount->SetText("A1");
  FFrame->edtAccount->Exit();
  FActions.FAnswer = false;
  EXPECT_FALSE(FFrame->AddSimulateOrder(true));
  EXPECT_EQ(Marks() + Orders(), "1||");
  EXPECT_EQ(FHost.Messages().size(), 1U);
}

TEST_F(OrderGridRows, AreLeftAloneWhenTheViewClosesUnderAMessage) {
  AddRow("FFF", "Buy", 0, 1);
  FHost.MessageBox().SetSink([this](std::string_view) { FFrame.reset(); });
  EXPECT_FALSE(FFrame->AddSimulateOrder(false));
  EXPECT_EQ(FFrame, nullptr);
}

TEST_F(OrderGridRows, ArePlacedOnceThoughSubmitIsPressedAgainWhileTheQuestionStands) {
  int questions = 0;
  FHost.Channels().SetResponder(kMessageBatchConfirmation, [&](void* message) {
    if (++questions == 1) FFrame->btnSubmit->Click();
    static_cast<TOrderTakeActionRecord*>(message)->FResult = true;
  });
  AddRow("AAA", "Buy", 9, 5);
  FFrame->btnSubmit->Click();
  EXPECT_EQ(FActions.FAsked, "check 1 A1 AAA 0 5@9 0 0 0\ntake 1 A1 AAA 0 5@9 0 0 0Y\n");
  AddRow("UUU", "Buy", 20, 1);
  FFrame->btnSubmit->Click();
  EXPECT_EQ(questions, 2);
}

}  // namespace
}  // namespace margindesk
