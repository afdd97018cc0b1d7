#include "host/engine/PositionBooking.h"

#include <algorithm>
#include <cmath>

#include "model/contract/Constdef.h"

namespace margindesk {

namespace {

double WholeIfNone(double quantity) { return std::abs(quantity) <= kZeroTolerance ? 0 : quantity; }

// The average of what was there and what is added.
double AverageOf(double quantity, double average, double added, double price) {
  return (quantity * average + added * price) / (quantity + added);
}

void CountDay(TPositionFacts& position, const TPositionDeal& deal) {
  const bool bought = deal.FQuantity > 0;
  const double units = std::abs(deal.FQuantity);
  double& quantity = bought ? position.FTodayBuyQuantity : position.FTodaySellQuantity;
  double& average = bought ? position.FBuyAveragePrice : position.FSellAveragePrice;
  double& amount = bought ? position.FCompletedBuyAmount : position.FCompletedSellAmount;
  average = AverageOf(quantity, average, units, deal.FPrice);
  quantity += units;
  amount += deal.FPrice * units * deal.FContractSize;
}

TDealProfit BookInto(TPositionFacts& position, const TPositionDeal& deal) {
  const double before = position.FHoldingQuantity;
  const double units = std::abs(deal.FQuantity);
  const bool closes = before * deal.FQuantity < 0;
  const double closed = closes ? std::min(std::abs(before), units) : 0;
  const double opened = units - closed;
  TDealProfit profit;
  profit.FTotal = (deal.FMark - deal.FPrice) * deal.FQuantity * deal.FContractSize;
  profit.FRealized =
      (deal.FPrice - position.FAveragePrice) * std::copysign(closed, before) * deal.FContractSize;

  const double after = WholeIfNone(before + deal.FQuantity);
  if (after == 0) {
    position.FAveragePrice = 0;
  } else if (!closes) {
    position.FAveragePrice = AverageOf(std::abs(before), position.FAveragePrice, opened, deal.FPrice);
  } else if (WholeIfNone(opened) > 0) {
    position.FAveragePrice = deal.FPrice;  // the side has turned
  }
  position.FHoldingQuantity = after;
  position.FQuantity = WholeIfNone(position.FQuantity + deal.FQuantity);
  position.FShort = after < 0;
  position.FCoveredQuantity = std::min(position.FCoveredQuantity, std::abs(after));
  position.FPLSecondPart += profit.FTotal;
  position.FRealizedPL += profit.FRealized;
  CountDay(position, deal);
  return profit;
}

}  // namespace

double ReckonFreeQuantity(const TPositionFacts& position) {
  double bound = std::abs(position.FExcludedQuantity);
  if (position.FHoldingQuantity > 0) bound += position.FCoveredQuantity + position.FVoucherQuantity;
  return std::max(std::abs(position.FHoldingQuantity) - bound, 0.0);
}

TDealProfit BookDeal(std::span<TPositionFacts* const> positions, const TPositionDeal& deal) {
  TDealProfit profit;
  const auto book = [&profit, &deal](TPositionFacts& position, double units) {
    TPositionDeal part = deal;
    part.FQuantity = std::copysign(units, deal.FQuantity);
    const TDealProfit made = BookInto(position, part);
    profit.FTotal += made.FTotal;
    profit.FRealized += made.FRealized;
  };
  double left = std::abs(deal.FQuantity);
  for (TPositionFacts* position : positions) {
    if (!(position->FHoldingQuantity * deal.FQuantity < 0)) continue;
    const double units = std::min(left, ReckonFreeQuantity(*position));
    if (!(units > 0)) continue;
    book(*position, units);
    left = WholeIfNone(left - units);
  }
  if (left > 0) book(*positions.front(), left);
  return profit;
}

}  // namespace margindesk
