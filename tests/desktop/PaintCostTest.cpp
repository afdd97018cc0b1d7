// What painting costs. The figures are printed; the limits are wide enough for a busy machine.
#include <QApplication>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QStyle>
#include <QTest>
#include <QTreeView>
#include <algorithm>
#include <cstdio>
#include <functional>

#include <gtest/gtest.h>

#include "terminal/desktop/Skin.h"
#include "terminal/desktop/binders/TreeBinder.h"
#include "tests/desktop/FigureTree.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

constexpr int kRuns = 101;
constexpr double kSlack = 5;  // times the wanted cost

// The median of so many runs, in milliseconds.
double Measure(const std::function<void(int run)>& work) {
  std::vector<double> times;
  for (int run = 0; run < kRuns; ++run) {
    QElapsedTimer timer;
    timer.start();
    work(run);
    times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
  }
  std::ranges::nth_element(times, times.begin() + kRuns / 2);
  return times[kRuns / 2];
}

void Report(const char* what, double milliseconds, double wanted) {
  std::printf("%s: %.3f ms, wanted %.1f ms\n", what, milliseconds, wanted);
  EXPECT_LT(milliseconds, wanted * kSlack) << what;
}

// The terminal's own look, for as long as it lives.
struct TTerminalLook {
  TTerminalLook() { ApplySkin(*qApp, "Light", 100); }
  ~TTerminalLook() {
    QApplication::setStyle(FStyle);
    QApplication::setPalette(FPalette);
    QApplication::setFont(FFont);
  }

  const QString FStyle = QApplication::style()->name();
  const QPalette FPalette = QApplication::palette();
  const QFont FFont = QApplication::font();
};

TEST(PaintCost, AFullTreeAndOneChangedCell) {
  const TTestHost host;
  const TTerminalLook look;
  TFigureTree figures;
  QTreeView view;
  auto* binder = new TTreeBinder(figures.FTree, view);
  for (const TVirtualTreeNode* node : figures.FTree.GetNodes()) figures.FTree.SetExpanded(*node, true);
  view.resize(600, 58 * 18 + 40);  // 58 rows are seen at once
  view.show();
  QTest::qWait(100);
  ASSERT_TRUE(view.isExpanded(view.model()->index(57, 0)));
  QWidget& shown = *view.viewport();
  const QSize screen = view.size();
  view.resize(screen.width(), static_cast<int>(figures.FTree.GetNodes().size()) * 18 + 40);
  QTest::qWait(100);
  Report("full repaint, 754 rows in one picture", Measure([&](int) { shown.repaint(); }), 6);
  view.resize(screen);
  QTest::qWait(100);
  Report("full repaint, 58 of 754 rows seen", Measure([&](int) { shown.repaint(); }), 6);
  const QRect cell = view.visualRect(view.model()->index(1, 1));
  Report("one changed cell painted", Measure([&](int) { shown.repaint(cell); }), 0.5);
  // The tree tells of any change as one of everything: what changed is found by reading it all.
  const QSignalSpy changes(view.model(), &QAbstractItemModel::dataChanged);
  Report("one changed figure of 754 rows found, told and painted", Measure([&](int run) {
           figures.Figures().SetText(TFigureRows::kCurrencies + 1, std::to_string(run));
           binder->Refresh();
           shown.repaint(cell);
         }),
         6);
  EXPECT_EQ(changes.count(), kRuns);
}

TEST(PaintCost, AColumnForEveryCurrency) {
  const TTestHost host;
  const TTerminalLook look;
  TFigureTree figures;
  std::vector<TTreeColumn> columns = figures.FTree.GetColumns();
  columns.resize(1 + TFigureRows::kCurrencies, columns.back());
  figures.FTree.SetColumns(columns);
  QTreeView view;
  new TTreeBinder(figures.FTree, view);
  view.resize(1600, TFigureRows::kFigures * 18 + 40);
  view.show();
  QTest::qWait(100);
  const QRect last =
      view.visualRect(view.model()->index(TFigureRows::kFigures - 1, TFigureRows::kCurrencies));
  ASSERT_TRUE(view.viewport()->rect().contains(last.topLeft()));
  Report("full repaint, 58 rows by 12 currencies", Measure([&](int) { view.viewport()->repaint(); }), 6);
}

}  // namespace
}  // namespace margindesk
