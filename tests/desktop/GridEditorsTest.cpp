// A person at the order grid: with the keys as fast as they come, and with the mouse.
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QVBoxLayout>

#include <gmock/gmock.h>

#include "controls/ComboBoxProperties.h"
#include "controls/PopupEditProperties.h"
#include "controls/SpinEditProperties.h"
#include "host/services/SymbolList.h"
#include "model/contract/BaseMarketData.h"
#include "terminal/desktop/binders/CellNumber.h"
#include "terminal/desktop/binders/GridBinder.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

constexpr std::int32_t kSymbol = 1;
constexpr std::int32_t kSide = 2;
constexpr std::int32_t kPrice = 3;

THostContents MakeMarket() {
  TTestBook book;
  book.Currency("HKD", 1);
  for (const char* symbol : {"00005", "00700", "HSIF7"}) book.Product(symbol, "HKD", 10);
  return book;
}

// An order form in small: a row follows the last one when that gets a symbol, as in the real one.
class GridEditors : public testing::Test {
 protected:
  GridEditors() : FForm(nullptr), FPanel(&FForm, FHost.Data(), MakeHandler<&GridEditors::Select>(this)) {
    FSide.FItems = {"Buy", "Sell"};
    FSide.FAllowEmpty = false;
    FSpin.FIncrement = 0.1;
    FSpin.FMaximum = 1000;
    FSpin.FOnChange = MakeEvent<&GridEditors::PriceChanged>(this);
    FPopup.FPopupControl = &FPanel;
    std::vector<TGridColumn> columns(4);
    TEditProperties* const properties[] = {nullptr, &FPopup, &FSide, &FSpin};
    for (std::int32_t tag = 0; tag < 4; ++tag) {
      TGridColumn& column = columns[static_cast<std::size_t>(tag)];
      column.FTag = tag;
      column.FWidth = tag == 0 ? 30 : 100;
      column.FProperties = properties[tag];
      column.FAllowEditing = column.FShowEditButtons = tag != 0;
      column.FAllowSorting = false;
    }
    columns[kSymbol].FOnValidate = MakeEvent<&GridEditors::SymbolGiven>(this);
    FGrid.SetColumns(columns);
    TGridOptions options;
    options.FColumnAutoWidth = true;
    FGrid.SetOptions(options);
    FGrid.SetRecordCount(1);
    auto* layout = new QVBoxLayout(&FWindow);
    FView = new QTableView(&FWindow);
    FBinder = new TGridBinder(FGrid, *FView);
    FButton = new QPushButton(&FWindow);
    layout->addWidget(FView);
    layout->addWidget(FButton);
    FWindow.resize(700, 300);
    FWindow.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&FWindow));
    GoTo(0, kSymbol);
  }

  void SymbolGiven(TVariant& value, std::string& refusal) {
    FSymbols.push_back(value.AsText());
    if (value.AsText() == "NOSUCH") refusal = "no such symbol";
    if (refusal.empty() && FGrid.GetFocusedRecordIndex() == FGrid.GetRecordCount() - 1)
      FGrid.SetRecordCount(FGrid.GetRecordCount() + 1);
  }
  void PriceChanged(TCellEditor& /*editor*/) { ++FPriceChanges; }
  void Select(void* /*sender*/, void* data) {
    FGrid.CancelEditor();
    FGrid.SetValue(FGrid.GetFocusedRecordIndex(), kSymbol,
                   TVariant::Text(static_cast<TCustomMarketData*>(data)->GetSymbol().Text()));
  }

  void GoTo(int row, int column) {
    FView->setFocus();
    FView->setCurrentIndex(FView->model()->index(row, column));
  }
  // Keys go where the window has the focus, as from a keyboard.
  void Type(const char* text) {
    for (const char* key = text; *key != '\0'; ++key) Press(*key == '\t' ? Qt::Key_Tab : Qt::Key(0), *key);
  }
  void Press(Qt::Key key, char text = 0, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWidget* popup = QApplication::activePopupWidget();
    QWidget* target = popup == nullptr ? QApplication::focusWidget() : popup->focusWidget();
    ASSERT_NE(target, nullptr);
    key == Qt::Key(0) ? QTest::keyClick(target, text) : QTest::keyClick(target, key, modifiers);
  }
  void Click(int row, int column, bool upperHalf = true) {
    const QRect cell = FView->visualRect(FView->model()->index(row, column));
    QTest::mouseClick(FView->viewport(), Qt::LeftButton, {},
                      {cell.right() - 5, upperHalf ? cell.top() + 3 : cell.bottom() - 3});
  }
  std::string Cell(std::int32_t record, std::int32_t tag) { return FGrid.GetValue(record, tag).AsText(); }
  std::string Shown(int row, int column) {
    return FView->model()->index(row, column).data().toString().toStdString();
  }
  QLineEdit* Line() { return qobject_cast<QLineEdit*>(QApplication::focusWidget()); }

  TTestHost FHost{MakeMarket()};
  TComponent FForm;
  TSymbolListPanel FPanel;
  TPopupEditProperties FPopup{nullptr};
  TComboBoxProperties FSide{nullptr};
  TSpinEditProperties FSpin{nullptr};
  TGridTableView FGrid{nullptr};
  std::vector<std::string> FSymbols;
  int FPriceChanges = 0;
  QWidget FWindow;  // goes before the models
  QTableView* FView = nullptr;
  QPushButton* FButton = nullptr;
  TGridBinder* FBinder = nullptr;
};

