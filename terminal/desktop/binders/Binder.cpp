#include "terminal/desktop/binders/Binder.h"

#include "terminal/desktop/Text.h"

namespace margindesk {

void TBinder::RefreshCommon() {
  FWidget.setEnabled(FControl.GetEnabled());
  FWidget.setToolTip(ToQt(FControl.GetHint()));
  if (FWidget.accessibleName().isEmpty()) {
    const std::string& caption = FControl.GetCaption();
    FWidget.setAccessibleName(ToQt(caption.empty() ? FControl.GetComponentName() : caption));
  }
}

}  // namespace margindesk
