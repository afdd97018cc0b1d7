#pragma once

#include <QObject>
#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "controls/Frame.h"
#include "controls/GridTableView.h"

namespace margindesk {

// Tells whether the orders of a simulator's grid were edited after they were simulated, so that the figures
// shown are those of other orders. A view without a simulator is never out of date. The frame must outlive
// it; the form is the widget made for it.
class TSimulationWatch {
 public:
  TSimulationWatch(const TFrame& frame, const QWidget& form);

  bool IsOld() const { return FSimulated && *FSimulated != ReadOrders(); }

  // The language changed the texts of the orders, not the orders: what is there now counts as simulated.
  void Retake() {
    if (FSimulated) FSimulated = ReadOrders();
  }

 private:
  std::vector<std::string> ReadOrders() const;  // the texts of the rows that are not blank

  TGridTableView* const FGrid;                         // null where the view has no orders
  std::optional<std::vector<std::string>> FSimulated;  // none: nothing is simulated
};

}  // namespace margindesk
