#include "host/services/AccountAdapter.h"

#include <vector>

namespace margindesk {

const TCustomAccount* TAccountAdapter::GetAccount(TCode account, bool /*load*/) const {
  return FData.FindAccount(account);
}

void TAccountAdapter::AddAccountInfoLoadHandler(THandler handler, const void* owner) {
  FLoadHandlers.Add(handler, owner);
}

void TAccountAdapter::RemoveAccountInfoLoadHandler(const void* owner) { FLoadHandlers.RemoveOwner(owner); }

void TAccountAdapter::RegisterMonitorInfoListener(TCode account, THandler handler, const void* owner,
                                                  TCode previousAccount) {
  FMonitorHandlers.Register(account, handler, owner, previousAccount);
}

void TAccountAdapter::UnregisterMonitorInfoListener(TCode account, const void* owner) {
  FMonitorHandlers.Unregister(account, owner);
}

void TAccountAdapter::SubscribeAccountOnlineStatus(TCode /*account*/) {}

void TAccountAdapter::UnsubscribeAccountOnlineStatus(TCode /*account*/) {}

void TAccountAdapter::RegisterSimulateListener(TCode account, THandler handler, const void* owner,
                                               TCode previousAccount) {
  FSimulateHandlers.Register(account, handler, owner, previousAccount);
  CheckListeners(previousAccount);
}

void TAccountAdapter::UnregisterSimulateListener(TCode account, const void* owner) {
  FSimulateHandlers.Unregister(account, owner);
  CheckListeners(account);
}

void TAccountAdapter::PublishSimulation(TCode account) {
  std::vector<TCode> keys{account};
  const TAccountRecord* record = FData.FindAccount(account);
  const TCode linked =
      record != nullptr && FData.IsChinaConnectOn() ? record->FFacts.FChinaConnectAccount : TCode();
  if (!linked.IsEmpty()) keys.push_back(linked);
  TAccountMap accounts;
  for (const TCode key : keys) AddTo(accounts, key);
  FSimulateHandlers.NotifyOnce(keys, this, &accounts);
}

std::size_t TAccountAdapter::CountSimulateListeners(TCode account) const {
  for (const auto& [key, count] : FSimulateHandlers.GetKeyCounts()) {
    if (key == account) return count;
  }
  return 0;
}

void TAccountAdapter::CheckListeners(TCode account) const {
  if (FListenersGone && !account.IsEmpty() && !FSimulateHandlers.HasKey(account)) FListenersGone(account);
}

void TAccountAdapter::GetSubAccountList(TCode masterAccount, TAccountMap& subAccounts) const {
  const TAccountRecord* master = FData.FindAccount(masterAccount);
  if (master == nullptr) return;
  for (const TCode account : master->FSubAccounts) AddTo(subAccounts, account);
}

const std::string& TAccountAdapter::GetCustomFieldKey(std::string_view table, std::string_view field) const {
  return FData.GetCustomFieldKey(table, field);
}

const TCustomAccountData* TAccountAdapter::GetConsolidatedAccountData(TCode account, TCode currency) const {
  const TAccountRecord* record = FData.FindAccount(account);
  return record == nullptr ? nullptr : record->FConsolidated.Find(currency);
}

void TAccountAdapter::Publish(const THostChanges& changes) {
  TAccountMap loaded;
  for (const TCode account : changes.FAccounts.GetCodes()) AddTo(loaded, account);
  if (FData.IsChinaConnectOn()) AddLinkingAccounts(loaded);
  for (const TCode account : changes.FOnline.GetCodes()) AddTo(loaded, account);
  if (!loaded.empty()) FLoadHandlers.Notify(this, &loaded);

  TAccountMap monitored;
  for (const TCode account : changes.FMonitored.GetCodes()) AddTo(monitored, account);
  if (!monitored.empty()) FMonitorHandlers.NotifyOnce(changes.FMonitored.GetCodes(), this, &monitored);
}

void TAccountAdapter::AddLinkingAccounts(TAccountMap& accounts) const {
  for (const TCode account : FData.GetAccounts()) {
    const TAccountRecord* record = FData.FindAccount(account);
    if (record != nullptr && accounts.contains(record->FFacts.FChinaConnectAccount))
      accounts.emplace(account, record);
  }
}

void TAccountAdapter::AddTo(TAccountMap& accounts, TCode account) const {
  if (const TAccountRecord* record = FData.FindAccountRecord(account)) accounts.emplace(account, record);
}

}  // namespace margindesk
