#include "host/engine/FigureBooking.h"

#include <algorithm>

namespace margindesk {

namespace {

constexpr double kMarginPower = 2.5;   // a margin account buys for so much of its trading limit
constexpr double kOnlineShare = 0.8;   // of the trading limit, for orders entered online
constexpr double kCutLossShare = 0.6;  // of the maintenance margin
constexpr std::int32_t kMarginAccount = 1;
constexpr std::string_view kFuturesAccount = "F";

double& At(TFigures& figures, TFigure figure) { return figures[static_cast<std::size_t>(figure)]; }
double At(const TFigures& figures, TFigure figure) { return figures[static_cast<std::size_t>(figure)]; }

double PurchasingPower(const TFigures& figures, const TLimitRules& rules) {
  return rules.FPowerFactor * std::max(At(figures, TFigure::kTradingLimit), 0.0);
}

double WebLimit(const TFigures& figures, const TLimitRules& /*rules*/) {
  return kOnlineShare * std::max(At(figures, TFigure::kTradingLimit), 0.0);
}

double Withdrawable(const TFigures& figures, const TLimitRules& rules) {
  if (rules.FPaysOutByLimit) return std::max(At(figures, TFigure::kTradingLimit), 0.0);
  return std::max(At(figures, TFigure::kCashBalance) - At(figures, TFigure::kForthcomingLimit) -
                      At(figures, TFigure::kHoldFund),
                  0.0);
}

// Figures that follow from others of the row by a rule that is no sum.
struct TRuledFigure {
  TFigure FFigure;
  double (*FRule)(const TFigures& figures, const TLimitRules& rules);
};
constexpr TRuledFigure kRuledFigures[] = {
    {TFigure::kPurchasingPower, &PurchasingPower},
    {TFigure::kWebTradingLimit, &WebLimit},
    {TFigure::kWithdrawableCashBalance, &Withdrawable},
};

TFigures Sum(const TFigures& figures, const TFigures& moves, double ratio) {
  TFigures sum = figures;
  for (std::size_t i = 0; i < kFigureCount; ++i) sum[i] += ratio * moves[i];
  return sum;
}

TFigures ReckonSums(const TFigures& before, const TBooking& booking) {
  const TExposure& exposure = booking.FExposure;
  const double gross = booking.FCash + exposure.FBacking;
  TFigures moves{};
  At(moves, TFigure::kCashBalance) = booking.FCash;
  At(moves, TFigure::kCharges) = booking.FCharge;
  At(moves, TFigure::kNetEquity) = booking.FCash + exposure.FEquity;
  At(moves, TFigure::kInitialMargin) = exposure.FInitial;
  At(moves, TFigure::kMaintenanceMargin) = exposure.FMaintenance;
  At(moves, TFigure::kMarginableAmount) = exposure.FMarginable;
  At(moves, TFigure::kGrossTradingLimit) = gross;
  At(moves, TFigure::kTradingLimit) = gross - booking.FHold;
  At(moves, TFigure::kHoldFund) = booking.FHold;
  At(moves, TFigure::kPendingBuyAmount) = booking.FPendingBuy;
  At(moves, TFigure::kAvailableBase) = booking.FCash - booking.FForthcoming;
  At(moves, TFigure::kAvailableAddition) = booking.FForthcoming;
  At(moves, TFigure::kAvailableDeduction) = booking.FHold;
  At(moves, TFigure::kForthcomingLimit) = booking.FForthcoming;
  At(moves, TFigure::kTradedAmountFirst) = booking.FBought;
  At(moves, TFigure::kTradedAmountSecond) = booking.FSold;
  At(moves, TFigure::kOwnTotalPL) = booking.FTotalPL;
  At(moves, TFigure::kOwnUnrealizedPL) = booking.FUnrealizedPL;
  // An account that was given no such limit for the day has none to use up.
  if (At(before, TFigure::kBodDayTradeLimit) != 0) At(moves, TFigure::kDayTradeLimit) = -booking.FBought;
  if (At(before, TFigure::kBodLotLimit) != 0) At(moves, TFigure::kLotLimit) = -exposure.FLots;
  return moves;
}

}  // namespace

TLimitRules LimitRulesOf(const TAccountFacts& account) {
  const bool futures = account.FType == kFuturesAccount;
  return {account.FMarginType == kMarginAccount && !futures ? kMarginPower : 1, futures};
}

TFigures MoveFigures(TFigureFacts& row, const TBooking& booking, const TLimitRules& rules) {
  const TFigures before = row.FFigures;
  TFigures moves = ReckonSums(before, booking);
  const TFigures after = Sum(before, moves, 1);
  for (const auto& [figure, rule] : kRuledFigures)
    At(moves, figure) = rule(after, rules) - rule(before, rules);
  row.FFigures = Sum(before, moves, 1);
  return moves;
}

void MoveTotal(TFigureFacts& total, const TFigures& moves, double ratio) {
  const TFigures before = total.FFigures;
  TFigures& after = total.FFigures;
  after = Sum(before, moves, ratio);
  const auto call = [](const TFigures& figures) {
    return std::max(-At(figures, TFigure::kGrossTradingLimit), 0.0);
  };
  At(after, TFigure::kMarginCall) += call(after) - call(before);
  At(after, TFigure::kCutLoss) += kCutLossShare * ratio * At(moves, TFigure::kMaintenanceMargin);
  At(after, TFigure::kMaxMargin) =
      std::max(At(after, TFigure::kMaxMargin), At(after, TFigure::kInitialMargin));
}

}  // namespace margindesk
