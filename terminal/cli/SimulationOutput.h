#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "host/services/HostContents.h"
#include "terminal/cli/AccountOutput.h"
#include "terminal/cli/OrdersFile.h"
#include "terminal/cli/SimulatorDriver.h"
#include "terminal/session/Terminal.h"

namespace margindesk {

// One row of the account tree before and after the orders.
struct TSimulatedRow {
  std::size_t FLevel = 0;  // 0 a field, 1 a currency or the total, 2 a converted currency
  TAccountTreeRow FBefore;
  TAccountTreeRow FAfter;

  bool IsChanged() const { return FBefore.FText != FAfter.FText; }
};

// Puts the rows of both trees side by side, in the order of the second one.
std::vector<TSimulatedRow> CompareTrees(const std::vector<TAccountTreeRow>& before,
                                        const std::vector<TAccountTreeRow>& after);

// What came of a list of orders.
struct TSimulation {
  TAccountView FView;  // its rows are those before
  std::vector<TFileOrder> FOrders;
  std::vector<TSimulatedRow> FRows;       // empty when the orders could not be simulated
  std::optional<TOrderRefusal> FRefusal;  // the order that would fail, or why there is no simulation
  std::vector<TOrderFacts> FPlaced;
};

// For people: each figure before and after, those that changed marked, then the orders that were placed.
void WriteSimulationText(std::ostream& out, const TSimulation& simulation, const TTerminal& terminal);

// One document; FIELDS of "rows": level, field, key, currency, caption, before, after, before_text,
// after_text, changed.
void WriteSimulationJson(std::ostream& out, const TSimulation& simulation);

// The same rows, one a line.
void WriteSimulationCsv(std::ostream& out, const TSimulation& simulation);

// "row 3 (line 4 of the file), 90118 buy 100: reason".
std::string DescribeRefusal(const TSimulation& simulation);

}  // namespace margindesk
