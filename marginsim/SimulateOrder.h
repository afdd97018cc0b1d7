#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "model/contract/BaseData.h"
#include "model/contract/Code.h"

namespace margindesk {

// What an order's product is, as far as orders have rules and actions of their own for it.
enum class TProductType : std::uint8_t { ptNormal = 0, ptOTCFund = 1, ptOTCBond = 2 };

// Which account a data control shows: the real one, or the simulated one where there is one.
enum class TAccountInfoMode : std::uint8_t { aimNormal = 0, aimSimulate = 1 };

// One order of the simulator's grid, as it was collected.
class TMarginSimulateOrder : public TBaseData {
 public:
  TCode FSymbol;
  std::int32_t FSide = 0;       // kSide...
  double FPrice = 0;            // real price, in the product's currency
  double FQty = 0;              // units
  std::int32_t FOpenClose = 0;  // kOpenClose..., 0 not applicable
  std::int32_t FPrincipal = 0;  // kPrincipal..., 0 not applicable
  std::int32_t FStatus = 0;     // kStatus...; not given while orders are collected to be placed
};

using TSimulateOrderList = std::vector<std::unique_ptr<TMarginSimulateOrder>>;

}  // namespace margindesk
