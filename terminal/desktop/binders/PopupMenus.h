#pragma once

#include <QMenu>
#include <QWidget>

#include "controls/Control.h"

namespace margindesk {

// Adds the items of a control's right-click menu, as they are now, to a menu. Nothing where it has none.
void AddMenuItems(const TControl& control, QMenu& menu);

// Shows the menu of a control where a right click (or the menu key) on its widget asks for it, followed by
// what the widget itself offers: copying and exporting.
void ConnectPopupMenu(TControl& control, QWidget& widget);

}  // namespace margindesk
