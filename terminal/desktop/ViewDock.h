#pragma once

#include <QDockWidget>
#include <QToolButton>
#include <functional>
#include <vector>

#include "host/services/OpenViews.h"
#include "terminal/desktop/DockTitle.h"
#include "terminal/desktop/SimulationWatch.h"

namespace margindesk {

// The dock of one open view: its form, and a title bar with the view's caption, its caption buttons and the
// one that closes it. It goes before its view does.
class TViewDock : public QDockWidget {
 public:
  using TClose = std::function<void(TViewHandle)>;

  TViewDock(TOpenViews& views, const TOpenView& view, QWidget* parent, TClose closeView);

  TViewHandle GetHandle() const noexcept { return FHandle; }

  // Takes the view's caption and caption buttons anew.
  void Update();

  TSimulationWatch& Simulation() noexcept { return FSimulation; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void UpdateMargins();
  void UpdateButtons();
  void AddButton();

  TOpenViews& FViews;
  const TViewHandle FHandle;
  const TClose FClose;
  QWidget* const FForm;
  TSimulationWatch FSimulation;
  std::vector<QToolButton*> FCaptionButtons;  // by their place among the view's, made when first there
  TDockTitle* FTitle = nullptr;
};

}  // namespace margindesk
