#pragma once

#include "model/contract/Handlers.h"
#include "model/contract/Service.h"

namespace margindesk {

// The host's periodic tick. Handlers are called with sender and data null.
class TCustomTimerControl : public TService<TCustomTimerControl> {
 public:
  virtual void AddTimerHandler(const void* owner, THandler handler) = 0;
  virtual void RemoveTimerHandler(const void* owner) = 0;
};

extern template class TService<TCustomTimerControl>;

}  // namespace margindesk
