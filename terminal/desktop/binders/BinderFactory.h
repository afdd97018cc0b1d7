#pragma once

#include <QWidget>

#include "controls/Control.h"
#include "controls/Frame.h"

namespace margindesk {

// Makes the widget for a control of a form with the binder of its kind, a child of `parent`; null for a kind
// that has no widget of its own. The widget's object name is the control's component name.
QWidget* CreateControlWidget(TControl& control, QWidget* parent);

// Makes the widget for a whole form: its layout with all controls in it, its menus and its hints. The frame
// must outlive the widget.
QWidget* CreateFormWidget(TFrame& frame, QWidget* parent);

}  // namespace margindesk
