#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "model/contract/BaseData.h"
#include "model/contract/Code.h"

namespace margindesk {

// One account's figures in one currency; an empty currency is the account's total row, in the base currency.
// Every figure is an amount in the row's currency at full precision, or a count of lots for the lot limits.
// The number after a read is the catalogue field it feeds. Reads are in slot order.
//
// GetDataValue gives any catalogue field of the record as a double (a text for a text column), and the value
// of custom column n under the field 100000 + n.
class TCustomAccountData : public TBaseData {
 public:
  virtual TCode GetAccountID() const = 0;
  virtual TCode GetCurrency() const = 0;
  virtual double GetBODCashBalance() const = 0;   // 186
  virtual double GetCashBalance() const = 0;      // 156
  virtual double GetInitialMargin() const = 0;    // 604
  virtual double GetOwnTotalPL() const = 0;       // the back office's own profit and loss of this currency
  virtual double GetOwnUnrealizedPL() const = 0;  // and its unrealised part
  virtual bool IsSeparateCurrencyRow()
      const = 0;                              // shown as a row of its own and added to the account totals
  virtual double GetBODLotLimit() const = 0;  // 195, lots
  virtual double GetLotLimit() const = 0;     // 194, lots
  virtual double GetForthcomingLimit() const = 0;         // 196
  virtual double GetWithdrawableCashBalance() const = 0;  // 700
  virtual double GetBODDayTradeLimit() const = 0;         // 432
  virtual double GetDayTradeLimit() const = 0;            // 431
  virtual double AvailableDeduction() const = 0;          // taken off the available balance (469)
  virtual double AvailableAddition() const = 0;           // added to the available balance
  virtual double GetPendingBuyAmount() const = 0;         // 10013
  virtual double GetBODWebTradingLimit() const = 0;       // 467
  virtual double GetWebTradingLimit() const = 0;          // 468
  virtual double GetInterest() const = 0;                 // 526
  virtual double GetHoldFund() const = 0;                 // 626
  virtual double MarginableAmount() const = 0;    // what the account's holdings can be lent against (10014)
  virtual double TradedAmountSecond() const = 0;  // 10012 is the first traded amount less the second
  virtual double TradedAmountFirst() const = 0;
  virtual double GetNetEquity() const = 0;          // 1503
  virtual double AvailableBase() const = 0;         // what the available balance starts from
  virtual double GetGrossTradingLimit() const = 0;  // 10000
  virtual double GetCreditInterest() const = 0;     // 10002
  virtual double GetDebitInterest() const = 0;      // 10001
  virtual double GetMarginLimit() const = 0;        // 449
  virtual double GetMaximumMargin() const = 0;      // 10007
};

// One account. Reads are in slot order.
class TCustomAccount : public TBaseData {
 public:
  // A named attribute ("ClientFeature": "1" net, "2" gross margining; "MobileCCode"); "" when the account has
  // none.
  virtual const std::string& GetAttributeValue(std::string_view name) const = 0;
  virtual TCode GetAccountID() const = 0;
  // The figures in a currency, empty for the total row; null when the account has none.
  virtual const TCustomAccountData* GetCurrencyData(TCode currency) const = 0;
  // A custom field's text under a key from the account adapter's GetCustomFieldKey; "" when there is none.
  virtual const std::string& GetCustomValue(std::string_view key) const = 0;
  virtual double GetCustomBalance(TCode currency, std::string_view key) const = 0;  // 0 when there is none
  virtual std::int32_t GetMasterType() const = 0;  // 10: a consolidated (cross-out) master; 0 for no master
  virtual TCode GetMasterAccountID() const = 0;    // of a sub-account; empty otherwise
  virtual const std::string& GetMobile() const = 0;
  virtual const std::string& GetEmail() const = 0;
  virtual std::int32_t GetMarginType() const = 0;  // 0 cash, 1 margin, 2 custodian, 5 delivery versus payment
  virtual const std::string& GetAccountType() const = 0;    // "S" stock, "F" futures
  virtual std::int32_t GetStatusFlags() const = 0;          // bit 1024 suspended, bit 2048 sell only
  virtual const std::string& GetBODUpdateTime() const = 0;  // 33
  virtual bool IsMasterAccount() const = 0;
  virtual bool IsSubAccount() const = 0;
  virtual const std::string& GetMarginClass() const = 0;  // 10010; "N/A" for none
  virtual std::int32_t GetDayTradeStatus() const = 0;     // -1 inactive, 0 active
  virtual bool IsOnline() const = 0;                      // 10009
  // The account's currencies in their order; the total row is none of them.
  virtual std::int32_t GetAccountCurrencyCount() const = 0;
  virtual TCode GetAccountCurrency(std::int32_t index) const = 0;
  // The figures of a simulation; null when the key is unknown or has no data in the currency.
  virtual const TCustomAccountData* GetSimulatedAccountData(std::string_view simulationKey,
                                                            TCode currency) const = 0;
  virtual void GetCurrencyList(std::vector<TCode>& currencies) const = 0;  // appends the account's currencies
};

// Accounts by identifier, in the order of the identifiers' texts. The records are the host's.
using TAccountMap = std::map<TCode, const TCustomAccount*, TCodeTextLess>;

}  // namespace margindesk
