#include "terminal/desktop/binders/PopupMenus.h"

#include <QAbstractItemView>
#include <QPointer>

#include "controls/Menu.h"
#include "terminal/desktop/CellExport.h"
#include "terminal/desktop/HostText.h"

namespace margindesk {

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
  QObject::connect(&widget, &QWidget::customContextMenuRequested, &widget, [&control, &widget](QPoint at) {
    const QPointer<QMenu> menu = new QMenu(&widget);
    AddMenuItems(control, *menu);
    if (auto* view = qobject_cast<QAbstractItemView*>(&widget)) {
      if (!menu->isEmpty()) menu->addSeparator();
      AddExportActions(*view, *menu);
      at = view->viewport()->mapToGlobal(at);
    } else {
      at = widget.mapToGlobal(at);
    }
    if (menu->isEmpty()) {
      delete menu;
      return;
    }
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(at);
  });
}

}  // namespace margindesk
