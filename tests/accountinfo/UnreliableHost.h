#pragma once

#include <map>
#include <memory>
#include <random>

#include "model/contract/UserAppProfile.h"
#include "tests/support/DelegatingAdapters.h"

namespace margindesk {

// Answers "none" at random, one time in `FOneIn`.
struct TWhim {
  std::mt19937 FRandom;
  unsigned FOneIn = 4;

  bool operator()() { return FRandom() % FOneIn == 0; }
};

// Records that are there, and now and then not.

class TUnreliableAccount : public TDelegatingAccount {
 public:
  TUnreliableAccount(const TCustomAccount& inner, TWhim& whim) : TDelegatingAccount(inner), FWhim(whim) {}

  const TCustomAccountData* GetCurrencyData(TCode currency) const override {
    return FWhim() ? nullptr : TDelegatingAccount::GetCurrencyData(currency);
  }
  TCode GetMasterAccountID() const override {
    return FWhim() ? TCode() : TDelegatingAccount::GetMasterAccountID();
  }
  TCode GetAccountCurrency(std::int32_t index) const override {
    return FWhim() ? TCode() : TDelegatingAccount::GetAccountCurrency(index);
  }

 private:
  TWhim& FWhim;
};

class TUnreliablePosition : public TCustomPositionData {
 public:
  TUnreliablePosition(const TCustomPositionData& inner, TWhim& whim) : FInner(inner), FWhim(whim) {}

  const TCustomSubItem* GetReferenceItem() const override {
    return FWhim() ? nullptr : FInner.GetReferenceItem();
  }
  TVariant GetDataValue(std::int32_t field) const override {
    return FWhim() ? TVariant() : FInner.GetDataValue(field);
  }
  TCode GetAccountID() const override { return FInner.GetAccountID(); }
  TCode GetSymbol() const override { return FWhim() ? TCode() : FInner.GetSymbol(); }
  double GetHoldingQuantity() const override { return FInner.GetHoldingQuantity(); }
  double GetExcludedQuantity() const override { return FInner.GetExcludedQuantity(); }
  double GetCompletedBuyAmount() const override { return FInner.GetCompletedBuyAmount(); }
  double GetCompletedSellAmount() const override { return FInner.GetCompletedSellAmount(); }
  bool IsPriceBasedPL() const override { return FWhim() || FInner.IsPriceBasedPL(); }
  double GetPLFirstPart() const override { return FInner.GetPLFirstPart(); }
  double GetRealizedPL() const override { return FInner.GetRealizedPL(); }
  double GetPLSecondPart() const override { return FInner.GetPLSecondPart(); }

 private:
  const TCustomPositionData& FInner;
  TWhim& FWhim;
};

// Adapters of the installed host that answer none at random.

class TUnreliableAccounts : public TDelegatingAccountAdapter {
 public:
  explicit TUnreliableAccounts(TWhim& whim) : FWhim(whim) {}

  const TCustomAccount* GetAccount(TCode account, bool load) const override {
    return FWhim() ? nullptr : Wrap(TDelegatingAccountAdapter::GetAccount(account, load));
  }
  void GetSubAccountList(TCode master, TAccountMap& subAccounts) const override {
    TDelegatingAccountAdapter::GetSubAccountList(master, subAccounts);
    for (auto& [identifier, account] : subAccounts) account = FWhim() ? nullptr : Wrap(account);
  }
  const std::string& GetCustomFieldKey(std::string_view table, std::string_view field) const override {
    static const std::string kNone;
    return FWhim() ? kNone : TDelegatingAccountAdapter::GetCustomFieldKey(table, field);
  }
  const TCustomAccountData* GetConsolidatedAccountData(TCode account, TCode currency) const override {
    return FWhim() ? nullptr : TDelegatingAccountAdapter::GetConsolidatedAccountData(account, currency);
  }

 private:
  const TCustomAccount* Wrap(const TCustomAccount* account) const {
    if (account == nullptr) return nullptr;
    auto& wrapped = FWrapped[account];
    if (!wrapped) wrapped = std::make_unique<TUnreliableAccount>(*account, FWhim);
    return wrapped.get();
  }

  TWhim& FWhim;
  mutable std::map<const TCustomAccount*, std::unique_ptr<TUnreliableAccount>> FWrapped;
};

class TUnreliablePositions : public TDelegatingPositionAdapter {
 public:
  explicit TUnreliablePositions(TWhim& whim) : FWhim(whim) {}

  void GetPositionList(TCode account, TPositionMap& positions) const override {
    positions.Clear();
    if (FWhim()) return;
    TPositionMap inner;
    TDelegatingPositionAdapter::GetPositionList(account, inner);
    auto contents = std::make_shared<TPositionMap::TContents>();
    auto wrapped = std::make_shared<std::vector<std::unique_ptr<TUnreliablePosition>>>();
    for (const TCustomPositionData* position : inner.GetPositions()) {
      wrapped->push_back(std::make_unique<TUnreliablePosition>(*position, FWhim));
      contents->FPositions.push_back(wrapped->back().get());
    }
    contents->FKeys.assign(inner.GetKeys().begin(), inner.GetKeys().end());
    contents->FKeepAlive =
        std::make_shared<std::pair<TPositionMap, std::shared_ptr<const void>>>(inner, wrapped);
    positions = TPositionMap(std::move(contents));
  }
  bool GetPositionMarketValue(TCode symbol, double quantity, double& value) const override {
    return !FWhim() && TDelegatingPositionAdapter::GetPositionMarketValue(symbol, quantity, value);
  }

 private:
  TWhim& FWhim;
};

class TUnreliableMarket : public TDelegatingMarketAdapter {
 public:
  explicit TUnreliableMarket(TWhim& whim) : FWhim(whim) {}
  const TCustomProduct* GetProduct(TCode symbol) const override {
    return FWhim() ? nullptr : TDelegatingMarketAdapter::GetProduct(symbol);
  }

 private:
  TWhim& FWhim;
};

class TUnreliableProfile : public TCustomUserAppProfile {
 public:
  explicit TUnreliableProfile(TWhim& whim) : FWhim(whim) {}
  bool IsFunctionEnabled(std::string_view name) const override { return FInner.IsFunctionEnabled(name); }
  TCode GetDefaultAccount() const override { return FInner.GetDefaultAccount(); }
  std::int32_t GetUserType() const override { return FInner.GetUserType(); }
  bool GetUserTypeFlag() const override { return FInner.GetUserTypeFlag(); }
  bool GetPeriodExchangeList(std::vector<TCode>& exchanges) const override {
    return !FWhim() && FInner.GetPeriodExchangeList(exchanges);
  }

 private:
  TCustomUserAppProfile& FInner = TCustomUserAppProfile::GetInstance();
  TWhim& FWhim;
};

}  // namespace margindesk
