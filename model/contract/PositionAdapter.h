#pragma once

#include <string>

#include "model/contract/BasePositionData.h"
#include "model/contract/Handlers.h"
#include "model/contract/Service.h"

namespace margindesk {

// The host's positions. The data of every notification here is a TAccountPositionMap*.
class TCustomPositionAdapter : public TService<TCustomPositionAdapter> {
 public:
  virtual void AddPositionMarketDataHandler(THandler handler, const void* owner) = 0;
  virtual void RemovePositionMarketDataHandler(const void* owner) = 0;
  // Moves the owner's subscription from the previous account to the new one; either may be empty.
  virtual void RegisterPositionListener(TCode account, THandler handler, const void* owner,
                                        TCode previousAccount) = 0;
  virtual void UnregisterPositionListener(TCode account, const void* owner) = 0;
  // Positions of the sub-accounts of a master account.
  virtual void RegisterSubAccountPositionListener(TCode masterAccount, THandler handler, const void* owner,
                                                  TCode previousAccount = TCode()) = 0;
  virtual void UnregisterSubAccountPositionListener(TCode masterAccount, const void* owner) = 0;
  // Replaces the map by the account's positions in O(1); an unknown account has none.
  virtual void GetPositionList(TCode account, TPositionMap& positions) const = 0;
  // The market value of a quantity in the product's currency. False leaves `value` alone: no product or no
  // price.
  virtual bool GetPositionMarketValue(TCode symbol, double quantity, double& value) const = 0;
  virtual const std::string& GetPositionIsolationText(TCode account) const = 0;  // "" when unknown
  virtual const std::string& GetMarginMethodText(TCode account) const = 0;       // "" when unknown
};

extern template class TService<TCustomPositionAdapter>;

}  // namespace margindesk
