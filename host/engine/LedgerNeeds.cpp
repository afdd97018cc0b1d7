// What orders need, and what they hold while they rest.
#include <algorithm>
#include <cmath>

#include "host/engine/Ledger.h"
#include "model/contract/Constdef.h"

namespace margindesk {

namespace {

double SumOfHoldings(const std::vector<TExposedPosition>& positions, TCode symbol) {
  double sum = 0;
  for (const TExposedPosition& exposed : positions) {
    if (exposed.FPosition.FSymbol == symbol) sum += exposed.FPosition.FHoldingQuantity;
  }
  return sum;
}

}  // namespace

double TLedger::ReckonGross(const TProductFacts& product) const {
  const std::size_t row = FFigures.Find(TargetOf(product).GetAccountID(), product.FCurrency);
  if (row == FFigures.FRows.size()) return 0;
  return FigureIn(FFigures.FRows[row], TFigure::kGrossTradingLimit);
}

TOrderNeed TLedger::ReckonNeed(const TOrderFacts& order) const {
  const TSymbolFacts& facts = *FindSymbolFacts(*FData, order.FSymbol);
  const TProductFacts& product = facts.FProduct;
  const TDeal deal = DealOf(facts, order);
  const double amount = deal.FPrice * deal.FQuantity * product.FContractSize;
  // The account as it would be when what rests on the same side has dealt: two orders cannot both close one
  // position.
  TLedger trial = *this;
  if (const double pending = trial.PendingOf(order); pending > 0 && !IsCashProduct(product)) {
    trial.ApplyFill(order, {deal.FPrice, pending});
  }
  const double holding = SumOfHoldings(trial.Collect(*FAccount, product), order.FSymbol);
  const TExposure before = ReckonExposure(*FData, trial.Collect(*FAccount, product));
  const double gross = trial.ReckonGross(product);
  const double charge = trial.ApplyFill(order, deal);
  const TExposure move = ReckonExposure(*FData, trial.Collect(*FAccount, product)) - before;

  TOrderNeed need;
  if (IsCashProduct(product)) {
    if (order.FSide == kSideBuy) {
      need.FHold = amount;
      need.FRequired = std::max(gross - trial.ReckonGross(product), 0.0);
    }
  } else {
    if (IsOption(product) && order.FSide == kSideBuy) {
      const double opened = std::max(deal.FQuantity - std::max(-holding, 0.0), 0.0);
      need.FHold = deal.FPrice * opened * product.FContractSize;
    } else {
      need.FHold = std::max(move.FInitial, 0.0);
    }
    need.FRequired = need.FHold > 0 ? need.FHold + charge : 0;
  }
  const TCode account = TargetOf(product).GetAccountID();
  const std::size_t own = FFigures.Find(account, product.FCurrency);
  const std::size_t total = FFigures.Find(account, TCode());
  const bool separate = own < FFigures.FRows.size() && FFigures.FRows[own].FSeparateRow;
  const bool whole = total < FFigures.FRows.size() && !separate && !FData->IsExcluded(product.FCurrency);
  const std::size_t row = whole ? total : own;
  if (!whole) need.FLimitCurrency = product.FCurrency;
  if (whole) need.FRequired *= FData->GetRatio(product.FCurrency);
  if (row < FFigures.FRows.size()) need.FAvailable = FigureIn(FFigures.FRows[row], TFigure::kTradingLimit);
  return need;
}

void TLedger::Reserve(TOrderFacts& order) {
  order.FHoldAmount = ReckonNeed(order).FHold;
  PendingOf(order) += order.FQuantity - order.FFilledQuantity;
  BookHold(order, order.FHoldAmount);
}

void TLedger::Release(TOrderFacts& order) {
  double& pending = PendingOf(order);
  pending = std::max(pending - (order.FQuantity - order.FFilledQuantity), 0.0);
  BookHold(order, -order.FHoldAmount);
  order.FHoldAmount = 0;
}

void TLedger::BookHold(const TOrderFacts& order, double amount) {
  if (amount == 0) return;
  const TProductFacts& product = FindSymbolFacts(*FData, order.FSymbol)->FProduct;
  TBooking booking;
  booking.FHold = amount;
  if (order.FSide == kSideBuy && !IsFuture(product)) booking.FPendingBuy = amount;
  BookFigures(product, booking, TExposure());
}

double TLedger::ReckonSellable(TCode symbol) const {
  const TSymbolFacts* facts = FindSymbolFacts(*FData, symbol);
  double free = 0;
  for (const TExposedPosition& exposed : Collect(*FAccount, facts->FProduct)) {
    if (exposed.FPosition.FHoldingQuantity > 0) free += ReckonFreeQuantity(exposed.FPosition);
  }
  const auto pending = FPending.find(symbol);
  return std::max(free - (pending == FPending.end() ? 0 : pending->second.FSell), 0.0);
}

}  // namespace margindesk
