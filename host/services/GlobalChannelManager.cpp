#include "host/services/GlobalChannelManager.h"

#include <utility>

#include "model/contract/Basedcdatacontrol.h"
#include "model/contract/Constdef.h"
#include "model/contract/Datadef.h"

namespace margindesk {

void TGlobalChannelManager::AddChannelHandler(std::int32_t channel, THandler handler, const void* owner) {
  FChannels[channel].Add(handler, owner);
}

void TGlobalChannelManager::RemoveChannelHandler(std::int32_t channel, const void* owner) {
  if (const auto found = FChannels.find(channel); found != FChannels.end()) found->second.RemoveOwner(owner);
}

void TGlobalChannelManager::PostChannelData(std::int32_t channel, std::string_view text, void* object,
                                            std::int64_t value) {
  const auto found = FChannels.find(channel);
  if (found == FChannels.end()) return;
  TChannelData data{channel, text, object, value};
  found->second.Notify(nullptr, &data);
}

void TGlobalChannelManager::SendChannelMessage(std::int32_t message, void* record) {
  // A copy: the answer may replace the responder.
  const auto found = FResponders.find(message);
  const TResponder responder = found == FResponders.end() ? TResponder() : found->second;
  if (responder) responder(record);
  if (message == kMessageBatchConfirmation && record != nullptr) {
    delete std::exchange(static_cast<TOrderTakeActionRecord*>(record)->FDataControl, nullptr);
  }
}

void TGlobalChannelManager::SetResponder(std::int32_t message, TResponder responder) {
  FResponders[message] = std::move(responder);
}

}  // namespace margindesk
