#pragma once

#include <QDockWidget>

namespace margindesk {

// A dock that the host fills itself. It goes when the person closes it; what it shows is read anew by
// Refresh, which only changes what differs.
class THostDock : public QDockWidget {
 public:
  explicit THostDock(QWidget* parent) : QDockWidget(parent) { setAttribute(Qt::WA_DeleteOnClose); }

  virtual void UpdateTexts() = 0;  // in the current language
  virtual void Refresh() = 0;
};

}  // namespace margindesk
