// The simulator view as a person uses it: typing and spinning in the order grid, languages, layouts, and the
// figures that a simulation changed.
#include <gmock/gmock.h>

#include "controls/ComboBoxProperties.h"
#include "marginsim/MarginSimulatorView.h"
#include "plugin/MarginSimulatorInterface.h"
#include "tests/marginsim/SimulatorFixture.h"
#include "tests/support/TestBook.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct TOpenFrame : TMarginSimulatorFrame {
  using TMarginSimulatorFrame::FColList;
  using TMarginSimulatorFrame::FLayoutColumn;
  using TMarginSimulatorFrame::FMyDataControl;
  using TMarginSimulatorFrame::GetSimulatorControl;
  using TMarginSimulatorFrame::TMarginSimulatorFrame;
};

// A market of ticks of 0.01 from 1 to 10, 0.02 to 20 and 0.05 to 100.
THostContents MakeMarket() {
  TTestBook book;
  book.Currency("HKD", 1);
  book.Exchange("HKX");
  book.Exchange("USX");
  const auto add = [&book](const char* symbol, const char* exchange, double lot, double multiplier) {
    TProductFacts& product = book.Product(symbol, "HKD", 10);
    product.FExchange = Code(exchange);
    product.FLotSize = lot;
    product.FPriceMultiplier = multiplier;
    product.FMarketCode = Code("HK");
    book.FPrices.back().second.FReference = multiplier == 0 ? 9.95 : 9.75;
  };
  add("00700", "HKX", 100, 0);
  add("QUO", "HKX", 1, 100);
  add("UUU", "USX", 1, 0);
  for (const auto& [lower, upper, tick] :
       {std::tuple(1.0, 10.0, 0.01), std::tuple(10.0, 20.0, 0.02), std::tuple(20.0, 100.0, 0.05)})
    book.FSpreadBands.push_back({Code("HK"), lower, upper, tick});
  for (const char* option : {"client", "OPEN", "Close", "Other"})
    book.FOrderOptions.push_back({Code("HKX"), option});
  for (const char* account : {"A1", "SIM"}) {
    book.Account(account);
    book.Figures(account, "", account[0] == 'A' ? 1000 : 900);
    book.Figures(account, "HKD", 50);
  }
  return book;
}

class SimulatorView : public testing::Test {
 protected:
  SimulatorView() {
    InitializeAccountInfoView();
    for (const char* symbol : {"00700", "QUO", "UUU"}) FindReferenceItem(Code(symbol));
    FHost.RunLoop();
    SetConfig("Default_AccountInfoColumn", "CashBalance,TradingLimit");
    FFrame = CreateViewFrame<TOpenFrame>(nullptr);
    FFrame->edtAccount->SetText("A1");
    FFrame->edtAccount->Exit();
  }
  ~SimulatorView() override {
    FFrame.reset();
    FinalizeAccountInfoView();
  }

  void SetConfig(std::string_view key, std::string_view value, std::string section = {}) {
    auto& config = TCustomConfigManager::GetInstance();
    config.WriteString(section.empty() ? config.GetUserSection() : section, key, value, true);
  }
  TGridTableView& Grid() { return *FFrame->OrderGridView; }
  std::string Edit(std::int32_t row, std::int32_t column, const std::string& text) {
    return Grid().EditCell(row, column, TVariant::Text(text));
  }
  std::string Cell(std::int32_t row, std::int32_t column) { return Grid().GetValue(row, column).AsText(); }
  std::string Row(std::int32_t row) {
    std::string text;
    for (const std::int32_t column :
         {kOrderColumnSymbol, kOrderColumnSide, kOrderColumnPrice, kOrderColumnQuantity,
          kOrderColumnOpenClose, kOrderColumnPrincipal, kOrderColumnStatus})
      text += Cell(row, column) + "|";
    return text;
  }
  // What the open editor holds after one spin.
  std::string Spin(bool up, bool byKey = false) {
    EXPECT_EQ(Grid().SpinEditor(up, byKey), "");
    return Grid().GetEditor()->GetValue().AsText();
  }
  void Tick() { FFrame->RefreshTimer(nullptr, nullptr); }
  const TVirtualTreeNode& Node(std::size_t index) { return *FFrame->AccountInfoTree->GetNodes().at(index); }
  std::string Style(std::size_t row) {
    const auto& tree = *FFrame->AccountInfoTree;
    return tree.GetContentStyle(&Node(row), *tree.FindColumn(kCellValue))->GetComponentName();
  }

