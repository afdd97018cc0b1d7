#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/services/AccountDataRecord.h"
#include "host/services/HostContents.h"
#include "host/services/PositionRecord.h"
#include "model/contract/BaseAccountData.h"

namespace margindesk {

// The figures of one account by currency, few enough to be looked through.
class TAccountDataList {
 public:
  explicit TAccountDataList(const TCustomAccount& account) : FAccount(account) {}

  const TAccountDataRecord* Find(TCode currency) const noexcept;  // null when there are none
  const std::vector<TCode>& GetCurrencies() const noexcept { return FCurrencies; }  // without the total row
  void Set(const TFigureFacts& facts);                                              // adds or replaces
  void Clear();

 private:
  const TCustomAccount& FAccount;
  std::vector<TCode> FCurrencies;
  std::vector<std::unique_ptr<TAccountDataRecord>> FRecords;
};

// One account with its figures and positions. The record lives as long as the host, also when the account
// goes: it then reads as blank.
class TAccountRecord final : public TCustomAccount {
 public:
  explicit TAccountRecord(TCode account) : FAccount(account) {}
  TAccountRecord(const TAccountRecord&) = delete;
  TAccountRecord& operator=(const TAccountRecord&) = delete;

  const std::string& GetAttributeValue(std::string_view name) const override;
  TCode GetAccountID() const override { return FAccount; }
  const TCustomAccountData* GetCurrencyData(TCode currency) const override { return FFigures.Find(currency); }
  const std::string& GetCustomValue(std::string_view key) const override;
  double GetCustomBalance(TCode currency, std::string_view key) const override;
  std::int32_t GetMasterType() const override { return FFacts.FMasterType.value_or(0); }
  TCode GetMasterAccountID() const override { return FFacts.FMaster; }
  const std::string& GetMobile() const override { return FFacts.FMobile; }
  const std::string& GetEmail() const override { return FFacts.FEmail; }
  std::int32_t GetMarginType() const override { return FFacts.FMarginType; }
  const std::string& GetAccountType() const override { return FFacts.FType; }
  std::int32_t GetStatusFlags() const override { return FFacts.FStatusFlags; }
  const std::string& GetBODUpdateTime() const override { return FFacts.FBODUpdateTime; }
  bool IsMasterAccount() const override { return FFacts.FMasterType.has_value(); }
  bool IsSubAccount() const override { return !FFacts.FMaster.IsEmpty(); }
  const std::string& GetMarginClass() const override { return FFacts.FMarginClass; }
  std::int32_t GetDayTradeStatus() const override { return FFacts.FDayTradeStatus; }
  bool IsOnline() const override { return FFacts.FOnline; }
  std::int32_t GetAccountCurrencyCount() const override;
  TCode GetAccountCurrency(std::int32_t index) const override;  // empty out of range
  const TCustomAccountData* GetSimulatedAccountData(std::string_view simulationKey,
                                                    TCode currency) const override;
  void GetCurrencyList(std::vector<TCode>& currencies) const override;

  // The catalogue's texts of an account: 10, 13, 21, 33 and 10010.
  std::string GetDataString(std::int32_t field) const override { return GetDataValue(field).AsText(); }
  TVariant GetDataValue(std::int32_t field) const override;

  // What follows is the host's own.
  bool FKnown = false;
  TAccountFacts FFacts;
  TAccountDataList FFigures{*this};
  TAccountDataList FConsolidated{*this};
  std::shared_ptr<TPositionBlock> FPositions;  // null for none
  std::vector<TCode> FSubAccounts;             // the accounts that name this one as their master
  std::map<std::string, TAccountDataList, std::less<>> FSimulations;  // by their keys

 private:
  const TCode FAccount;
};

}  // namespace margindesk
