#pragma once

#include "model/contract/BaseMarketData.h"
#include "model/contract/Code.h"

namespace margindesk {

// What the order grid asks about a symbol. The market's product says it, else the symbol's reference item.

double GetLotSize(TCode symbol);  // units; 1 where nobody knows it
TCode GetExchange(TCode symbol);  // empty where nobody knows it
bool IsOTCBond(TCode symbol);     // ordered in amounts from a minimum on, not in lots
// Of the symbol's market, which has it loaded; null without a market or a table.
const TCustomSpreadTable* FindSpreadTable(TCode symbol);

}  // namespace margindesk
