#include "terminal/desktop/CellExport.h"

#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QFileDialog>
#include <QHeaderView>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTreeView>
#include <algorithm>

#include "host/book/Csv.h"
#include "model/contract/MessageBoxCtrl.h"
#include "terminal/desktop/HostText.h"

namespace margindesk {

namespace {

constexpr const char* kLineEnd = "\r\n";
// Without it a spreadsheet takes Chinese captions for another encoding.
constexpr const char* kByteOrderMark = "\xEF\xBB\xBF";

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
    csv.append(MakeLine(model, index, level)).append(kLineEnd);
    if (tree != nullptr && tree->isExpanded(index)) AddRows(view, index, level + 1, csv);
  }
}

// The rows that are selected, else the one of the current cell: a line each, cells apart by tabs.
QString MakeTabbedRows(const QAbstractItemView& view) {
  QModelIndexList rows = view.selectionModel()->selectedRows();
  if (rows.isEmpty()) rows << view.currentIndex();
  std::ranges::sort(rows, {}, [](const QModelIndex& index) { return index.row(); });
  QStringList lines;
  for (const QModelIndex& row : rows) {
    QStringList texts;
    for (int column = 0; column < row.model()->columnCount(row.parent()); ++column) {
      texts << row.siblingAtColumn(column).data().toString();
    }
    lines << texts.join(u'\t');
  }
  return lines.join(u'\n');
}

// The caption of the view around it.
QString MakeFileName(const QAbstractItemView& view) {
  const QWidget* dock = view.parentWidget();
  while (dock != nullptr && qobject_cast<const QDockWidget*>(dock) == nullptr) dock = dock->parentWidget();
  QString name = dock == nullptr ? view.objectName() : dock->windowTitle();
  return name.replace(u'/', u'-') + QStringLiteral(".csv");
}

void Export(QAbstractItemView& view) {
  const QString csv = MakeCsv(view);  // as it was asked for, whatever changes while the name is chosen
  QFileDialog dialog(view.window(), HostText("Desktop_Export"),
                     QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
                     QStringLiteral("CSV (*.csv)"));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(QStringLiteral("csv"));
  dialog.selectFile(MakeFileName(view));
  if (dialog.exec() != QDialog::Accepted) return;
  const QString name = dialog.selectedFiles().value(0);
  QSaveFile file(name);
  const QByteArray bytes = kByteOrderMark + csv.toUtf8();
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
    TCustomMessageBoxCtrl::GetInstance().ShowMessage(FromQt(name + u'\n' + file.errorString()));
  }
}

}  // namespace

QString MakeCsv(const QAbstractItemView& view) {
  std::string csv;
  const QAbstractItemModel& model = *view.model();
  bool captions = false;  // a tree may have none
  for (int column = 0; column < model.columnCount(); ++column) {
    const QString caption = model.headerData(column, Qt::Horizontal).toString();
    captions = captions || !caption.isEmpty();
    if (column > 0) csv += ',';
    AppendCsvField(csv, FromQt(caption));
  }
  captions ? csv.append(kLineEnd) : csv.erase();
  AddRows(view, {}, 0, csv);
  return ToQt(csv);
}

void AddExportActions(QAbstractItemView& view, QMenu& menu) {
  const auto copy = [](const QString& text) { QApplication::clipboard()->setText(text); };
  QAction* cell = menu.addAction(HostText("Desktop_CopyCell"), &view,
                                 [copy, &view] { copy(view.currentIndex().data().toString()); });
  QAction* row =
      menu.addAction(HostText("Desktop_CopyRow"), &view, [copy, &view] { copy(MakeTabbedRows(view)); });
  for (QAction* action : {cell, row}) action->setEnabled(view.currentIndex().isValid());
  menu.addAction(HostText("Desktop_Export"), &view, [&view] { Export(view); });
}

}  // namespace margindesk
