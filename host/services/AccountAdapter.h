#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "host/services/HostData.h"
#include "model/contract/AccountAdapter.h"

namespace margindesk {

// The accounts of the host's data, which must outlive the adapter. The host holds every account of its book,
// so there is nothing to ask a back office for: an account is known or it is not, whatever `load` says.
//
// An account that has gone is reported as loaded once more, with its blank record, so that views that show it
// empty themselves. The online status of every account is at hand and its changes are always published, so
// there is nothing to subscribe to: with no owner to an online subscription, counting them would let the end
// of one view stop the updates of another.
class TAccountAdapter final : public TCustomAccountAdapter {
 public:
  explicit TAccountAdapter(const THostData& data) : FData(data) {}

  const TCustomAccount* GetAccount(TCode account, bool load = false) const override;
  void AddAccountInfoLoadHandler(THandler handler, const void* owner) override;
  void RemoveAccountInfoLoadHandler(const void* owner) override;
  void RegisterMonitorInfoListener(TCode account, THandler handler, const void* owner,
                                   TCode previousAccount = TCode()) override;
  void UnregisterMonitorInfoListener(TCode account, const void* owner) override;
  void SubscribeAccountOnlineStatus(TCode account) override;
  void UnsubscribeAccountOnlineStatus(TCode account) override;
  void RegisterSimulateListener(TCode account, THandler handler, const void* owner,
                                TCode previousAccount) override;
  void UnregisterSimulateListener(TCode account, const void* owner) override;
  // The accounts that name this one as their master; not those below them.
  void GetSubAccountList(TCode masterAccount, TAccountMap& subAccounts) const override;
  const std::string& GetCustomFieldKey(std::string_view table, std::string_view field) const override;
  const TCustomAccountData* GetConsolidatedAccountData(TCode account, TCode currency) const override;

  // Calls the handlers that the changes concern: loads first, then monitor information.
  void Publish(const THostChanges& changes);

  // Tells the listeners of an account, and of its linked account while China Connect is on, of a simulation.
  void PublishSimulation(TCode account);
  std::size_t CountSimulateListeners(TCode account) const;
  // Called with an account when its last simulate listener has gone.
  void SetSimulateListenersGone(std::function<void(TCode account)> gone) { FListenersGone = std::move(gone); }

  // Calls visit(kind, key, list) for every list of registrations.
  template <class TVisit>
  void VisitHandlers(TVisit&& visit) const {
    visit("account_loads", "", FLoadHandlers);
    visit("monitor_information", "", FMonitorHandlers);
    visit("simulations", "", FSimulateHandlers);
  }

 private:
  void AddTo(TAccountMap& accounts, TCode account) const;
  // Accounts show figures of their linked accounts, so they count as loaded with these.
  void AddLinkingAccounts(TAccountMap& accounts) const;

  void CheckListeners(TCode account) const;

  const THostData& FData;
  THandlerList FLoadHandlers;
  TKeyedHandlerList FMonitorHandlers;
  TKeyedHandlerList FSimulateHandlers;
  std::function<void(TCode account)> FListenersGone;
};

}  // namespace margindesk
