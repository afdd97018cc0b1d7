#include "accountinfo/data/AccountInfoDataControl.h"

#include <algorithm>

#include "model/AccountInfoConstDef.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/PositionAdapter.h"

namespace margindesk {

TAccountInfoDataControl::TAccountInfoDataControl(TComponent* owner)
    : TCustomAccountInfoDataControl(owner, kCustomColumnSection) {
  TCustomPositionAdapter::GetInstance().AddPositionMarketDataHandler(
      MakeHandler<&TAccountInfoDataControl::PositionMarketDataUpdate>(this), this);
  TCustomAccountAdapter::GetInstance().AddAccountInfoLoadHandler(
      MakeHandler<&TAccountInfoDataControl::AccountInfoLoadUpdate>(this), this);

  const auto& config = TCustomConfigManager::GetInstance();
  const std::string section = config.GetUserSection();
  FIsNetEquityMargin = config.ReadBool(section, "NetEquityMargin");
  FMarginLevelMode = config.ReadInteger(section, "MarginLevelMode");
  const std::string applyDDSPL = config.ReadString(section, "ApplyDDSPL");
  FApplyDDSPL = applyDDSPL.starts_with('Y') || applyDDSPL.starts_with('y');
}

TAccountInfoDataControl::~TAccountInfoDataControl() {
  FPositionList.Clear();
  auto& positions = TCustomPositionAdapter::GetInstance();
  positions.RemovePositionMarketDataHandler(this);
  positions.UnregisterPositionListener(FAccount, this);
  TCustomAccountAdapter::GetInstance().RemoveAccountInfoLoadHandler(this);
  if (FAggregate) positions.UnregisterSubAccountPositionListener(FAccount, this);
  // Both ends run whatever the columns needed last: ending what was never begun does nothing.
  TAccountInfoDataControl::UnSubscribeOnlineStatus();
  TAccountInfoDataControl::UnSubscribeMonitorInfo();
}

void TAccountInfoDataControl::SetAccount(TCode account) {
  auto& positions = TCustomPositionAdapter::GetInstance();
  if (account != FAccount) {
    positions.RegisterPositionListener(account, MakeHandler<&TAccountInfoDataControl::PositionUpdate>(this),
                                       this, FAccount);
    if (FNeedSubscribeOnlineStatus) {
      UnSubscribeOnlineStatus();
      if (!account.IsEmpty()) TCustomAccountAdapter::GetInstance().SubscribeAccountOnlineStatus(account);
    }
    if (FNeedLoadMonitorInfo) {
      UnSubscribeMonitorInfo();
      if (!account.IsEmpty()) {
        TCustomAccountAdapter::GetInstance().RegisterMonitorInfoListener(
            account, MakeHandler<&TAccountInfoDataControl::AccountUpdate>(this), this);
      }
    }
    if (FAggregate) positions.UnregisterSubAccountPositionListener(FAccount, this);
  }
  TCustomAccountInfoDataControl::SetAccount(account);
  // Done for the same account too: wanted, a view that names its account again renews what it follows.
  if (FAggregate) {
    positions.RegisterSubAccountPositionListener(
        FAccount, MakeHandler<&TAccountInfoDataControl::PositionUpdate>(this), this);
  }
}

void TAccountInfoDataControl::SetAggregate() {
  auto& positions = TCustomPositionAdapter::GetInstance();
  if (FAggregate) positions.UnregisterSubAccountPositionListener(FAccount, this);
  TCustomAccountInfoDataControl::SetAggregate();
  if (FAggregate) {
    positions.RegisterSubAccountPositionListener(
        FAccount, MakeHandler<&TAccountInfoDataControl::PositionUpdate>(this), this);
  }
}

void TAccountInfoDataControl::SubscribeOnlineStatus() {
  if (!FAccount.IsEmpty()) TCustomAccountAdapter::GetInstance().SubscribeAccountOnlineStatus(FAccount);
}

void TAccountInfoDataControl::UnSubscribeOnlineStatus() {
  if (!FAccount.IsEmpty()) TCustomAccountAdapter::GetInstance().UnsubscribeAccountOnlineStatus(FAccount);
}

void TAccountInfoDataControl::SubscribeMonitorInfo() {
  if (FAccount.IsEmpty()) return;
  TCustomAccountAdapter::GetInstance().RegisterMonitorInfoListener(
      FAccount, MakeHandler<&TAccountInfoDataControl::AccountUpdate>(this), this);
}

void TAccountInfoDataControl::UnSubscribeMonitorInfo() {
  if (!FAccount.IsEmpty()) TCustomAccountAdapter::GetInstance().UnregisterMonitorInfoListener(FAccount, this);
}

void TAccountInfoDataControl::AccountInfoLoadUpdate(void* /*sender*/, void* data) {
  const auto* accounts = static_cast<const TAccountMap*>(data);
  if (accounts == nullptr) return;
  if (accounts->contains(FAccount) || CheckNeedUpdateSubAccountList(*accounts)) Changed();
}

bool TAccountInfoDataControl::CheckNeedUpdateSubAccountList(const TAccountMap& accounts) {
  const TCustomAccount* master = FAggregate ? GetSelectedAccount() : nullptr;
  if (master == nullptr || !master->IsMasterAccount()) return false;
  const bool concerned = std::ranges::any_of(accounts, [this](const auto& entry) {
    const TCustomAccount* account = entry.second;
    return account != nullptr && account->IsSubAccount() && account->GetMasterAccountID() == FAccount;
  });
  if (!concerned) return false;
  FSubAccounts.clear();
  TCustomAccountAdapter::GetInstance().GetSubAccountList(FAccount, FSubAccounts);
  return true;
}

void TAccountInfoDataControl::PositionUpdate(void* /*sender*/, void* data) {
  const auto* positions = static_cast<const TAccountPositionMap*>(data);
  const bool concerned =
      FAccount.IsEmpty() ||
      (positions != nullptr && (positions->contains(FAccount) || IsSubAccountPositionUpdate(*positions)));
  if (concerned) NotifyChange();
}

void TAccountInfoDataControl::PositionMarketDataUpdate(void* /*sender*/, void* data) {
  const auto* positions = static_cast<const TAccountPositionMap*>(data);
  if (positions == nullptr) return;
  if (positions->contains(FAccount) || IsSubAccountPositionUpdate(*positions)) NotifyChange();
}

bool TAccountInfoDataControl::IsSubAccountPositionUpdate(const TAccountPositionMap& positions) {
  return FAggregate && std::ranges::any_of(FSubAccounts, [&positions](const auto& subAccount) {
           return positions.contains(subAccount.first);
         });
}

const TCustomAccount* TAccountInfoDataControl::GetSelectedAccount() const {
  return TCustomAccountAdapter::GetInstance().GetAccount(FAccount);
}

}  // namespace margindesk
