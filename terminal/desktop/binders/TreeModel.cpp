#include "terminal/desktop/binders/TreeModel.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "terminal/desktop/Colors.h"
#include "terminal/desktop/Text.h"

namespace margindesk {

namespace {

std::vector<QString> ReadHeaders(const TVirtualTree& tree) {
  std::vector<QString> headers;
  for (const TTreeColumn& column : tree.GetColumns()) headers.push_back(ToQt(column.FCaption));
  return headers;
}

// The number at the start of a text such as "1,234.50 %".
std::optional<double> ReadPercent(const QString& text) {
  QString digits;
  for (const QChar c : text) {
    if (c.isDigit() || c == u'.' || c == u'-') digits += c;
  }
  bool fine = false;
  const double value = digits.toDouble(&fine);
  if (!fine) return std::nullopt;
  return value;
}

}  // namespace

TTreeModel::TTreeModel(TVirtualTree& tree, QObject* parent) : QAbstractItemModel(parent), FTree(tree) {
  Refresh();
}

TShownCell TTreeModel::ReadCell(const TVirtualTreeNode& node, const TTreeColumn& column) const {
  TShownCell cell;
  cell.FText = ToQt(FTree.GetDisplayText(&node, column));
  const TEditProperties* properties = FTree.GetEditProperties(&node, column);
  if (properties != nullptr && properties->FAlignment == TAlignment::Right) {
    cell.FAlignment = Qt::AlignRight | Qt::AlignVCenter;
  }
  if (const auto* bar = dynamic_cast<const TProgressBarProperties*>(properties)) {
    cell.FBar = ReadPercent(cell.FText);
    cell.FBarColor = MakeQtColor(bar->FBeginColor);
    cell.FBarOverload = bar->FOverloadValue;
    cell.FAlignment = Qt::AlignRight | Qt::AlignVCenter;
  }
  if (const TStyle* style = FTree.GetContentStyle(&node, column)) {
    cell.FBackground = MakeQtColor(style->GetColor());
    cell.FChanged = cell.FBackground.isValid();
  }
  return cell;
}

std::vector<TTreeModel::TRow> TTreeModel::ReadRows() const {
  const auto& nodes = FTree.GetNodes();
  std::unordered_map<const TVirtualTreeNode*, int> places;
  const auto& shown = FTree.GetShownNodes();
  const std::unordered_set<const TVirtualTreeNode*> open(shown.begin(), shown.end());
  std::vector<TRow> rows(nodes.size());
  int roots = 0;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const TVirtualTreeNode& node = *nodes[i];
    places[&node] = static_cast<int>(i);
    TRow& row = rows[i];
    if (node.GetParent() == nullptr) {
      row.FPlace = roots++;
    } else {
      row.FParent = places.at(node.GetParent());
      auto& siblings = rows[static_cast<std::size_t>(row.FParent)].FChildren;
      row.FPlace = static_cast<int>(siblings.size());
      siblings.push_back(static_cast<int>(i));
    }
    if (!open.contains(&node)) continue;
    for (const TTreeColumn& column : FTree.GetColumns()) row.FCells.push_back(ReadCell(node, column));
  }
  return rows;
}

bool TTreeModel::Refresh() {
  std::vector<QString> headers = ReadHeaders(FTree);
  std::vector<TRow> rows = ReadRows();
  const bool sameRows =
      headers.size() == FHeaders.size() &&
      std::ranges::equal(rows, FRows, [](const TRow& a, const TRow& b) { return a.HasPlaceOf(b); });
  if (!sameRows) {
    beginResetModel();
    FRows = std::move(rows);
    FHeaders = std::move(headers);
    FRoots.clear();
    for (std::size_t i = 0; i < FRows.size(); ++i) {
      if (FRows[i].FParent < 0) FRoots.push_back(static_cast<int>(i));
    }
    endResetModel();
    return true;
  }
  if (headers != FHeaders) {
    FHeaders = std::move(headers);
    emit headerDataChanged(Qt::Horizontal, 0, static_cast<int>(FHeaders.size()) - 1);
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::size_t before = FRows[i].FCells.size();
    for (std::size_t column = 0; column < rows[i].FCells.size(); ++column) {
      if (column < before && rows[i].FCells[column] == FRows[i].FCells[column]) continue;
      if (before == 0) FRows[i].FCells.resize(rows[i].FCells.size());
      FRows[i].FCells[column] = rows[i].FCells[column];
      const QModelIndex index =
          createIndex(rows[i].FPlace, static_cast<int>(column), static_cast<quintptr>(i));
      emit dataChanged(index, index);
    }
  }
  return false;
}

const TVirtualTreeNode* TTreeModel::GetNode(const QModelIndex& index) const {
  const auto& nodes = FTree.GetNodes();
  if (!index.isValid() || nodes.size() != FRows.size()) return nullptr;
  return nodes[static_cast<std::size_t>(RowOf(index))];
}

QModelIndex TTreeModel::GetIndex(const TVirtualTreeNode& node, int column) const {
  const auto& nodes = FTree.GetNodes();
  const auto found = std::ranges::find(nodes, &node);
  if (found == nodes.end() || nodes.size() != FRows.size()) return {};
  const auto row = static_cast<std::size_t>(found - nodes.begin());
  return createIndex(FRows[row].FPlace, column, static_cast<quintptr>(row));
}

QModelIndex TTreeModel::index(int row, int column, const QModelIndex& parent) const {
  const auto& siblings = parent.isValid() ? FRows[static_cast<std::size_t>(RowOf(parent))].FChildren : FRoots;
  if (row < 0 || static_cast<std::size_t>(row) >= siblings.size()) return {};
  return createIndex(row, column, static_cast<quintptr>(siblings[static_cast<std::size_t>(row)]));
}

QModelIndex TTreeModel::parent(const QModelIndex& child) const {
  if (!child.isValid()) return {};
  const int above = FRows[static_cast<std::size_t>(RowOf(child))].FParent;
  if (above < 0) return {};
  return createIndex(FRows[static_cast<std::size_t>(above)].FPlace, 0, static_cast<quintptr>(above));
}

int TTreeModel::rowCount(const QModelIndex& parent) const {
  if (!parent.isValid()) return static_cast<int>(FRoots.size());
  if (parent.column() != 0) return 0;
  return static_cast<int>(FRows[static_cast<std::size_t>(RowOf(parent))].FChildren.size());
}

int TTreeModel::columnCount(const QModelIndex& /*parent*/) const { return static_cast<int>(FHeaders.size()); }

QVariant TTreeModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const auto& cells = FRows[static_cast<std::size_t>(RowOf(index))].FCells;
  if (static_cast<std::size_t>(index.column()) >= cells.size()) return {};
  const TShownCell& cell = cells[static_cast<std::size_t>(index.column())];
  switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
      return cell.FText;
    case kShownCellRole:
      return QVariant::fromValue(&cell);
    default:
      return {};
  }
}

QVariant TTreeModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0) return {};
  return static_cast<std::size_t>(section) < FHeaders.size() ? FHeaders[static_cast<std::size_t>(section)]
                                                             : QString();
}

}  // namespace margindesk