TEST_F(GridEditors, WhatIsTypedAsFastAsPossibleReachesEveryCellOnceAndWhole) {
  Type("00700\ts\t12.5\t00005\tb\t.5\t");
  EXPECT_THAT(FSymbols, testing::ElementsAre("00700", "00005"));
  EXPECT_EQ(Cell(0, kSymbol) + Cell(0, kSide) + Cell(0, kPrice), "00700Sell12.5");
  EXPECT_EQ(Cell(1, kSymbol) + Cell(1, kSide) + Cell(1, kPrice), "00005Buy0.5");
  EXPECT_EQ(FView->currentIndex(), FView->model()->index(2, kSymbol));
  EXPECT_EQ(Shown(1, kPrice), "0.5") << "at once, not with the next picture";
}

TEST_F(GridEditors, WhatIsTypedBesideTheCellsToEditGoesToTheNextOfThem) {
  FView->setCurrentIndex({});
  Type("00700\t");
  GoTo(1, 0);
  Type("00005\t");
  EXPECT_EQ(Cell(0, kSymbol) + Cell(1, kSymbol), "0070000005");
}

TEST_F(GridEditors, EnterGoesToTheNextRowAndEscapeLeavesTheCellAsItWas) {
  Type("00700");
  Press(Qt::Key_Return);
  EXPECT_EQ(FView->currentIndex().row(), 1);
  Type("00005");
  Press(Qt::Key_Escape);
  EXPECT_EQ(Cell(1, kSymbol), "");
  EXPECT_EQ(FGrid.GetEditor(), nullptr);
  EXPECT_EQ(QApplication::focusWidget(), FView);
  FView->setCurrentIndex(FView->model()->index(0, kSymbol));
  Press(Qt::Key_Backspace);
  Press(Qt::Key_Tab);
  EXPECT_EQ(Cell(0, kSymbol), "");
}

