#pragma once

#include <string>

#include "host/engine/Ledger.h"

namespace margindesk {

// What is asked of an order before it is placed, or before it is simulated.
struct TOrderQuestion {
  const THostData& FData;
  const TOrderFacts& FOrder;
  std::int32_t FAction = 0;  // kActionOrder, kActionOTCFund, kActionOTCBond, kActionSimulate
};

// The first rule that the order breaks, as the user is told it in the current language; "" when it breaks
// none. Rules about the account, the symbol and the numbers come first, then those of the market, then what
// the account has. A simulated order has to keep to those alone without which nothing can be reckoned.
std::string FindOrderFault(const TOrderQuestion& question);

// The text of an error code in the current language, with its places filled.
std::string GetErrorText(std::string_view code, std::initializer_list<std::string_view> values = {});

}  // namespace margindesk
