#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/engine/FigureBooking.h"
#include "host/engine/PositionBooking.h"
#include "host/services/BookChange.h"
#include "host/services/HostData.h"

namespace margindesk {

// A price and a quantity at which an order deals, in units.
struct TDeal {
  double FPrice = 0;
  double FQuantity = 0;
};

// The deal that an order is for: at its own price, a market order at what the market gives or asks for now. A
// fund is dealt in at its last price: a purchase names an amount in its price and gets the units for it, in
// whole lots. A price of 0: the market has none.
TDeal DealOf(const TSymbolFacts& facts, const TOrderFacts& order);

// What an order asks of the trading limit, in the product's currency.
struct TOrderNeed {
  double FHold = 0;       // held while it rests
  double FRequired = 0;   // must be there for it to be placed; 0 for one that frees more than it takes
  double FAvailable = 0;  // what is there
  TCode FLimitCurrency;   // of FAvailable and FRequired; empty: the base currency
};

// What bookings make of one account: a copy of its figures, its master's consolidated ones and its positions,
// into which orders are booked. Fills of simulated orders and of real ones go through here alike. Nothing of
// the host's data changes; it must not change either while the ledger lives.
//
// While China Connect is on, an order on one of its exchanges moves the figures of the account's linked
// account; the positions stay the account's own.
class TLedger {
 public:
  TLedger(const THostData& data, TCode account);  // of an account that is there

  // Books a deal of an order in a listed product. Gives back the charge.
  double ApplyFill(const TOrderFacts& order, const TDeal& deal);

  // Holds what an order needs while it rests, and writes into the order how much that is.
  void Reserve(TOrderFacts& order);

  // Lets go of what a resting order holds.
  void Release(TOrderFacts& order);

  // What an order would need. It is not among those that rest.
  TOrderNeed ReckonNeed(const TOrderFacts& order) const;

  // What is left to be sold of a product: what is free of the account's long positions, less resting sales.
  double ReckonSellable(TCode symbol) const;

  // The figures of the account and, behind them, of its linked account where orders may move it.
  const std::vector<TFigureFacts>& GetFigures() const noexcept { return FFigures.FRows; }

  // What has changed, without orders and fills.
  TBookChange GetChange() const;

 private:
  // What the account's resting orders in one symbol may still deal.
  struct TPending {
    double FBuy = 0;
    double FSell = 0;
  };
  // Figures by account and currency, and which of them bookings have moved.
  struct TRows {
    std::vector<TFigureFacts> FRows;
    std::vector<bool> FTouched;

    void Copy(const TAccountDataList& list);
    std::size_t Find(TCode account, TCode currency) const noexcept;  // past the last one for none
    TFigureFacts& Touch(TCode account, TCode currency);              // adds a row where there is none
    std::vector<TFigureFacts> GetTouched() const;
  };

  double& PendingOf(const TOrderFacts& order);
  const TAccountRecord& TargetOf(const TProductFacts& product) const;  // whose figures an order moves
  std::vector<TExposedPosition> Collect(const TAccountRecord& account, const TProductFacts& product) const;
  std::vector<TExposedPosition> CollectGroup(const TProductFacts& product) const;  // the master's accounts
  TDealProfit BookPositions(const TSymbolFacts& facts, const TOrderFacts& order, const TDeal& deal);
  void BookFigures(const TProductFacts& product, TBooking booking, const TExposure& groupMove);
  void BookHold(const TOrderFacts& order, double amount);
  void MoveRows(TRows& rows, TCode account, const TProductFacts& product, const TBooking& booking,
                const TLimitRules& rules);
  double ReckonGross(const TProductFacts& product) const;

  const THostData* FData;
  const TAccountRecord* FAccount;
  const TAccountRecord* FLinked = nullptr;  // where orders may move it
  const TAccountRecord* FMaster = nullptr;  // where it has consolidated figures
  TRows FFigures;
  TRows FConsolidated;
  std::map<std::string, TPositionFacts, std::less<>> FPositions;  // those that have changed, by key
  std::map<TCode, TPending, TCodeTextLess> FPending;
};

}  // namespace margindesk
