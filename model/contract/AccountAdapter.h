#pragma once

#include <string_view>

#include "model/contract/BaseAccountData.h"
#include "model/contract/Handlers.h"
#include "model/contract/Service.h"

namespace margindesk {

// The host's accounts.
class TCustomAccountAdapter : public TService<TCustomAccountAdapter> {
 public:
  // The account, or null when it is unknown. With `load` the host also asks the back office for it when it
  // does not hold it yet, and reports it through the account-information handlers.
  virtual const TCustomAccount* GetAccount(TCode account, bool load = false) const = 0;
  // Called when account information has been (re)loaded. data: TAccountMap* of the loaded accounts.
  virtual void AddAccountInfoLoadHandler(THandler handler, const void* owner) = 0;
  virtual void RemoveAccountInfoLoadHandler(const void* owner) = 0;
  // Monitor-information updates of one account. data: TAccountMap*. A previous account's registration ends.
  virtual void RegisterMonitorInfoListener(TCode account, THandler handler, const void* owner,
                                           TCode previousAccount = TCode()) = 0;
  virtual void UnregisterMonitorInfoListener(TCode account, const void* owner) = 0;
  // A hint that the account's online status is wanted, or not any more, so that the host may ask for it.
  // Updates arrive as account loads. There is no owner here: a host must not let one view's end stop another
  // view's updates.
  virtual void SubscribeAccountOnlineStatus(TCode account) = 0;
  virtual void UnsubscribeAccountOnlineStatus(TCode account) = 0;
  // Simulated-account updates; an empty new account only ends the previous one. data: TAccountMap*.
  virtual void RegisterSimulateListener(TCode account, THandler handler, const void* owner,
                                        TCode previousAccount) = 0;
  virtual void UnregisterSimulateListener(TCode account, const void* owner) = 0;
  // Adds the sub-accounts of a master account to the map.
  virtual void GetSubAccountList(TCode masterAccount, TAccountMap& subAccounts) const = 0;
  // The key of a custom account field ("oms_CustomAccountInfo", "RPQLevel"); "" when the deployment has no
  // such field.
  virtual const std::string& GetCustomFieldKey(std::string_view table, std::string_view field) const = 0;
  // The consolidated figures of a master account in a currency (empty: its total); null when there are none.
  virtual const TCustomAccountData* GetConsolidatedAccountData(TCode account, TCode currency) const = 0;
};

extern template class TService<TCustomAccountAdapter>;

}  // namespace margindesk
