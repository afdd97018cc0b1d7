#include "terminal/desktop/binders/GridPaste.h"

#include <QStringList>

#include "controls/SpinEditProperties.h"
#include "terminal/desktop/Text.h"
#include "terminal/desktop/binders/CellNumber.h"

namespace margindesk {

namespace {

// The lines of a text; what a spreadsheet copies ends in a line end of its own.
QStringList SplitLines(QString text) {
  text.remove(u'\r');
  if (text.endsWith(u'\n')) text.chop(1);
  return text.split(u'\n');
}

bool Paste(TGridTableView& grid, const TGridModel& model, const QModelIndex& cell, const QString& text) {
  const TGridColumn& column = model.GetColumn(cell.column());
  const std::int32_t record = model.GetRecord(cell.row());
  std::string typed = FromQt(text);
  if (dynamic_cast<const TSpinEditProperties*>(grid.GetProperties(record, column)) != nullptr) {
    typed = RemoveGrouping(typed);
  }
  return grid.EditCell(record, column.FTag, TVariant::Text(std::move(typed))).empty();
}

}  // namespace

bool HoldsCells(const QString& text) { return text.contains(u'\t') || SplitLines(text).size() > 1; }

TPasteEnd PasteCells(TGridTableView& grid, const TGridModel& model, const QModelIndex& from,
                     const QString& text, const std::function<void()>& refresh) {
  int row = from.row();
  const int firstColumn = from.column();
  for (const QString& line : SplitLines(text)) {
    int column = firstColumn;
    for (const QString& field : line.split(u'\t')) {
      const QModelIndex cell = model.index(row, column++);
      const QString value = field.trimmed();
      if (!cell.isValid() || value.isEmpty() || !model.flags(cell).testFlag(Qt::ItemIsEditable)) continue;
      if (!Paste(grid, model, cell, value)) return {row, column - 1, value};
      refresh();
    }
    ++row;
  }
  return {};
}

}  // namespace margindesk
