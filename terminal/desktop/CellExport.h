#pragma once

#include <QAbstractItemView>
#include <QMenu>

namespace margindesk {

// What a tree or a grid shows as CSV: a line of captions, then every row that is shown, those of a tree in
// their order with two blanks before the first field for each level.
QString MakeCsv(const QAbstractItemView& view);

// Adds "copy cell", "copy row" and "export" to a menu of a tree or grid.
void AddExportActions(QAbstractItemView& view, QMenu& menu);

}  // namespace margindesk
