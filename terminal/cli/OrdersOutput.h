#pragma once

#include <ostream>
#include <string_view>
#include <vector>

#include "host/services/HostContents.h"
#include "terminal/cli/Json.h"
#include "terminal/session/Terminal.h"

namespace margindesk {

// "resting", "filled" or "cancelled".
std::string_view GetOrderStateWord(TOrderState state);

// Orders that were placed: a table for people, an array of objects, and one line an order.
void WriteOrdersText(std::ostream& out, const std::vector<TOrderFacts>& orders, const TTerminal& terminal);
TJson MakeOrdersJson(const std::vector<TOrderFacts>& orders);
void WriteOrdersCsv(std::ostream& out, const std::vector<TOrderFacts>& orders);

}  // namespace margindesk
