#pragma once

#include <string>

#include "host/services/HostData.h"
#include "model/contract/PositionAdapter.h"

namespace margindesk {

// The positions of the host's data, which must outlive the adapter. A position that was removed is told by
// its account, whose map of changed positions then lacks it.
class TPositionAdapter final : public TCustomPositionAdapter {
 public:
  explicit TPositionAdapter(THostData& data) : FData(data) {}

  void AddPositionMarketDataHandler(THandler handler, const void* owner) override;
  void RemovePositionMarketDataHandler(const void* owner) override;
  void RegisterPositionListener(TCode account, THandler handler, const void* owner,
                                TCode previousAccount) override;
  void UnregisterPositionListener(TCode account, const void* owner) override;
  void RegisterSubAccountPositionListener(TCode masterAccount, THandler handler, const void* owner,
                                          TCode previousAccount = TCode()) override;
  void UnregisterSubAccountPositionListener(TCode masterAccount, const void* owner) override;
  void GetPositionList(TCode account, TPositionMap& positions) const override;
  // The quantity at the last price, or the previous close where there is no last price, times the contract
  // size.
  bool GetPositionMarketValue(TCode symbol, double quantity, double& value) const override;
  // The account's word in the current language (language section "Host"), or the word itself.
  const std::string& GetPositionIsolationText(TCode account) const override;
  const std::string& GetMarginMethodText(TCode account) const override;

  // Calls the handlers that the changes concern: positions, those of sub-accounts, then prices.
  void Publish(const THostChanges& changes);

  // Calls visit(kind, key, list) for every list of registrations.
  template <class TVisit>
  void VisitHandlers(TVisit&& visit) const {
    visit("position_prices", "", FMarketDataHandlers);
    visit("positions", "", FPositionHandlers);
    visit("sub_account_positions", "", FSubAccountHandlers);
  }

 private:
  void PublishPositions(const THostChanges& changes);
  void PublishPrices(const THostChanges& changes);

  THostData& FData;
  THandlerList FMarketDataHandlers;
  TKeyedHandlerList FPositionHandlers;
  TKeyedHandlerList FSubAccountHandlers;  // by master account
};

}  // namespace margindesk
