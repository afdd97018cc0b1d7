#pragma once

#include <QAbstractItemView>
#include <QMenu>

namespace margindesk {

// What a tree or a grid shows as CSV (RFC 4180): a line of captions where there are any, then every row that
// is shown, those of a tree in their order with two blanks before the first field for each level.
QString MakeCsv(const QAbstractItemView& view);

// Adds "copy cell", "copy row" (of all selected rows) and "export" to a menu of a tree or grid.
void AddExportActions(QAbstractItemView& view, QMenu& menu);

}  // namespace margindesk
