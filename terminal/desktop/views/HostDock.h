#pragma once

#include <QDockWidget>

#include "terminal/desktop/DockTitle.h"

namespace margindesk {

// A dock that the host fills itself. It goes when the person closes it; what it shows is read anew by
// Refresh, which only changes what differs.
class THostDock : public QDockWidget {
 public:
  explicit THostDock(QWidget* parent) : QDockWidget(parent), FTitle(new TDockTitle(*this)) {
    setAttribute(Qt::WA_DeleteOnClose);
  }

  TDockTitle& Title() noexcept { return *FTitle; }

  virtual void UpdateTexts() = 0;  // in the current language
  virtual void Refresh() = 0;

 private:
  TDockTitle* const FTitle;
};

}  // namespace margindesk
