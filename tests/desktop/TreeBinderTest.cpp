// A person at a tree, and how much of it one changed figure touches.
#include <QHelpEvent>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <QTreeView>

#include <gtest/gtest.h>

#include "terminal/desktop/CellExport.h"
#include "terminal/desktop/Text.h"
#include "terminal/desktop/binders/TreeBinder.h"
#include "tests/desktop/FigureTree.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

constexpr int kFrame = 150;  // milliseconds in which a change is certainly shown

struct TreeBinder : testing::Test {
  TreeBinder() {
    new TTreeBinder(FFigures.FTree, FView);
    FView.resize(500, 300);
    FView.show();
  }

  TTestHost FHost;
  TFigureTree FFigures;
  QTreeView FView;
};

TEST_F(TreeBinder, OneChangedFigureChangesOneCell) {
  QSignalSpy changes(FView.model(), &QAbstractItemModel::dataChanged);
  QSignalSpy resets(FView.model(), &QAbstractItemModel::modelReset);
  FFigures.Figures().SetText(TFigureRows::kCurrencies + 1, "-5");
  FFigures.Figures().SetText(TFigureRows::kCurrencies + 1, "-6");
  QTest::qWait(kFrame);
  ASSERT_EQ(changes.count(), 1);
  EXPECT_EQ(resets.count(), 0);
  const auto first = changes[0][0].toModelIndex();
  EXPECT_EQ(first, changes[0][1].toModelIndex());
  EXPECT_EQ(first, FView.model()->index(1, 1));
  EXPECT_EQ(first.data().toString(), "-6");
  FFigures.Figures().SetText(1, "under a closed row");
  QTest::qWait(kFrame);
  EXPECT_EQ(changes.count(), 1);
}

TEST_F(TreeBinder, OpeningARowReachesTheTreeAndWhatTheProgramOpensIsShown) {
  FView.setFocus();
  FView.setCurrentIndex(FView.model()->index(0, 0));
  QTest::keyClick(&FView, Qt::Key_Right);
  const auto& nodes = FFigures.FTree.GetNodes();
  EXPECT_TRUE(FFigures.FTree.IsExpanded(*nodes[0]));
  QTest::qWait(kFrame);
  EXPECT_EQ(FView.model()->index(0, 1, FView.model()->index(0, 0)).data().toString(), "1,234,567.89");
  FFigures.FTree.SetExpanded(*nodes[TFigureRows::kCurrencies + 1], true);
  QTest::qWait(kFrame);
  EXPECT_TRUE(FView.isExpanded(FView.model()->index(1, 0)));
  QTest::keyClick(&FView, Qt::Key_Left);
  EXPECT_FALSE(FFigures.FTree.IsExpanded(*nodes[0]));
}

struct THovered {
  void Over(std::int32_t x, std::int32_t y) {
    FNode = FTree.HitTest({x, y}).FNode;
    FColumn = FTree.HitTest({x, y}).FColumn->FTag;
  }
  TVirtualTree& FTree;
  const TVirtualTreeNode* FNode = nullptr;
  std::int32_t FColumn = -1;
};

TEST_F(TreeBinder, AHintIsAskedForWithTheMouseAndTheKeyboardAndOutlivesTheViewsOwn) {
  THovered hovered{FFigures.FTree};
  FFigures.FTree.SetOnMouseMove(MakeEvent<&THovered::Over>(&hovered));
  const auto& nodes = FFigures.FTree.GetNodes();
  const QPoint third = FView.visualRect(FView.model()->index(2, 0)).center();
  QTest::mouseMove(FView.viewport(), third);
  EXPECT_EQ(hovered.FNode, nodes[2 * (TFigureRows::kCurrencies + 1)]);
  FView.setCurrentIndex(FView.model()->index(1, 1));
  QTest::keyClick(&FView, Qt::Key_F1, Qt::ShiftModifier);
  EXPECT_EQ(hovered.FNode, nodes[TFigureRows::kCurrencies + 1]);
  EXPECT_EQ(hovered.FColumn, 0);
  QTest::keyClick(&FView, Qt::Key_F1, Qt::ShiftModifier);
  EXPECT_EQ(hovered.FColumn, 1) << "again: of the value";
  QToolTip::showText(FView.mapToGlobal(third), "what the form tells", &FView);
  QHelpEvent help(QEvent::ToolTip, third, FView.viewport()->mapToGlobal(third));
  QApplication::sendEvent(FView.viewport(), &help);
  EXPECT_EQ(QToolTip::text(), "what the form tells");
  QTest::qWait(500);  // longer than a hint takes to go
  EXPECT_TRUE(QToolTip::isVisible());
}

TEST_F(TreeBinder, WhatIsShownIsExportedRowByRowInTheFormThatSpreadsheetsRead) {
  FFigures.Figures().SetText(0, "按金 \"A\"\n-1,5");
  FFigures.FTree.SetExpanded(*FFigures.FTree.GetNodes()[0], true);
  QTest::qWait(kFrame);
  const QString csv = MakeCsv(FView);
  EXPECT_TRUE(csv.startsWith("Account,Value\r\nFigure 0,\"按金 \"\"A\"\"\n-1,5\"\r\n  Figure 1,"))
      << FromQt(csv);
  EXPECT_EQ(csv.count("\r\n"), 1 + TFigureRows::kFigures + TFigureRows::kCurrencies);
}

TEST_F(TreeBinder, ALargerFontMakesRoomForItself) {
  QFont font = FView.font();
  font.setPointSize(30);
  FView.setFont(font);
  QTest::qWait(kFrame);
  EXPECT_GE(FView.visualRect(FView.model()->index(0, 0)).height(), FView.fontMetrics().height());
  EXPECT_GE(FView.columnWidth(0), FView.fontMetrics().horizontalAdvance("Figure 0"));
}

}  // namespace
}  // namespace margindesk
