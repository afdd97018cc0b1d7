#pragma once

#include <optional>
#include <string>
#include <vector>

#include "controls/GridTableView.h"
#include "model/contract/Code.h"
#include "terminal/cli/OpenedView.h"
#include "terminal/cli/OrdersFile.h"

namespace margindesk {

// Why the view or the host would not take the orders.
struct TOrderRefusal {
  std::optional<std::size_t> FOrder;  // index of the order; none when it is about no order in particular
  std::string FReason;                // as the user is told it, in one line
};

// A margin simulator view that is used as a person would: orders are typed into its grid cell by cell and its
// buttons are clicked. While it lives, messages of the host are its own and the batch confirmation is
// answered by it.
class TSimulatorDriver {
 public:
  // Throws TCliError when the package has no such view.
  TSimulatorDriver(TSession& session, TCode account);
  ~TSimulatorDriver();
  TSimulatorDriver(const TSimulatorDriver&) = delete;
  TSimulatorDriver& operator=(const TSimulatorDriver&) = delete;

  // The data control of the view's tree.
  TCustomAccountInfoDataControl& Control() const noexcept { return FView.Control(); }

  // Types the orders, a row each, into the empty grid. Throws TCliError for a cell that cannot be typed into.
  void TypeOrders(const std::vector<TFileOrder>& orders);

  // Simulates what the grid holds and waits for the figures.
  std::optional<TOrderRefusal> Simulate();

  // Has the host check what the grid holds and, with `confirmed`, places it; the grid is empty after that.
  // Without it the confirmation is declined and nothing is placed.
  std::optional<TOrderRefusal> Submit(bool confirmed);

 private:
  template <class T>
  T& Find(const char* name) const;
  void TypeCell(std::int32_t record, std::int32_t column, TVariant value);
  void TypeOrder(const TFileOrder& order);
  std::optional<TOrderRefusal> Click(const char* button);
  void Settle();

  TReferenceHost& FHost;
  TOpenedView FView;
  TGridTableView& FGrid;
  std::vector<std::string> FMessages;
};

}  // namespace margindesk