  TTestHost FHost{MakeMarket()};
  TSimulatingAccounts FAccounts;
  TServiceScope<TCustomAccountAdapter> FAccountsScope{FAccounts};
  TOrderActions FActions;
  TServiceScope<TCustomOrderActionManager> FActionsScope{FActions};
  std::unique_ptr<TOpenFrame> FFrame;
};

TEST_F(SimulatorView, WritesASymbolAsTheHostDoesAndFillsItsRow) {
  SetConfig("TENCENT", "00700", "SymbolAlias");
  EXPECT_EQ(Edit(0, kOrderColumnSymbol, "700"), "");
  EXPECT_EQ(Edit(1, kOrderColumnQuantity, "7"), "");
  EXPECT_EQ(Edit(1, kOrderColumnSymbol, " tencent "), "");
  EXPECT_EQ(Edit(2, kOrderColumnSymbol, "quo"), "");
  EXPECT_EQ(Row(0), "00700|Buy|9.95|100|||Pending|");
  EXPECT_EQ(Row(1), "00700|Buy|9.95|7|||Pending|") << "what was there stays";
  EXPECT_EQ(Row(2), "QUO|Buy|975|1|||Pending|");
  EXPECT_EQ(Row(3), "|||||||");
  EXPECT_EQ(Grid().GetRecordCount(), 4);
  EXPECT_EQ(Grid().GetDisplayText(2, *Grid().FindColumn(kOrderColumnPrice)), "9.750") << "the real price";
}

TEST_F(SimulatorView, TakesARowWithoutSymbolAwayAtTheNextTickUnlessItGetsOneAgain) {
  for (const std::int32_t row : {0, 1}) Edit(row, kOrderColumnSymbol, "700");
  Edit(2, kOrderColumnSymbol, " ");
  Tick();
  Edit(0, kOrderColumnSymbol, "");
  EXPECT_EQ(Grid().GetRecordCount(), 3) << "not within its own event, and the last row never";
  Edit(0, kOrderColumnSymbol, "uuu");
  Tick();
  EXPECT_EQ(Grid().GetRecordCount(), 3);
  Edit(0, kOrderColumnSymbol, "");
  Tick();
  Tick();
  EXPECT_EQ(Grid().GetRecordCount(), 2);
  EXPECT_EQ(Cell(0, kOrderColumnSymbol), "00700");
}

TEST_F(SimulatorView, GivesTheRowUnderFocusWhatAnotherRowsSymbolWaitedFor) {
  for (const std::int32_t row : {0, 1}) Edit(row, kOrderColumnSymbol, row == 0 ? "new" : "never");
  EXPECT_EQ(Row(0), "NEW|Buy||1|||Pending|");
  Grid().SetFocusedRecordIndex(2);
  TProductFacts facts;
  facts.FSymbol = Code("NEW");
  facts.FExchange = Code("HKX");
  facts.FCurrency = Code("HKD");
  facts.FLotSize = 50;
  FHost.Data().SetProduct(facts);
  TPriceFacts prices;
  prices.FLast = prices.FReference = 5;
  FHost.Data().SetPrice(facts.FSymbol, prices);
  FHost.RunLoop();
  EXPECT_EQ(Row(0), "NEW|Buy||1|||Pending|");
  EXPECT_EQ(Row(2), "|Buy|5|50|||Pending|");
  EXPECT_EQ(Grid().GetRecordCount(), 4);
  Grid().SetValue(2, kOrderColumnPrice, TVariant::Null());
  prices.FReference = 6;
  FHost.Data().SetPrice(facts.FSymbol, prices);
  FHost.RunLoop();
  EXPECT_EQ(Cell(2, kOrderColumnPrice), "") << "it does not wait any more";
}

