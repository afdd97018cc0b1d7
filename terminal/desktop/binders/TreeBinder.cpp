#include "terminal/desktop/binders/TreeBinder.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <chrono>
#include <utility>

#include "terminal/desktop/Text.h"

namespace margindesk {

namespace {

constexpr std::chrono::milliseconds kFrame{16};

}  // namespace

TTreeBinder::TTreeBinder(TVirtualTree& tree, QTreeView& view)
    : QObject(&view), FTree(tree), FView(view), FModel(tree, this), FDelegate(this) {
  view.setModel(&FModel);
  view.setItemDelegate(&FDelegate);
  view.setUniformRowHeights(true);
  view.setAlternatingRowColors(true);
  view.setAllColumnsShowFocus(true);
  view.setContextMenuPolicy(Qt::CustomContextMenu);
  view.viewport()->setMouseTracking(true);
  view.viewport()->installEventFilter(this);
  view.header()->setStretchLastSection(true);
  FTimer.setSingleShot(true);
  FTimer.setInterval(kFrame);
  QObject::connect(&FTimer, &QTimer::timeout, this, [this] { Refresh(); });
  const auto expand = [this](const QModelIndex& index, bool expanded) {
    const TVirtualTreeNode* node = FModel.GetNode(index);
    if (!FRefreshing && node != nullptr) FTree.SetExpanded(*node, expanded);
  };
  QObject::connect(&view, &QTreeView::expanded, this,
                   [expand](const QModelIndex& index) { expand(index, true); });
  QObject::connect(&view, &QTreeView::collapsed, this,
                   [expand](const QModelIndex& index) { expand(index, false); });
  FTree.SetOnUpdate(MakeEvent<&TTreeBinder::TreeUpdated>(this));
  Refresh();
  FitColumns();
}

TTreeBinder::~TTreeBinder() { FTree.SetOnUpdate({}); }

void TTreeBinder::TreeUpdated() {
  if (!FRefreshing && !FTimer.isActive()) FTimer.start();
}

void TTreeBinder::Refresh() {
  FRefreshing = true;
  FView.setHeaderHidden(!FTree.GetShowHeaders());
  FDelegate.SetRowHeight(FTree.GetRowHeight());
  const bool otherRows = FModel.Refresh();
  ShowExpanded();
  if (otherRows) FitColumns();
  FRefreshing = false;
}

void TTreeBinder::ShowExpanded() {
  const bool before = std::exchange(FRefreshing, true);
  for (const TVirtualTreeNode* node : FModel.GetNodes()) {
    if (!node->HasChildren()) continue;
    const QModelIndex index = FModel.GetIndex(*node, 0);
    const bool expanded = FTree.IsExpanded(*node);
    if (FView.isExpanded(index) != expanded) FView.setExpanded(index, expanded);
  }
  FRefreshing = before;
}

void TTreeBinder::FitColumns() {
  for (int column = 0; column + 1 < FModel.columnCount({}); ++column) FView.resizeColumnToContents(column);
}

void TTreeBinder::MouseMoved(QPoint position) {
  const QModelIndex index = FView.indexAt(position);
  const TVirtualTreeNode* node = FModel.GetNode(index);
  if (node == nullptr) {
    FTree.MouseLeave();
    return;
  }
  // The tree knows its cells by a geometry of its own: the middle of the same cell there.
  const TTreeColumn& column = FTree.GetColumns()[static_cast<std::size_t>(index.column())];
  const TRect rect = FTree.GetCellRect(*node, column);
  const TPoint point{rect.FLeft + rect.FWidth / 2, rect.FTop + rect.FHeight / 2};
  const QPoint global = FView.viewport()->mapToGlobal(position);
  FTree.SetScreenOrigin({global.x() - point.FX, global.y() - point.FY});
  FTree.MouseMove(point);
}

bool TTreeBinder::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseMove) {
    MouseMoved(static_cast<const QMouseEvent*>(event)->position().toPoint());
  } else if (event->type() == QEvent::Leave) {
    FTree.MouseLeave();
  } else if (event->type() == QEvent::Resize) {
    FTree.SetWidth(FView.viewport()->width());
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace margindesk
