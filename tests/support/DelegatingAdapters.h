#pragma once

#include "model/contract/AccountAdapter.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/MarketAdapter.h"
#include "model/contract/PositionAdapter.h"

namespace margindesk {

// An account that hands every read on.
class TDelegatingAccount : public TCustomAccount {
 public:
  explicit TDelegatingAccount(const TCustomAccount& inner) : FInner(inner) {}

  const TCustomAccountData* GetCurrencyData(TCode currency) const override {
    return FInner.GetCurrencyData(currency);
  }
  const TCustomAccountData* GetSimulatedAccountData(std::string_view key, TCode currency) const override {
    return FInner.GetSimulatedAccountData(key, currency);
  }
  const std::string& GetAttributeValue(std::string_view name) const override {
    return FInner.GetAttributeValue(name);
  }
  TCode GetAccountID() const override { return FInner.GetAccountID(); }
  const std::string& GetCustomValue(std::string_view key) const override {
    return FInner.GetCustomValue(key);
  }
  double GetCustomBalance(TCode currency, std::string_view key) const override {
    return FInner.GetCustomBalance(currency, key);
  }
  std::int32_t GetMasterType() const override { return FInner.GetMasterType(); }
  TCode GetMasterAccountID() const override { return FInner.GetMasterAccountID(); }
  const std::string& GetMobile() const override { return FInner.GetMobile(); }
  const std::string& GetEmail() const override { return FInner.GetEmail(); }
  std::int32_t GetMarginType() const override { return FInner.GetMarginType(); }
  const std::string& GetAccountType() const override { return FInner.GetAccountType(); }
  std::int32_t GetStatusFlags() const override { return FInner.GetStatusFlags(); }
  const std::string& GetBODUpdateTime() const override { return FInner.GetBODUpdateTime(); }
  bool IsMasterAccount() const override { return FInner.IsMasterAccount(); }
  bool IsSubAccount() const override { return FInner.IsSubAccount(); }
  const std::string& GetMarginClass() const override { return FInner.GetMarginClass(); }
  std::int32_t GetDayTradeStatus() const override { return FInner.GetDayTradeStatus(); }
  bool IsOnline() const override { return FInner.IsOnline(); }
  std::int32_t GetAccountCurrencyCount() const override { return FInner.GetAccountCurrencyCount(); }
  TCode GetAccountCurrency(std::int32_t index) const override { return FInner.GetAccountCurrency(index); }
  void GetCurrencyList(std::vector<TCode>& currencies) const override { FInner.GetCurrencyList(currencies); }

 private:
  const TCustomAccount& FInner;
};

// Adapters that hand everything on to the host's own, so that a test can replace one operation. Made while
// the inner adapter is the installed one.

class TDelegatingAccountAdapter : public TCustomAccountAdapter {
 public:
  const TCustomAccount* GetAccount(TCode account, bool load) const override {
    return FInner.GetAccount(account, load);
  }
  void AddAccountInfoLoadHandler(THandler handler, const void* owner) override {
    FInner.AddAccountInfoLoadHandler(handler, owner);
  }
  void RemoveAccountInfoLoadHandler(const void* owner) override {
    FInner.RemoveAccountInfoLoadHandler(owner);
  }
  void RegisterMonitorInfoListener(TCode account, THandler handler, const void* owner,
                                   TCode previous) override {
    FInner.RegisterMonitorInfoListener(account, handler, owner, previous);
  }
  void UnregisterMonitorInfoListener(TCode account, const void* owner) override {
    FInner.UnregisterMonitorInfoListener(account, owner);
  }
  void SubscribeAccountOnlineStatus(TCode account) override { FInner.SubscribeAccountOnlineStatus(account); }
  void UnsubscribeAccountOnlineStatus(TCode account) override {
    FInner.UnsubscribeAccountOnlineStatus(account);
  }
  void RegisterSimulateListener(TCode account, THandler handler, const void* owner, TCode previous) override {
    FInner.RegisterSimulateListener(account, handler, owner, previous);
  }
  void UnregisterSimulateListener(TCode account, const void* owner) override {
    FInner.UnregisterSimulateListener(account, owner);
  }
  void GetSubAccountList(TCode master, TAccountMap& subAccounts) const override {
    FInner.GetSubAccountList(master, subAccounts);
  }
  const std::string& GetCustomFieldKey(std::string_view table, std::string_view field) const override {
    return FInner.GetCustomFieldKey(table, field);
  }
  const TCustomAccountData* GetConsolidatedAccountData(TCode account, TCode currency) const override {
    return FInner.GetConsolidatedAccountData(account, currency);
  }

 private:
  TCustomAccountAdapter& FInner = TCustomAccountAdapter::GetInstance();
};

class TDelegatingPositionAdapter : public TCustomPositionAdapter {
 public:
  void AddPositionMarketDataHandler(THandler handler, const void* owner) override {
    FInner.AddPositionMarketDataHandler(handler, owner);
  }
  void RemovePositionMarketDataHandler(const void* owner) override {
    FInner.RemovePositionMarketDataHandler(owner);
  }
  void RegisterPositionListener(TCode account, THandler handler, const void* owner, TCode previous) override {
    FInner.RegisterPositionListener(account, handler, owner, previous);
  }
  void UnregisterPositionListener(TCode account, const void* owner) override {
    FInner.UnregisterPositionListener(account, owner);
  }
  void RegisterSubAccountPositionListener(TCode master, THandler handler, const void* owner,
                                          TCode previous) override {
    FInner.RegisterSubAccountPositionListener(master, handler, owner, previous);
  }
  void UnregisterSubAccountPositionListener(TCode master, const void* owner) override {
    FInner.UnregisterSubAccountPositionListener(master, owner);
  }
  void GetPositionList(TCode account, TPositionMap& positions) const override {
    FInner.GetPositionList(account, positions);
  }
  bool GetPositionMarketValue(TCode symbol, double quantity, double& value) const override {
    return FInner.GetPositionMarketValue(symbol, quantity, value);
  }
  const std::string& GetPositionIsolationText(TCode account) const override {
    return FInner.GetPositionIsolationText(account);
  }
  const std::string& GetMarginMethodText(TCode account) const override {
    return FInner.GetMarginMethodText(account);
  }

 private:
  TCustomPositionAdapter& FInner = TCustomPositionAdapter::GetInstance();
};

class TDelegatingMarketAdapter : public TCustomMarketAdapter {
 public:
  const TCustomProduct* GetProduct(TCode symbol) const override { return FInner.GetProduct(symbol); }
  const TCustomSpreadTable* GetSpreadTable(TCode marketCode) const override {
    return FInner.GetSpreadTable(marketCode);
  }
  bool IsExchangeOpen(TCode exchange) const override { return FInner.IsExchangeOpen(exchange); }

 private:
  TCustomMarketAdapter& FInner = TCustomMarketAdapter::GetInstance();
};

}  // namespace margindesk
