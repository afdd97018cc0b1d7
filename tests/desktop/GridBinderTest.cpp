// A person at the headers of a grid.
#include <QHeaderView>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

#include "terminal/desktop/KeptColumns.h"
#include "terminal/desktop/binders/GridBinder.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

// A form with a grid, as a view has it.
struct TGridForm {
  TGridForm() {
    std::vector<TGridColumn> columns(3);
    for (std::int32_t tag = 0; tag < 3; ++tag) {
      columns[static_cast<std::size_t>(tag)].FTag = tag;
      columns[static_cast<std::size_t>(tag)].FCaption = std::string(1, static_cast<char>('A' + tag));
      columns[static_cast<std::size_t>(tag)].FWidth = 80;
    }
    FGrid.SetColumns(columns);
    FGrid.SetRecordCount(3);
    for (const std::int32_t record : {0, 1, 2}) FGrid.SetValue(record, 1, TVariant::Integer(9 - record));
    new TGridBinder(FGrid, FView);
    FView.resize(500, 200);
    FView.show();
  }
  QHeaderView& Header() { return *FView.horizontalHeader(); }
  void Drag(int from, int to) {
    QWidget* header = Header().viewport();
    QTest::mousePress(header, Qt::LeftButton, {}, {from, 5});
    for (const int x : {(from + to) / 2, to}) {
      QMouseEvent move(QEvent::MouseMove, QPointF(x, 5), header->mapToGlobal(QPointF(x, 5)), Qt::NoButton,
                       Qt::LeftButton, Qt::NoModifier);
      QApplication::sendEvent(header, &move);
    }
    QTest::mouseRelease(header, Qt::LeftButton, {}, {to, 5});
  }

  TFrame FFrame{nullptr, "frame"};
  TGridTableView FGrid{&FFrame, "grid"};
  QTableView FView;
};

TEST(GridBinder, ColumnsTakeThePlaceSizeAndSortingThatThePersonGivesThemAndComeBackSo) {
  const TTestHost host;
  TGridForm form;
  form.Drag(79, 119);
  EXPECT_EQ(form.FGrid.FindColumn(0)->FWidth, 120);
  EXPECT_EQ(form.FGrid.FindColumn(1)->FWidth, 80) << "nobody sized it";
  form.Drag(240, 20);
  EXPECT_EQ(form.FGrid.GetColumns().front().FTag, 2);
  EXPECT_EQ(form.FGrid.GetDisplayOrder().front(), 0) << "a drag is no click";
  QTest::qWait(80);
  QTest::mouseClick(form.Header().viewport(), Qt::LeftButton, {}, {240, 5});
  EXPECT_EQ(form.FGrid.GetDisplayOrder().front(), 2);

  TGridForm later;
  ShowKeptColumns(later.FFrame, "gone=1,1,80,N,-1; grid=damaged");
  EXPECT_EQ(later.FGrid.GetColumns().front().FTag, 0);
  ShowKeptColumns(later.FFrame, ReadKeptColumns(form.FFrame));
  QTest::qWait(80);
  EXPECT_EQ(later.FView.model()->headerData(0, Qt::Horizontal).toString(), "C");
  EXPECT_EQ(later.FView.columnWidth(1), 120);
  EXPECT_EQ(later.FGrid.GetDisplayOrder().front(), 2);
  EXPECT_EQ(later.Header().sortIndicatorSection(), 2);
}

TEST(GridBinder, ARowIsOpenedOnceByADoubleClickOrEnter) {
  const TTestHost host;
  TGridForm form;
  struct TCounter {
    void Count() { FRows.push_back(FGrid.GetFocusedRecordIndex()); }
    TGridTableView& FGrid;
    std::vector<std::int32_t> FRows;
  } counter{form.FGrid, {}};
  form.FGrid.SetOnCellDblClick(MakeEvent<&TCounter::Count>(&counter));
  const QPoint second = form.FView.visualRect(form.FView.model()->index(1, 0)).center();
  QTest::mouseClick(form.FView.viewport(), Qt::LeftButton, {}, second);
  EXPECT_TRUE(counter.FRows.empty());
  QTest::mouseDClick(form.FView.viewport(), Qt::LeftButton, {}, second);
  QTest::keyClick(&form.FView, Qt::Key_Down);
  QTest::keyClick(&form.FView, Qt::Key_Return);
  EXPECT_EQ(counter.FRows, (std::vector<std::int32_t>{1, 2}));
  form.FGrid.SetFocusedRecordIndex(0);
  form.FGrid.SetSelection({0});
  EXPECT_EQ(counter.FRows.size(), 2U);
}

}  // namespace
}  // namespace margindesk
