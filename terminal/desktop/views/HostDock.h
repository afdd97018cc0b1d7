#pragma once

#include <QDockWidget>
#include <QScrollArea>
#include <string>
#include <vector>

#include "terminal/desktop/DockTitle.h"

namespace margindesk {

// A dock that the host fills itself. It goes when the person closes it; what it shows is read anew by
// Refresh, which only changes what differs.
class THostDock : public QDockWidget {
 public:
  explicit THostDock(QWidget* parent) : QDockWidget(parent), FTitle(new TDockTitle(*this)) {
    setAttribute(Qt::WA_DeleteOnClose);
    // What scrolls takes the focus, and is called what the dock is.
    QObject::connect(this, &QWidget::windowTitleChanged, this, [this](const QString& title) {
      for (QScrollArea* area : findChildren<QScrollArea*>()) area->setAccessibleName(title);
    });
  }

  TDockTitle& Title() noexcept { return *FTitle; }

  // What kind of dock it is and what it shows, for one that is opened again with its workspace; else nothing.
  virtual std::vector<std::string> Describe() const { return {}; }

  virtual void UpdateTexts() = 0;  // in the current language
  virtual void Refresh() = 0;

 private:
  TDockTitle* const FTitle;
};

}  // namespace margindesk
