#include "terminal/desktop/binders/TreeBinder.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <algorithm>
#include <chrono>
#include <utility>

#include "terminal/desktop/Text.h"

namespace margindesk {

namespace {

constexpr std::chrono::milliseconds kFrame{50};  // from one picture of a busy tree to the next
constexpr std::chrono::milliseconds kSoon{16};   // in which changes that belong together come
constexpr int kRowPadding = 3;                   // pixels above and below a text together, at least

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
  view.installEventFilter(this);
  view.viewport()->installEventFilter(this);
  view.header()->setStretchLastSection(true);
  FTimer.setParent(this);  // a fault then has a view
  FTimer.setSingleShot(true);
  QObject::connect(&FTimer, &QTimer::timeout, this, [this] { Refresh(); });
  const auto expand = [this](const QModelIndex& index, bool expanded) {
    const TVirtualTreeNode* node = FModel.GetNode(index);
    if (FRefreshing || node == nullptr) return;
    FTree.SetExpanded(*node, expanded);
    FTimer.start(0);  // the person waits for the rows
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
  if (FRefreshing || FTimer.isActive()) return;
  const std::chrono::milliseconds shown(FShown.elapsed());
  FTimer.start(std::max(kSoon, kFrame - shown));
}

void TTreeBinder::Refresh() {
  FRefreshing = true;
  FTimer.stop();
  FView.setHeaderHidden(!FTree.GetShowHeaders());
  FDelegate.SetRowHeight(std::max(FTree.GetRowHeight(), FView.fontMetrics().height() + kRowPadding));
  const bool otherRows = FModel.Refresh();
  ShowExpanded();
  if (otherRows) FitColumns();
  FShown.start();
  FRefreshing = false;
}

void TTreeBinder::ShowExpanded() {
  const bool before = std::exchange(FRefreshing, true);
  for (const TVirtualTreeNode* node : FTree.GetNodes()) {
    if (!node->HasChildren()) continue;
    const QModelIndex index = FModel.GetIndex(*node, 0);
    const bool expanded = FTree.IsExpanded(*node);
    if (FView.isExpanded(index) != expanded) FView.setExpanded(index, expanded);
  }
  FRefreshing = before;
}

// Every column gets what it shows, and the last one the rest. Where that is too little for its figures the
// captions are cut instead: a figure is never.
void TTreeBinder::FitColumns() {
  const int last = FModel.columnCount({}) - 1;
  for (int column = 0; column < last; ++column) FView.resizeColumnToContents(column);
  if (last < 1) return;
  int rest = FView.viewport()->width() - static_cast<const QAbstractItemView&>(FView).sizeHintForColumn(last);
  for (int column = 1; column < last; ++column) rest -= FView.columnWidth(column);
  if (rest > 0 && rest < FView.columnWidth(0)) FView.setColumnWidth(0, rest);
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

void TTreeBinder::KeyPressed(const QKeyEvent& key) {
  FTree.MouseLeave();
  const QModelIndex current = FView.currentIndex();
  if (key.key() == Qt::Key_Shift) return;
  if (!key.matches(QKeySequence::WhatsThis) || !current.isValid()) {
    FHintColumn = 0;
    return;
  }
  FView.scrollTo(current);
  MouseMoved(FView.visualRect(current.siblingAtColumn(FHintColumn)).center());
  FHintColumn = (FHintColumn + 1) % FModel.columnCount({});
}

bool TTreeBinder::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &FView) {
    if (event->type() == QEvent::KeyPress) KeyPressed(static_cast<const QKeyEvent&>(*event));
    if (event->type() == QEvent::FontChange) {
      // Once the view has taken the font itself.
      QTimer::singleShot(0, this, [this] {
        Refresh();
        FitColumns();
        FView.doItemsLayout();
      });
    }
  } else if (event->type() == QEvent::MouseMove) {
    MouseMoved(static_cast<const QMouseEvent*>(event)->position().toPoint());
  } else if (event->type() == QEvent::Leave) {
    FTree.MouseLeave();
  } else if (event->type() == QEvent::Resize) {
    FTree.SetWidth(FView.viewport()->width());
    FitColumns();
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace margindesk