TEST_F(GridEditors, ANumberStaysAsItIsTypedUntilItIsCommittedAndSpinsByKeyButtonAndWheel) {
  GoTo(0, kPrice);
  Type("1.");
  ASSERT_NE(Line(), nullptr);
  EXPECT_EQ(Line()->text(), "1.");
  Type("20");
  EXPECT_EQ(Line()->text(), "1.20");
  Press(Qt::Key_Up);
  Press(Qt::Key_Up);
  EXPECT_EQ(Line()->text(), "1.4") << "without the dust of binary fractions";
  Press(Qt::Key_Return);
  EXPECT_NEAR(FGrid.GetValue(0, kPrice).AsFloat(), 1.4, 1e-9);
  Click(0, kPrice, false);
  EXPECT_EQ(Line()->text(), "1.3") << "a click on the arrow of a cell that was not being edited";
  const QPoint inside = Line()->rect().center();
  QWheelEvent wheel(inside, Line()->mapToGlobal(inside), {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
  QApplication::sendEvent(Line(), &wheel);
  EXPECT_EQ(Line()->text(), "1.4");
}

TEST_F(GridEditors, ARefusedValueKeepsItsEditorWithTheReasonAndTheClickElsewhereDoesNotHappen) {
  int clicks = 0;
  QObject::connect(FButton, &QPushButton::clicked, FButton, [&] {
    ++clicks;
    EXPECT_EQ(FGrid.GetEditor(), nullptr) << "committed before";
  });
  const auto click = [this] { QTest::mouseClick(FButton, Qt::LeftButton); };
  const auto reason = [this]() -> std::string {
    const auto* label = FWindow.findChild<QLabel*>("cellRefusal");
    return label == nullptr || !label->isVisible() ? "" : label->text().toStdString();
  };
  GoTo(0, kPrice);
  for (const char* wrong : {"abc", "-", "1001"}) {
    Type(wrong);
    click();
    EXPECT_EQ(clicks, 0) << wrong;
    EXPECT_NE(reason(), "") << wrong;
    ASSERT_NE(Line(), nullptr) << wrong;
    EXPECT_EQ(Line()->accessibleDescription().toStdString(), reason()) << wrong;
    Line()->selectAll();
  }
  Type("7");
  EXPECT_EQ(reason(), "");
  click();
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(Cell(0, kPrice), "7");
  GoTo(0, kSymbol);
  Type("NOSUCH\t");
  EXPECT_EQ(reason(), "no such symbol");
  EXPECT_EQ(FGrid.GetEditor()->GetColumnTag(), kSymbol);
}

TEST_F(GridEditors, ASymbolIsSearchedForAndChosenFromTheListThatDropsDown) {
  GoTo(0, kSymbol);
  Type("0");
  Press(Qt::Key_Down, 0, Qt::AltModifier);
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(FPanel.GetHits().size(), 2U) << "what stands in the cell is searched for";
  Press(Qt::Key_Down);
  Press(Qt::Key_Return);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(Cell(0, kSymbol), "00700");
  EXPECT_EQ(FGrid.GetEditor(), nullptr);
  EXPECT_EQ(FView->currentIndex().column(), kSide) << "on to the next cell";
  Click(0, kSymbol);
  Type("hsi");
  Press(Qt::Key_Escape);
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(FPanel.GetVisible());
  EXPECT_EQ(Cell(0, kSymbol), "00700");
  EXPECT_NE(FGrid.GetEditor(), nullptr) << "the list alone is closed";
}

TEST_F(GridEditors, CellsOfASpreadsheetArePastedUpToTheOneThatIsRefused) {
  QApplication::clipboard()->setText("00700\tSell\t12.5\r\n00005\t\t1,000\r\nHSIF7\tHold\t3\r\n");
  Type("9");  // an editor that is open gives way
  Press(Qt::Key_V, 0, Qt::ControlModifier);
  EXPECT_THAT(FSymbols, testing::ElementsAre("00700", "00005", "HSIF7"));
  EXPECT_EQ(Cell(0, kSymbol) + Cell(0, kSide) + Cell(0, kPrice), "00700Sell12.5");
  EXPECT_EQ(Cell(1, kSymbol) + Cell(1, kPrice), "000051000");
  EXPECT_EQ(Cell(2, kPrice), "");
  ASSERT_NE(FWindow.findChild<QLabel*>("cellRefusal"), nullptr);
  EXPECT_EQ(FGrid.GetEditor()->GetColumnTag(), kSide);
}

TEST_F(GridEditors, AChoiceIsMadeInTheListOfTheCell) {
  Click(0, kSide);
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  Press(Qt::Key_Down);
  Press(Qt::Key_Return);
  EXPECT_EQ(Cell(0, kSide), "Sell");
  EXPECT_EQ(FGrid.GetEditor(), nullptr);
}

TEST_F(GridEditors, WhatTheProgramWritesIsShownAndIsNoPersons) {
  const int before = FPriceChanges;
  FGrid.SetValue(0, kPrice, TVariant::Float(8));
  FGrid.SetValue(0, kSymbol, TVariant::Text("HSIF7"));
  QTest::qWait(80);
  EXPECT_EQ(Shown(0, kPrice) + Shown(0, kSymbol), "8HSIF7");
  EXPECT_EQ(FPriceChanges, before);
  EXPECT_TRUE(FSymbols.empty());
  FGrid.OpenEditor(0, kPrice);
  FGrid.CancelEditor();
  GoTo(0, kPrice);
  Type("5");
  FGrid.GetEditor()->SetValue(TVariant::Float(6));
  FGrid.SetValue(0, kSide, TVariant::Text("Buy"));
  EXPECT_EQ(Line()->text(), "6");
  FGrid.SetRecordCount(0);
  EXPECT_EQ(QApplication::focusWidget(), FView) << "the editor goes with its row";
}

TEST_F(GridEditors, TheColumnsFillTheView) {
  int width = 0;
  for (int column = 0; column < 4; ++column) width += FView->columnWidth(column);
  EXPECT_EQ(width, FView->viewport()->width());
  EXPECT_EQ(FGrid.GetColumns()[1].FWidth, 100) << "which is no wish of the person's";
}

TEST(CellNumber, CommasSetThousandsApartOrAreNoPartOfANumber) {
  EXPECT_EQ(RemoveGrouping("-1,234,567.5"), "-1234567.5");
  for (const char* text : {"1,23", ",123", "12,3456", "1.5,000", "a,000"})
    EXPECT_EQ(RemoveGrouping(text), text);
}

}  // namespace
}  // namespace margindesk
