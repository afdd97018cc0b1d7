#pragma once

#include <QTableView>
#include <QTimer>

#include "controls/Grid.h"
#include "terminal/desktop/binders/CellDelegate.h"
#include "terminal/desktop/binders/GridModel.h"

namespace margindesk {

// Shows a grid. Changes of the grid are shown together, twenty times a second at most, and only what is on
// the screen is read. The person's sorting, column sizes and order, focus, selection and double clicks reach
// the grid.
class TGridBinder : public QObject {
 public:
  TGridBinder(TGridTableView& grid, QTableView& view);
  ~TGridBinder() override;

  TGridModel& Model() noexcept { return FModel; }
  QTableView& View() noexcept { return FView; }
  TGridTableView& Grid() noexcept { return FGrid; }

  void Refresh();

 private:
  void GridUpdated();
  void ShowColumns();
  void ShowFocus();
  void TakeColumns();
  void TakeSelection();

  TGridTableView& FGrid;
  QTableView& FView;
  TGridModel FModel;
  TCellDelegate FDelegate;
  QTimer FTimer;
  bool FRefreshing = false;
};

}  // namespace margindesk
