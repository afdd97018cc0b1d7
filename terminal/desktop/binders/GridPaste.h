#pragma once

#include <QString>
#include <functional>

#include "controls/GridTableView.h"
#include "terminal/desktop/binders/GridModel.h"

namespace margindesk {

// Whether a text holds more than one cell of a spreadsheet.
bool HoldsCells(const QString& text);

// The first cell that does not take what is pasted; a row of -1 when all was taken.
struct TPasteEnd {
  int FRow = -1;
  int FColumn = -1;
  QString FText;
};

// Puts lines of cells apart by tabs into a grid's cells, from one on to the right and downward, as if they
// were typed. An empty cell leaves what is there, and so does one over a column that cannot be edited.
// `refresh` brings the model up to date: a row may make room for the next one.
TPasteEnd PasteCells(TGridTableView& grid, const TGridModel& model, const QModelIndex& from,
                     const QString& text, const std::function<void()>& refresh);

}  // namespace margindesk
