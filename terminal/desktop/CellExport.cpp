#include "terminal/desktop/CellExport.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QHeaderView>
#include <QMessageBox>
#include <QSaveFile>
#include <QTreeView>

#include "host/book/Csv.h"
#include "terminal/desktop/HostText.h"

namespace margindesk {

namespace {

std::string MakeLine(const QAbstractItemModel& model, const QModelIndex& row, int level) {
  std::string line;
  for (int column = 0; column < model.columnCount(row.parent()); ++column) {
    if (column > 0) line += ',';
    const std::string text = FromQt(model.index(row.row(), column, row.parent()).data().toString());
    AppendCsvField(line, column == 0 ? std::string(static_cast<std::size_t>(2 * level), ' ') + text : text);
  }
  return line;
}

void AddRows(const QAbstractItemView& view, const QModelIndex& parent, int level, std::string& csv) {
  const auto* tree = qobject_cast<const QTreeView*>(&view);
  const QAbstractItemModel& model = *view.model();
  for (int row = 0; row < model.rowCount(parent); ++row) {
    const QModelIndex index = model.index(row, 0, parent);
    csv.append(MakeLine(model, index, level)).append("\n");
    if (tree != nullptr && tree->isExpanded(index)) AddRows(view, index, level + 1, csv);
  }
}

QString MakeTabbedRow(const QModelIndex& index) {
  QStringList texts;
  for (int column = 0; column < index.model()->columnCount(index.parent()); ++column) {
    texts << index.siblingAtColumn(column).data().toString();
  }
  return texts.join(u'\t');
}

void Export(QAbstractItemView& view) {
  const QString name = QFileDialog::getSaveFileName(
      &view, HostText("Desktop_Export"), QStringLiteral("export.csv"), QStringLiteral("CSV (*.csv)"));
  if (name.isEmpty()) return;
  QSaveFile file(name);
  const QByteArray csv = MakeCsv(view).toUtf8();
  if (!file.open(QIODevice::WriteOnly) || file.write(csv) != csv.size() || !file.commit()) {
    QMessageBox::warning(&view, HostText("Desktop_Export"),
                         QStringLiteral("%1: %2").arg(name, file.errorString()));
  }
}

}  // namespace

QString MakeCsv(const QAbstractItemView& view) {
  std::string csv;
  const QAbstractItemModel& model = *view.model();
  for (int column = 0; column < model.columnCount(); ++column) {
    if (column > 0) csv += ',';
    AppendCsvField(csv, FromQt(model.headerData(column, Qt::Horizontal).toString()));
  }
  csv += '\n';
  AddRows(view, {}, 0, csv);
  return ToQt(csv);
}

void AddExportActions(QAbstractItemView& view, QMenu& menu) {
  const QModelIndex current = view.currentIndex();
  const auto copy = [](const QString& text) { QApplication::clipboard()->setText(text); };
  QAction* cell = menu.addAction(HostText("Desktop_CopyCell"), &view,
                                 [copy, current] { copy(current.data().toString()); });
  QAction* row =
      menu.addAction(HostText("Desktop_CopyRow"), &view, [copy, current] { copy(MakeTabbedRow(current)); });
  cell->setEnabled(current.isValid());
  row->setEnabled(current.isValid());
  menu.addAction(HostText("Desktop_Export"), &view, [&view] { Export(view); });
}

}  // namespace margindesk
