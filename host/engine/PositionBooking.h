#pragma once

#include <span>

#include "host/services/HostContents.h"

namespace margindesk {

// A deal in one product as positions see it.
struct TPositionDeal {
  double FQuantity = 0;  // positive bought, negative sold
  double FPrice = 0;
  double FContractSize = 1;
  double FMark = 0;  // what the product is valued at
};

// What a deal made of profit and loss, in the product's currency.
struct TDealProfit {
  double FTotal = 0;     // at the mark
  double FRealized = 0;  // the part that is realised, whatever the mark
};

// What may be closed of a position: excluded units are pledged; of a long one, covering units and paper are
// bound too. Never negative.
double ReckonFreeQuantity(const TPositionFacts& position);

// Books a deal into an account's positions in one symbol, of which there is at least one. Opposite positions
// are closed first, as far as they are free; what is left goes to the first position.
TDealProfit BookDeal(std::span<TPositionFacts* const> positions, const TPositionDeal& deal);

}  // namespace margindesk
