#pragma once

#include <cstdint>
#include <functional>
#include <map>

#include "model/contract/GlobalChannelManager.h"
#include "model/contract/Variant.h"

namespace margindesk {

// The channels, and the answers that a front gives to channel messages.
class TGlobalChannelManager : public TCustomGlobalChannelManager {
 public:
  // Answers one message: reads the record, acts, writes its answer into it before it returns.
  using TResponder = std::function<void(void* record)>;

  void AddChannelHandler(std::int32_t channel, THandler handler, const void* owner) override;
  void RemoveChannelHandler(std::int32_t channel, const void* owner) override;
  void PostChannelData(std::int32_t channel, std::string_view text, void* object,
                       std::int64_t value) override;
  // The data control that comes with kMessageBatchConfirmation belongs to the host from here on: it is
  // deleted after the answer unless the responder has taken it out of the record. Unanswered, the orders stay
  // unconfirmed.
  void SendChannelMessage(std::int32_t message, void* record) override;

  // Installs the answer to a message (kMessage...) in place of the one before; an empty one takes it out.
  void SetResponder(std::int32_t message, TResponder responder);

  // Calls visit(kind, key, list) for the registrations of every channel; the key is its number.
  template <class TVisit>
  void VisitHandlers(TVisit&& visit) const {
    for (const auto& [channel, handlers] : FChannels) visit("channels", IntegerToText(channel), handlers);
  }

 private:
  std::map<std::int32_t, THandlerList> FChannels;
  std::map<std::int32_t, TResponder> FResponders;
};

}  // namespace margindesk
