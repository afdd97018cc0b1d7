#pragma once

#include <string_view>

#include "host/services/HostData.h"
#include "model/contract/SubscribeAdapter.h"

namespace margindesk {

// The reference items of the host's data, which must outlive the adapter. It knows one service, "PRCDDS".
class TSubscribeAdapter final : public TCustomSubscribeAdapter {
 public:
  explicit TSubscribeAdapter(THostData& data) : FData(data) {}

  TCustomSubItem* GetSubItem(TCode symbol, std::string_view serviceName,
                             const void* extra = nullptr) override;  // null also for the empty symbol
  void AddSymbolHandler(TCustomSubItem* item, THandler handler, const void* owner) override;
  void RemoveSymbolHandlers(TCustomSubItem* item, const void* owner) override;

  // Calls the handlers of the symbols that changed.
  void Publish(const THostChanges& changes);

  // Calls visit(kind, key, list) for every list of registrations.
  template <class TVisit>
  void VisitHandlers(TVisit&& visit) const {
    visit("reference_items", "", FHandlers);
  }

 private:
  THostData& FData;
  TKeyedHandlerList FHandlers;
};

}  // namespace margindesk
