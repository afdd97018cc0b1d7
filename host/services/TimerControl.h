#pragma once

#include <chrono>

#include "host/services/UiLoop.h"
#include "model/contract/TimerControl.h"

namespace margindesk {

// The host's tick: one timer of the user-interface loop that calls every handler. The loop must outlive it.
class TTimerControl : public TCustomTimerControl {
 public:
  static constexpr std::chrono::milliseconds kPeriod{500};

  explicit TTimerControl(TUiLoop& loop);
  ~TTimerControl() override;

  void AddTimerHandler(const void* owner, THandler handler) override;
  void RemoveTimerHandler(const void* owner) override;

  const THandlerList& Handlers() const noexcept { return FHandlers; }

 private:
  TUiLoop& FLoop;
  const TUiLoop::TTimerId FTimer;
  THandlerList FHandlers;
};

}  // namespace margindesk
