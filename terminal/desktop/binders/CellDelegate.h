#pragma once

#include <QStyledItemDelegate>

#include "terminal/desktop/binders/CellTexts.h"

namespace margindesk {

// Paints the held cell of a model (kShownCellRole) with as little as possible: background, bar, text. A
// figure below zero is red beside its sign; a changed cell has a mark at its left edge beside its colour.
class TCellDelegate : public QStyledItemDelegate {
 public:
  explicit TCellDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  // Shows the cell's hint, or its text where it is cut off.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;
  void SetRowHeight(int height) { FRowHeight = height; }  // pixels

 private:
  int FRowHeight = 20;
  mutable TCellTexts FTexts;
};

}  // namespace margindesk
