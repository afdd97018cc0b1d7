#pragma once

#include <QTreeView>

namespace margindesk {

// A tree with thin lines below its rows and between its columns, where they are asked for.
class TTreeView : public QTreeView {
 public:
  using QTreeView::QTreeView;

  void SetGridLines(bool shown) { FGridLines = shown; }

 protected:
  void drawRow(QPainter* painter, const QStyleOptionViewItem& options,
               const QModelIndex& index) const override;

 private:
  bool FGridLines = false;
};

}  // namespace margindesk
