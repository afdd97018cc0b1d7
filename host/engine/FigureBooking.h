#pragma once

#include "host/engine/Exposure.h"

namespace margindesk {

// What happened to an account in one currency.
struct TBooking {
  double FCash = 0;
  double FCharge = 0;       // in FCash already
  double FForthcoming = 0;  // sold and not yet paid for
  double FBought = 0;
  double FSold = 0;
  double FHold = 0;        // more of the trading limit on hold for resting orders
  double FPendingBuy = 0;  // more to be paid by resting purchases
  double FTotalPL = 0;
  double FUnrealizedPL = 0;
  TExposure FExposure;  // what the positions add, after less before
};

// How an account's limits follow from its balances.
struct TLimitRules {
  double FPowerFactor = 1;       // purchasing power for a unit of trading limit
  bool FPaysOutByLimit = false;  // a futures account: what may be paid out is its trading limit
};
TLimitRules LimitRulesOf(const TAccountFacts& account);

inline double FigureIn(const TFigureFacts& facts, TFigure figure) {
  return facts.FFigures[static_cast<std::size_t>(figure)];
}

// Moves the figures of one currency by what happened. Each figure moves by its rule after less its rule
// before, so that figures that nothing happened to stay as they were given. Gives back by how much.
TFigures MoveFigures(TFigureFacts& row, const TBooking& booking, const TLimitRules& rules);

// Moves an account's total row by the moves of one of its currencies; `ratio` brings them into the base
// currency. What is known of the account as a whole alone follows from the total row.
void MoveTotal(TFigureFacts& total, const TFigures& moves, double ratio);

}  // namespace margindesk
