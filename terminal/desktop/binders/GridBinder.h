#pragma once

#include <QTableView>
#include <QTimer>
#include <map>

#include "controls/Grid.h"
#include "terminal/desktop/binders/CellDelegate.h"
#include "terminal/desktop/binders/GridEditors.h"
#include "terminal/desktop/binders/GridModel.h"

namespace margindesk {

// Shows a grid. Changes of the grid are shown together, twenty times a second at most, and only what is on
// the screen is read. The person's sorting, column sizes and order, focus, selection, double clicks and
// editing reach the grid.
class TGridBinder : public QObject {
 public:
  TGridBinder(TGridTableView& grid, QTableView& view);
  ~TGridBinder() override;

  bool eventFilter(QObject* watched, QEvent* event) override;

  TGridModel& Model() noexcept { return FModel; }
  QTableView& View() noexcept { return FView; }
  TGridTableView& Grid() noexcept { return FGrid; }

  void Refresh();

 private:
  void GridUpdated();
  void ShowColumns();
  void ShareWidth();
  int GetLeastWidth(int section);
  void ShowRowHeight();
  void ShowFocus();
  void ShowHint();
  void TakeColumns(int resized = -1);
  // Whether the person chose a column's width, now or in a layout that was kept.
  bool IsSized(const TGridColumn& column) const;
  void TakeSelection();

  TGridTableView& FGrid;
  QTableView& FView;
  TGridModel FModel;
  TCellDelegate FDelegate;
  TGridEditors FEditors;
  QTimer FTimer;
  std::map<std::int32_t, int> FFormWidths;   // of the columns as the form made them, by tag
  std::map<std::int32_t, int> FLeastWidths;  // pixels that columns have needed so far, by their tags
  std::int32_t FCurrentTag = -1;             // of the cell that the person is at
  bool FRefreshing = false;
};

}  // namespace margindesk
