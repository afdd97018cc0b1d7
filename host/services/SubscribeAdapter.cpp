#include "host/services/SubscribeAdapter.h"

#include <vector>

#include "model/contract/Constdef.h"

namespace margindesk {

TCustomSubItem* TSubscribeAdapter::GetSubItem(TCode symbol, std::string_view serviceName,
                                              const void* /*extra*/) {
  if (serviceName != kReferenceService || symbol.IsEmpty()) return nullptr;
  TSubItemRecord& item = FData.GetItem(symbol);
  if (item.Ask()) FLoad(symbol);
  return &item;
}

void TSubscribeAdapter::AddSymbolHandler(TCustomSubItem* item, THandler handler, const void* owner) {
  if (item != nullptr) FHandlers.Register(item->GetSymbolCode(), handler, owner);
}

void TSubscribeAdapter::RemoveSymbolHandlers(TCustomSubItem* item, const void* owner) {
  if (item != nullptr) FHandlers.Unregister(item->GetSymbolCode(), owner);
}

void TSubscribeAdapter::Publish(const THostChanges& changes) {
  TSubItemMap items;
  std::vector<TCode> symbols;
  for (const TCode symbol : changes.FSymbols.GetCodes()) {
    if (!FHandlers.HasKey(symbol)) continue;
    items.emplace(symbol, &FData.GetItem(symbol));
    symbols.push_back(symbol);
  }
  if (!symbols.empty()) FHandlers.NotifyOnce(symbols, this, &items);
}

}  // namespace margindesk
