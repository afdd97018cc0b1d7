#include "terminal/desktop/binders/PopupMenus.h"

#include <QAbstractItemView>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QPointer>
#include <QTableView>
#include <functional>
#include <utility>

#include "controls/Menu.h"
#include "terminal/desktop/CellExport.h"
#include "terminal/desktop/HostText.h"
#include "terminal/desktop/binders/GridModel.h"

namespace margindesk {

namespace {

// Shows a widget's menu for the menu key and for Shift+F10: at the current cell of a tree or grid.
class TMenuKeys : public QObject {
 public:
  using TShow = std::function<void(QPoint global)>;

  TMenuKeys(QWidget& widget, TShow show) : QObject(&widget), FWidget(widget), FShow(std::move(show)) {
    widget.installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (!IsMenuKey(*event)) return QObject::eventFilter(watched, event);
    FShow(GetPlace());
    return true;
  }

 private:
  static bool IsMenuKey(const QEvent& event) {
    if (event.type() == QEvent::ContextMenu) {
      return static_cast<const QContextMenuEvent&>(event).reason() == QContextMenuEvent::Keyboard;
    }
    if (event.type() != QEvent::KeyPress) return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_F10 && key.modifiers() == Qt::ShiftModifier;
  }

  QPoint GetPlace() const {
    const auto* view = qobject_cast<const QAbstractItemView*>(&FWidget);
    if (view == nullptr) return FWidget.mapToGlobal(FWidget.rect().center());
    const QRect cell = view->visualRect(view->currentIndex()).intersected(view->viewport()->rect());
    return view->viewport()->mapToGlobal(cell.isEmpty() ? QPoint() : cell.center());
  }

  QWidget& FWidget;
  const TShow FShow;
};

// Sorting by the current cell's column, as a click on its header would.
void AddSorting(QTableView& view, QMenu& menu) {
  const int column = view.currentIndex().column();
  QAbstractItemModel& model = *view.model();
  if (column < 0 || !model.headerData(column, Qt::Horizontal, kMaySortRole).toBool()) return;
  const QHeaderView& header = *view.horizontalHeader();
  const bool ascending = header.isSortIndicatorShown() && header.sortIndicatorSection() == column &&
                         header.sortIndicatorOrder() == Qt::AscendingOrder;
  const QString caption = model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
  menu.addAction(HostText("Desktop_SortBy").arg(caption), &view, [&model, column, ascending] {
    model.sort(column, ascending ? Qt::DescendingOrder : Qt::AscendingOrder);
  });
}

}  // namespace

void AddMenuItems(const TControl& control, QMenu& menu) {
  if (control.GetPopupMenu() == nullptr) return;
  for (TMenuItem* item : control.GetPopupMenu()->GetItems()) {
    if (!item->GetVisible()) continue;
    QAction* action = menu.addAction(ToQt(item->GetCaption()));
    action->setEnabled(item->GetEnabled());
    // The view may be gone when a dialog of the click has closed.
    QObject::connect(action, &QAction::triggered, &menu, [item] { item->Click(); });
  }
}

void ConnectPopupMenu(TControl& control, QWidget& widget) {
  widget.setContextMenuPolicy(Qt::CustomContextMenu);
  const auto show = [&control, &widget](QPoint global) {
    const QPointer<QMenu> menu = new QMenu(&widget);
    AddMenuItems(control, *menu);
    if (auto* view = qobject_cast<QAbstractItemView*>(&widget)) {
      if (!menu->isEmpty()) menu->addSeparator();
      if (auto* table = qobject_cast<QTableView*>(view)) AddSorting(*table, *menu);
      AddExportActions(*view, *menu);
    }
    if (menu->isEmpty()) {
      delete menu;
      return;
    }
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(global);
  };
  QObject::connect(&widget, &QWidget::customContextMenuRequested, &widget, [show, &widget](QPoint at) {
    const auto* view = qobject_cast<QAbstractItemView*>(&widget);
    show(view == nullptr ? widget.mapToGlobal(at) : view->viewport()->mapToGlobal(at));
  });
  new TMenuKeys(widget, show);
}

}  // namespace margindesk
