#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace margindesk {

// The figures that the book keeps for one account in one currency, or for the account's total row. This list
// is the only one: the columns of the tables `figures` and `consolidated` are made from it, in this order.
enum class TFigure : std::size_t {
  kTradingLimit,
  kCashBalance,
  kBodTradingLimit,
  kBodCashBalance,
  kCashInOut,
  kInitialMargin,
  kMaintenanceMargin,
  kCharges,
  kNetEquity,
  kCutLoss,
  kCreditLimit,
  kCreditLimitDds,
  kMarginCall,
  kPurchasingPower,
  kWithdrawableCashBalance,
  kBodWebTradingLimit,
  kWebTradingLimit,
  kHoldFund,
  kGrossTradingLimit,
  kMarginLimit,
  kAvailableBase,
  kAvailableAddition,
  kAvailableDeduction,
  kDebitInterest,
  kCreditInterest,
  kMaxMargin,
  kForthcomingLimit,
  kBodLotLimit,
  kLotLimit,
  kBodDayTradeLimit,
  kDayTradeLimit,
  kInterest,
  kPendingBuyAmount,
  kTradedAmountFirst,
  kTradedAmountSecond,
  kMarginableAmount,
  kOwnTotalPL,
  kOwnUnrealizedPL,
};

// A figure that no field of the account field catalogue shows by itself.
inline constexpr int kNoField = -1;

struct TFigureInfo {
  TFigure FFigure;
  std::string_view FColumn;  // name of the column in the book
  int FField;                // field identifier of the account field catalogue, or kNoField
};

inline constexpr auto kFigureList = std::to_array<TFigureInfo>({
    {TFigure::kTradingLimit, "trading_limit", 155},
    {TFigure::kCashBalance, "cash_balance", 156},
    {TFigure::kBodTradingLimit, "bod_trading_limit", 185},
    {TFigure::kBodCashBalance, "bod_cash_balance", 186},
    {TFigure::kCashInOut, "cash_in_out", 9018},
    {TFigure::kInitialMargin, "initial_margin", 604},
    {TFigure::kMaintenanceMargin, "maintenance_margin", 606},
    {TFigure::kCharges, "charges", 1502},
    {TFigure::kNetEquity, "net_equity", 1503},
    {TFigure::kCutLoss, "cut_loss", 445},
    {TFigure::kCreditLimit, "credit_limit", 9028},
    {TFigure::kCreditLimitDds, "credit_limit_dds", 1205},
    {TFigure::kMarginCall, "margin_call", 996},
    {TFigure::kPurchasingPower, "purchasing_power", 1206},
    {TFigure::kWithdrawableCashBalance, "withdrawable_cash_balance", 700},
    {TFigure::kBodWebTradingLimit, "bod_web_trading_limit", 467},
    {TFigure::kWebTradingLimit, "web_trading_limit", 468},
    {TFigure::kHoldFund, "hold_fund", 626},
    {TFigure::kGrossTradingLimit, "gross_trading_limit", 10000},
    {TFigure::kMarginLimit, "margin_limit", 449},
    {TFigure::kAvailableBase, "available_base", kNoField},
    {TFigure::kAvailableAddition, "available_addition", kNoField},
    {TFigure::kAvailableDeduction, "available_deduction", kNoField},
    {TFigure::kDebitInterest, "debit_interest", 10001},
    {TFigure::kCreditInterest, "credit_interest", 10002},
    {TFigure::kMaxMargin, "max_margin", 10007},
    {TFigure::kForthcomingLimit, "forthcoming_limit", 196},
    {TFigure::kBodLotLimit, "bod_lot_limit", 195},
    {TFigure::kLotLimit, "lot_limit", 194},
    {TFigure::kBodDayTradeLimit, "bod_day_trade_limit", 432},
    {TFigure::kDayTradeLimit, "day_trade_limit", 431},
    {TFigure::kInterest, "interest", 526},
    {TFigure::kPendingBuyAmount, "pending_buy_amount", 10013},
    {TFigure::kTradedAmountFirst, "traded_amount_first", kNoField},
    {TFigure::kTradedAmountSecond, "traded_amount_second", kNoField},
    {TFigure::kMarginableAmount, "marginable_amount", kNoField},
    {TFigure::kOwnTotalPL, "own_total_pl", kNoField},
    {TFigure::kOwnUnrealizedPL, "own_unrealized_pl", kNoField},
});

inline constexpr std::size_t kFigureCount = kFigureList.size();

// The figure that a catalogue field shows unchanged; none for a field that is computed or is no figure.
constexpr std::optional<TFigure> FigureOfField(int field) {
  for (const TFigureInfo& info : kFigureList) {
    if (info.FField == field && field != kNoField) return info.FFigure;
  }
  return std::nullopt;
}

}  // namespace margindesk
