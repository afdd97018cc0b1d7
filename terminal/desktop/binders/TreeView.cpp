#include "terminal/desktop/binders/TreeView.h"

#include <QHeaderView>
#include <QPainter>

namespace margindesk {

namespace {

constexpr int kLineAlpha = 110;  // fainter than what stands in the cells

}  // namespace

void TTreeView::drawRow(QPainter* painter, const QStyleOptionViewItem& options,
                        const QModelIndex& index) const {
  QTreeView::drawRow(painter, options, index);
  if (!FGridLines) return;
  QColor color = palette().color(QPalette::Mid);
  color.setAlpha(kLineAlpha);
  const QRect row = options.rect;
  painter->fillRect(QRect(row.left(), row.bottom(), row.width(), 1), color);
  for (int column = 1; column < header()->count(); ++column) {
    painter->fillRect(QRect(columnViewportPosition(column), row.top(), 1, row.height()), color);
  }
}

}  // namespace margindesk