TEST_F(SimulatorView, SnapsToTicksWhatIsSpunOverTheLimitsOfBandsAndNotWhatIsTyped) {
  Edit(0, kOrderColumnSymbol, "700");
  Edit(0, kOrderColumnPrice, "9.987");
  EXPECT_EQ(Cell(0, kOrderColumnPrice), "9.987");
  Grid().OpenEditor(0, kOrderColumnPrice);
  std::string prices = Spin(true);
  for (const bool up : {true, true, true, false, false, false, false}) prices += " " + Spin(up, !up);
  EXPECT_EQ(prices, "9.99 10 10.02 10.04 10.02 10 9.99 9.98");
  Grid().CommitEditor();
  Edit(1, kOrderColumnSymbol, "quo");
  EXPECT_EQ(Grid().SpinCell(1, kOrderColumnPrice, 26, false), "");
  EXPECT_EQ(Cell(1, kOrderColumnPrice), "1002");

  Edit(0, kOrderColumnQuantity, "250");
  EXPECT_EQ(Cell(0, kOrderColumnQuantity), "250");
  Grid().SpinCell(0, kOrderColumnQuantity, 1, true);
  EXPECT_EQ(Cell(0, kOrderColumnQuantity), "300");
  Grid().OpenEditor(0, kOrderColumnQuantity);
  Grid().PressEditorKey('5');
  Grid().TypeInEditor(TVariant::Float(150));
  EXPECT_EQ(Spin(true), "200") << "by the mouse, after typing";
  for (int i = 0; i < 3; ++i) Spin(false, true);
  Grid().PressEditorKey('0');
  Grid().TypeInEditor(TVariant::Float(250));
  Grid().CommitEditor();
  EXPECT_EQ(Cell(0, kOrderColumnQuantity), "250") << "typed after an arrow key that changed nothing";
  Edit(0, kOrderColumnQuantity, "250");
  Grid().SpinCell(0, kOrderColumnQuantity, 1, false);
  EXPECT_EQ(Cell(0, kOrderColumnQuantity), "300") << "spun after typing that changed nothing";
  Grid().SpinCell(2, kOrderColumnQuantity, 2, false);
  EXPECT_EQ(Row(2), "|||2||||") << "without a symbol by one";
}

TEST_F(SimulatorView, OffersWhatTheExchangeAndTheUsersRightsAllowAndDropsWhatASymbolDoesNotOffer) {
  Edit(0, kOrderColumnSymbol, "700");
  Grid().OpenEditor(0, kOrderColumnOpenClose);
  EXPECT_THAT(Grid().GetEditor()->GetItems(), ElementsAre("Unspecified", "Open", "Close"));
  Grid().ChooseInEditor(2);
  EXPECT_EQ(Cell(0, kOrderColumnOpenClose), "Close") << "at once";
  EXPECT_EQ(Edit(0, kOrderColumnPrincipal, "Client"), "");
  EXPECT_NE(Edit(0, kOrderColumnPrincipal, "House"), "");
  SetConfig("Function_OEPrin", "N");
  Edit(0, kOrderColumnSymbol, "700");
  EXPECT_EQ(Row(0), "00700|Buy|9.95|100|Close||Pending|");
  Grid().OpenEditor(0, kOrderColumnPrincipal);
  EXPECT_THAT(Grid().GetEditor()->GetItems(), ElementsAre());
  Edit(0, kOrderColumnSymbol, "uuu");
  EXPECT_EQ(Cell(0, kOrderColumnOpenClose), "");
}

TEST_F(SimulatorView, TranslatesWhatIsTypedAndStillReadsIt) {
  Edit(0, kOrderColumnSymbol, "700");
  Edit(0, kOrderColumnSide, "Sell");
  Edit(0, kOrderColumnOpenClose, "Open");
  Edit(0, kOrderColumnStatus, "Completed");
  Edit(1, kOrderColumnSymbol, "700");
  Grid().SetValue(1, kOrderColumnSide, TVariant::Text("Bought"));
  Grid().OpenEditor(0, kOrderColumnSide);
  FHost.Language().SetLanguage(kLanguageSimplifiedChinese);
  FFrame->SetLanguage(kLanguageSimplifiedChinese);
  EXPECT_EQ(Grid().DropDownEditor(), "");
  EXPECT_THAT(Grid().GetEditor()->GetItems(),
              ElementsAre(GetResourceText("Res_Side_Buy"), GetResourceText("Res_Side_Sell")));
  Grid().ChooseInEditor(1);
  Grid().CommitEditor();
  EXPECT_EQ(Cell(1, kOrderColumnSide), "Bought");
  EXPECT_NE(Cell(0, kOrderColumnSide), "Sell");
  EXPECT_EQ(FFrame->btnClear->GetCaption(), GetResourceText("Res_Clear"));
  FFrame->btnSimulateClick();
  const auto& orders = FFrame->GetSimulatorControl()->GetSimulateOrders();
  ASSERT_EQ(orders.size(), 1U) << "up to the row without a side";
  EXPECT_EQ(orders[0]->FSide, kSideSell);
  EXPECT_EQ(orders[0]->FOpenClose, kOpenCloseOpen);
  EXPECT_EQ(orders[0]->FStatus, kStatusCompleted);
}

