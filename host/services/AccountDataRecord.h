#pragma once

#include <cstddef>
#include <utility>

#include "host/services/HostContents.h"
#include "model/contract/BaseAccountData.h"

namespace margindesk {

// One account's figures in one currency. Catalogue fields that describe the account are read from the account
// (borrowed).
class TAccountDataRecord final : public TCustomAccountData {
 public:
  TAccountDataRecord(TFigureFacts facts, const TCustomAccount& account)
      : FFacts(std::move(facts)), FAccount(account) {}

  const TFigureFacts& GetFacts() const noexcept { return FFacts; }
  void SetFacts(const TFigureFacts& facts) { FFacts = facts; }

  double GetFigure(TFigure figure) const noexcept {
    return FFacts.FFigures[static_cast<std::size_t>(figure)];
  }

  // A figure by its catalogue field, also those that are put together from two figures of the record; texts
  // of the account; a custom column as a number where the language files say that it holds figures.
  std::string GetDataString(std::int32_t field) const override { return GetDataValue(field).AsText(); }
  TVariant GetDataValue(std::int32_t field) const override;

  TCode GetAccountID() const override { return FFacts.FAccount; }
  TCode GetCurrency() const override { return FFacts.FCurrency; }
  double GetBODCashBalance() const override { return GetFigure(TFigure::kBodCashBalance); }
  double GetCashBalance() const override { return GetFigure(TFigure::kCashBalance); }
  double GetInitialMargin() const override { return GetFigure(TFigure::kInitialMargin); }
  double GetOwnTotalPL() const override { return GetFigure(TFigure::kOwnTotalPL); }
  double GetOwnUnrealizedPL() const override { return GetFigure(TFigure::kOwnUnrealizedPL); }
  bool IsSeparateCurrencyRow() const override { return FFacts.FSeparateRow; }
  double GetBODLotLimit() const override { return GetFigure(TFigure::kBodLotLimit); }
  double GetLotLimit() const override { return GetFigure(TFigure::kLotLimit); }
  double GetForthcomingLimit() const override { return GetFigure(TFigure::kForthcomingLimit); }
  double GetWithdrawableCashBalance() const override { return GetFigure(TFigure::kWithdrawableCashBalance); }
  double GetBODDayTradeLimit() const override { return GetFigure(TFigure::kBodDayTradeLimit); }
  double GetDayTradeLimit() const override { return GetFigure(TFigure::kDayTradeLimit); }
  double AvailableDeduction() const override { return GetFigure(TFigure::kAvailableDeduction); }
  double AvailableAddition() const override { return GetFigure(TFigure::kAvailableAddition); }
  double GetPendingBuyAmount() const override { return GetFigure(TFigure::kPendingBuyAmount); }
  double GetBODWebTradingLimit() const override { return GetFigure(TFigure::kBodWebTradingLimit); }
  double GetWebTradingLimit() const override { return GetFigure(TFigure::kWebTradingLimit); }
  double GetInterest() const override { return GetFigure(TFigure::kInterest); }
  double GetHoldFund() const override { return GetFigure(TFigure::kHoldFund); }
  double MarginableAmount() const override { return GetFigure(TFigure::kMarginableAmount); }
  double TradedAmountSecond() const override { return GetFigure(TFigure::kTradedAmountSecond); }
  double TradedAmountFirst() const override { return GetFigure(TFigure::kTradedAmountFirst); }
  double GetNetEquity() const override { return GetFigure(TFigure::kNetEquity); }
  double AvailableBase() const override { return GetFigure(TFigure::kAvailableBase); }
  double GetGrossTradingLimit() const override { return GetFigure(TFigure::kGrossTradingLimit); }
  double GetCreditInterest() const override { return GetFigure(TFigure::kCreditInterest); }
  double GetDebitInterest() const override { return GetFigure(TFigure::kDebitInterest); }
  double GetMarginLimit() const override { return GetFigure(TFigure::kMarginLimit); }
  double GetMaximumMargin() const override { return GetFigure(TFigure::kMaxMargin); }

 private:
  TVariant GetCustomFigure(std::int32_t number) const;

  TFigureFacts FFacts;
  const TCustomAccount& FAccount;
};

}  // namespace margindesk
