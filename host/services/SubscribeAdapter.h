#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "host/services/HostData.h"
#include "model/contract/SubscribeAdapter.h"

namespace margindesk {

// The reference items of the host's data, which must outlive the adapter. It knows one service, "PRCDDS". An
// item that nobody has asked for and that is of no position is not there yet: asking for it has it loaded,
// and the symbol's handlers are told when that has happened.
class TSubscribeAdapter final : public TCustomSubscribeAdapter {
 public:
  // Loads the item of a symbol later, never inside the call.
  using TLoad = std::function<void(TCode symbol)>;

  TSubscribeAdapter(THostData& data, TLoad load) : FData(data), FLoad(std::move(load)) {}

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
  const TLoad FLoad;
  TKeyedHandlerList FHandlers;
};

}  // namespace margindesk