TEST_F(SimulatorView, SavesTheLayoutOfItsGridButReadsOnlyThatOfItsTreeBack) {
  std::string layout;
  FFrame->GetLayoutData(layout);
  const std::string own = TEditorManager::GetInstance().GetGridColumnLayout(Grid(), FFrame->FColList);
  EXPECT_THAT(layout, HasSubstr("OrderColList=" + own));
  std::string narrow = own;
  for (std::size_t at; (at = narrow.find(",100,")) != std::string::npos;) narrow.replace(at, 5, ",77,");
  layout.replace(layout.find(own), own.size(), narrow);
  layout.replace(layout.find("CashBalance,1"), 13, "CashBalance,0");
  auto& channels = TCustomGlobalChannelManager::GetInstance();
  const auto width = [this] { return Grid().FindColumn(kOrderColumnPrice)->FWidth; };
  FFrame->SetLayoutData(layout);
  channels.PostChannelData(kChannelMainFormShown, "", nullptr, 0);
  EXPECT_EQ(width(), 100);
  FFrame->GetLayoutData(layout);
  EXPECT_THAT(layout, HasSubstr("CashBalance,0"));
  FFrame->FLayoutColumn = narrow;
  channels.PostChannelData(kChannelLayoutLoaded, "", nullptr, 0);
  EXPECT_EQ(width(), 77);
}

TEST_F(SimulatorView, MarksChangedFiguresAndShowsTheRealOnesUntilItIsCleared) {
  FAccounts.FSimulations["A1/K1"] = "SIM";
  std::string caption;
  EXPECT_TRUE(FFrame->GetViewCaption(caption));
  EXPECT_EQ(caption, "Margin Simulator - A1");
  Edit(0, kOrderColumnSymbol, "700");
  Edit(0, kOrderColumnQuantity, "0");
  FFrame->btnSimulate->Click();
  EXPECT_EQ(FHost.Messages().size(), 1U);
  EXPECT_EQ(FFrame->GetSimulatorControl()->GetAccountInfoMode(), TAccountInfoMode::aimNormal);
  EXPECT_EQ(Grid().GetProperties(0, *Grid().FindColumn(kOrderColumnValidity)), FFrame->epiInvalidInput);
  Edit(0, kOrderColumnQuantity, "100");
  EXPECT_EQ(Grid().GetProperties(0, *Grid().FindColumn(kOrderColumnValidity)), FFrame->epiValidInput);
  EXPECT_EQ(Style(0), "sSame");
  FFrame->btnSimulate->Click();
  EXPECT_EQ(Style(0), "sDiff");

  auto& tree = *FFrame->AccountInfoTree;
  tree.SetWidth(200);
  const auto hover = [&](std::size_t row, std::int32_t x) {
    const TRect cell = tree.GetCellRect(Node(row), *tree.FindColumn(kCellValue));
    tree.MouseMove({x, cell.FTop + 1});
    return FFrame->HintCtrl->IsShowing() ? FFrame->HintCtrl->GetHintText() : "";
  };
  EXPECT_EQ(hover(0, 10), "") << "the captions have no figure";
  EXPECT_EQ(hover(0, 150), "Before Simulation: 1,000.00");
  for (int i = 0; i < 10; ++i) Tick();
  EXPECT_EQ(hover(0, 150), "") << "once";
  tree.MouseLeave();
  EXPECT_EQ(hover(0, 150), "Before Simulation: 1,000.00");

  Edit(1, kOrderColumnSymbol, "700");
  Edit(1, kOrderColumnQuantity, "0");
  FFrame->btnSimulate->Click();
  EXPECT_EQ(Style(0), "sDiff") << "the simulation before stays";
  EXPECT_EQ(FFrame->sDiff->GetColor(), 255U);
  SetConfig("coMarginSimulateDiffBgColor", "0x00FF00", "Light");
  EXPECT_EQ(FFrame->sDiff->GetColor(), 0x00FF00U);
  FFrame->btnClear->Click();
  EXPECT_EQ(Style(0), "sSame");
  EXPECT_EQ(Grid().GetRecordCount(), 1);
  EXPECT_EQ(Row(0), "|||||||");
  FFrame->btnSimulate->Click();
  EXPECT_EQ(FHost.Messages().back(), GetResourceText("Res_NoOrderSimulate"));
}

TEST_F(SimulatorView, IsInTheMenuOfThoseWhoMaySimulate) {
  TIMarginSimulator plugin(nullptr);
  EXPECT_TRUE(plugin.GetIsVisible());
  EXPECT_EQ(plugin.GetName(), "MarginSimultorView_621");
  SetConfig("Function_MarginSim", "N");
  EXPECT_FALSE(plugin.GetIsVisible());
  std::int32_t width = 0;
  EXPECT_TRUE(dynamic_cast<TViewFrame&>(*plugin.OpenNewInstance()).GetWidth(width));
  EXPECT_EQ(width, 800);
}

}  // namespace
}  // namespace margindesk
