#pragma once

#include <QAbstractTableModel>
#include <unordered_map>
#include <utility>
#include <vector>

#include "controls/GridTableView.h"
#include "terminal/desktop/binders/TreeModel.h"

namespace margindesk {

// The role under which a header tells whether the person may sort by its column.
inline constexpr int kMaySortRole = Qt::UserRole + 2;

// The records of a grid in their display order as an item model. What is on the screen is read when the grid
// is refreshed and held; a row that is scrolled to is read when it is first asked for.
class TGridModel : public QAbstractTableModel {
 public:
  TGridModel(TGridTableView& grid, QObject* parent);

  // Reads the grid again. The rows first to last are on the screen: those of them that differ are announced.
  // Answers whether rows or columns came, went or moved.
  bool Refresh(int first, int last);

  std::int32_t GetRecord(int row) const;  // -1 out of range
  int GetRow(std::int32_t record) const;  // -1 when it is not shown
  // The columns that are shown, from left to right.
  const TGridColumn& GetColumn(int column) const { return FColumns[static_cast<std::size_t>(column)]; }
  int FindColumn(std::int32_t tag) const;  // -1 when it is not shown

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  void sort(int column, Qt::SortOrder order) override;

 private:
  using TCells = std::vector<TShownCell>;

  TCells ReadRow(std::int32_t record) const;
  const TCells& HeldRow(int row) const;
  std::vector<TGridColumn> ReadColumns() const;
  static bool SameColumns(const std::vector<TGridColumn>& a, const std::vector<TGridColumn>& b);

  TGridTableView& FGrid;
  std::vector<TGridColumn> FColumns;
  std::vector<std::int32_t> FOrder;
  mutable std::unordered_map<int, TCells> FHeld;  // by row
};

}  // namespace margindesk
