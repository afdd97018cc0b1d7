#pragma once

#include <string_view>

#include "model/contract/BaseMarketData.h"
#include "model/contract/Handlers.h"
#include "model/contract/Service.h"

namespace margindesk {

// Subscriptions to the numbered fields of a symbol.
class TCustomSubscribeAdapter : public TService<TCustomSubscribeAdapter> {
 public:
  // The item of a symbol and a service name ("PRCDDS": reference data), or null for an unknown service. An
  // item of a symbol that the host does not know yet is given with a status that is not ready. The last
  // argument is null.
  virtual TCustomSubItem* GetSubItem(TCode symbol, std::string_view serviceName,
                                     const void* extra = nullptr) = 0;
  virtual void AddSymbolHandler(TCustomSubItem* item, THandler handler,
                                const void* owner) = 0;  // data: TSubItemMap*
  virtual void RemoveSymbolHandlers(TCustomSubItem* item, const void* owner) = 0;
};

extern template class TService<TCustomSubscribeAdapter>;

}  // namespace margindesk
