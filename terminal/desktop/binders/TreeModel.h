#pragma once

#include <QAbstractItemModel>
#include <QColor>
#include <optional>
#include <vector>

#include "controls/ProgressBarProperties.h"
#include "controls/VirtualTree.h"

namespace margindesk {

// What a cell that can be edited shows at its right edge, whether or not it is being edited.
enum class TCellButton { None, Drop, Spin };

// What a cell of a tree or grid shows, worked out outside painting.
struct TShownCell {
  QString FText;
  QColor FBackground;     // invalid: the view's own
  bool FChanged = false;  // the cell is marked beside its colour
  Qt::Alignment FAlignment = Qt::AlignLeft | Qt::AlignVCenter;
  std::optional<double> FBar;  // percent of a bar behind the text
  QColor FBarColor;
  double FBarOverload = 100;  // percent at which the bar goes on in the overload colour
  TCellButton FButton = TCellButton::None;
  QString FHint;  // what a mark in place of a text means

  friend bool operator==(const TShownCell&, const TShownCell&) = default;
};

// The role under which a model hands out a const TShownCell*, which a delegate paints at once.
inline constexpr int kShownCellRole = Qt::UserRole + 1;

// The rows of a tree as an item model. It holds what every open row shows; Refresh compares with the tree
// and announces the cells that differ, or everything where rows came or went.
class TTreeModel : public QAbstractItemModel {
 public:
  explicit TTreeModel(TVirtualTree& tree, QObject* parent);

  // Answers whether the rows are others than before: the view then has to take their open state anew.
  bool Refresh();

  // The tree builds its rows anew at every change, sooner than the model is refreshed: a row is told by its
  // place. Null, or an index that is not valid, where rows came or went meanwhile.
  const TVirtualTreeNode* GetNode(const QModelIndex& index) const;
  QModelIndex GetIndex(const TVirtualTreeNode& node, int column) const;

  QModelIndex index(int row, int column, const QModelIndex& parent) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent) const override;
  int columnCount(const QModelIndex& parent) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  struct TRow {
    int FParent = -1;
    int FPlace = 0;  // among its siblings
    std::vector<int> FChildren;
    std::vector<TShownCell> FCells;

    bool HasPlaceOf(const TRow& other) const {
      return FParent == other.FParent && FPlace == other.FPlace && FChildren.size() == other.FChildren.size();
    }
  };

  std::vector<TRow> ReadRows() const;
  TShownCell ReadCell(const TVirtualTreeNode& node, const TTreeColumn& column) const;
  int RowOf(const QModelIndex& index) const { return static_cast<int>(index.internalId()); }

  TVirtualTree& FTree;
  std::vector<TRow> FRows;
  std::vector<int> FRoots;
  std::vector<QString> FHeaders;
};

}  // namespace margindesk
