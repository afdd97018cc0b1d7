#pragma once

#include "model/contract/BaseMarketData.h"
#include "model/contract/Service.h"

namespace margindesk {

// The host's products and spread tables.
class TCustomMarketAdapter : public TService<TCustomMarketAdapter> {
 public:
  virtual const TCustomProduct* GetProduct(TCode symbol) const = 0;  // null when unknown
  // The spread table of a market code, or null; asking for it also makes the host load it.
  virtual const TCustomSpreadTable* GetSpreadTable(TCode marketCode) const = 0;
  // Whether the exchange trades now; an unknown exchange does not.
  virtual bool IsExchangeOpen(TCode exchange) const = 0;
};

extern template class TService<TCustomMarketAdapter>;

}  // namespace margindesk
