#pragma once

#include <cstdint>
#include <string_view>

#include "model/contract/Handlers.h"
#include "model/contract/Service.h"

namespace margindesk {

// What a channel's handlers are given as data.
struct TChannelData {
  std::int32_t FChannel = 0;
  std::string_view FText;  // valid during the call alone
  void* FObject = nullptr;
  std::int64_t FValue = 0;
};

// Numbered channels between views (see Constdef.h for the numbers).
class TCustomGlobalChannelManager : public TService<TCustomGlobalChannelManager> {
 public:
  virtual void AddChannelHandler(std::int32_t channel, THandler handler,
                                 const void* owner) = 0;  // data: TChannelData*
  virtual void RemoveChannelHandler(std::int32_t channel, const void* owner) = 0;
  // Calls the channel's handlers before it returns. `value` is a link value: views that share it follow each
  // other.
  virtual void PostChannelData(std::int32_t channel, std::string_view text, void* object,
                               std::int64_t value) = 0;
  // A synchronous request to the host with the message's record (Datadef.h). A message that the host does not
  // answer leaves the record as it was.
  virtual void SendChannelMessage(std::int32_t message, void* record) = 0;
};

extern template class TService<TCustomGlobalChannelManager>;

}  // namespace margindesk
