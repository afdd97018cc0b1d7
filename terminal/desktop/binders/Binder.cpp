#include "terminal/desktop/binders/Binder.h"

#include "terminal/desktop/Text.h"

namespace margindesk {

void TBinder::RefreshCommon() {
  FWidget.setEnabled(FControl.GetEnabled());
  FWidget.setToolTip(ToQt(FControl.GetHint()));
}

}  // namespace margindesk
