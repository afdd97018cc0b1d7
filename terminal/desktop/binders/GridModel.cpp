#include "terminal/desktop/binders/GridModel.h"

#include <algorithm>

#include "controls/ButtonEditProperties.h"
#include "controls/ComboBoxProperties.h"
#include "controls/PopupEditProperties.h"
#include "controls/SpinEditProperties.h"
#include "terminal/desktop/HostText.h"
#include "terminal/desktop/Text.h"
#include "terminal/desktop/binders/CellNumber.h"

namespace margindesk {

namespace {

TCellButton GetButton(const TEditProperties* properties) {
  if (dynamic_cast<const TSpinEditProperties*>(properties) != nullptr) return TCellButton::Spin;
  const bool drops = dynamic_cast<const TComboBoxProperties*>(properties) != nullptr ||
                     dynamic_cast<const TPopupEditProperties*>(properties) != nullptr;
  return drops ? TCellButton::Drop : TCellButton::None;
}

}  // namespace

TGridModel::TGridModel(TGridTableView& grid, QObject* parent) : QAbstractTableModel(parent), FGrid(grid) {
  Refresh(0, -1);
}

std::vector<TGridColumn> TGridModel::ReadColumns() const {
  std::vector<TGridColumn> columns;
  std::ranges::copy_if(FGrid.GetColumns(), std::back_inserter(columns), &TGridColumn::FVisible);
  return columns;
}

bool TGridModel::SameColumns(const std::vector<TGridColumn>& a, const std::vector<TGridColumn>& b) {
  return std::ranges::equal(a, b, [](const TGridColumn& x, const TGridColumn& y) {
    return x.FTag == y.FTag && x.FCaption == y.FCaption && x.FWidth == y.FWidth &&
           x.FSortOrder == y.FSortOrder && x.FProperties == y.FProperties;
  });
}

TGridModel::TCells TGridModel::ReadRow(std::int32_t record) const {
  TCells cells;
  cells.reserve(FColumns.size());
  for (const TGridColumn& column : FColumns) {
    TShownCell& cell = cells.emplace_back();
    const std::string text = FGrid.GetDisplayText(record, column);
    cell.FText = ToQt(text);
    if (column.FNumeric || IsFigure(text)) cell.FAlignment = Qt::AlignRight | Qt::AlignVCenter;
    const TEditProperties* properties = FGrid.GetProperties(record, column);
    if (column.FAllowEditing && column.FShowEditButtons) cell.FButton = GetButton(properties);
    const auto* button = dynamic_cast<const TButtonEditProperties*>(properties);
    if (button == nullptr) continue;
    // A mark of its own in place of the value behind the button.
    const bool marked = button->FImageIndex >= 0;
    cell.FText = marked ? QStringLiteral("⚠") : QString();
    if (marked) cell.FHint = HostText("Desktop_InvalidRow");
    cell.FAlignment = Qt::AlignCenter;
  }
  return cells;
}

const TGridModel::TCells& TGridModel::HeldRow(int row) const {
  const auto held = FHeld.find(row);
  if (held != FHeld.end()) return held->second;
  return FHeld.emplace(row, ReadRow(GetRecord(row))).first->second;
}

bool TGridModel::Refresh(int first, int last) {
  std::vector<TGridColumn> columns = ReadColumns();
  std::vector<std::int32_t> order = FGrid.GetDisplayOrder();
  if (order != FOrder || !SameColumns(columns, FColumns)) {
    beginResetModel();
    FOrder = std::move(order);
    FColumns = std::move(columns);
    FHeld.clear();
    endResetModel();
    return true;
  }
  FColumns = std::move(columns);
  const auto before = std::exchange(FHeld, {});
  for (int row = std::max(first, 0); row <= last && row < rowCount(); ++row) {
    const TCells& cells = HeldRow(row);
    const auto old = before.find(row);
    if (old == before.end() || old->second.size() != cells.size()) {
      emit dataChanged(index(row, 0), index(row, columnCount() - 1));
      continue;
    }
    for (std::size_t i = 0; i < cells.size(); ++i) {
      if (cells[i] == old->second[i]) continue;
      const QModelIndex changed = index(row, static_cast<int>(i));
      emit dataChanged(changed, changed);
    }
  }
  return false;
}

std::int32_t TGridModel::GetRecord(int row) const {
  return row < 0 || row >= rowCount() ? -1 : FOrder[static_cast<std::size_t>(row)];
}

int TGridModel::GetRow(std::int32_t record) const {
  const auto found = std::ranges::find(FOrder, record);
  return found == FOrder.end() ? -1 : static_cast<int>(found - FOrder.begin());
}

int TGridModel::FindColumn(std::int32_t tag) const {
  const auto found = std::ranges::find(FColumns, tag, &TGridColumn::FTag);
  return found == FColumns.end() ? -1 : static_cast<int>(found - FColumns.begin());
}

int TGridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(FOrder.size());
}

int TGridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(FColumns.size());
}

QVariant TGridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const bool hint = role == Qt::ToolTipRole || role == Qt::AccessibleTextRole;
  if (!hint && role != Qt::DisplayRole && role != kShownCellRole) return {};
  const TShownCell& cell = HeldRow(index.row())[static_cast<std::size_t>(index.column())];
  if (hint && !cell.FHint.isEmpty()) return cell.FHint;
  if (role == Qt::ToolTipRole) return {};
  if (role != kShownCellRole) return cell.FText;
  return QVariant::fromValue(&cell);
}

QVariant TGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const TGridColumn& column = GetColumn(section);
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return ToQt(column.FCaption);
  if (role == kMaySortRole) return column.FAllowSorting;
  if (role == Qt::TextAlignmentRole) {
    // Over what stands below: some columns hold their figures as texts.
    const bool right =
        column.FNumeric ||
        (rowCount() > 0 && HeldRow(0)[static_cast<std::size_t>(section)].FAlignment.testFlag(Qt::AlignRight));
    return static_cast<int>(Qt::AlignVCenter | (right ? Qt::AlignRight : Qt::AlignLeft));
  }
  return {};
}

Qt::ItemFlags TGridModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (index.isValid() && GetColumn(index.column()).FAllowEditing) flags |= Qt::ItemIsEditable;
  return flags;
}

void TGridModel::sort(int column, Qt::SortOrder order) {
  if (column < 0 || column >= columnCount()) return;
  FGrid.SetSorting(GetColumn(column).FTag,
                   order == Qt::AscendingOrder ? TSortOrder::Ascending : TSortOrder::Descending);
}

}  // namespace margindesk
