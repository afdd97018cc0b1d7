#include "host/services/TimerControl.h"

namespace margindesk {

TTimerControl::TTimerControl(TUiLoop& loop)
    : FLoop(loop), FTimer(loop.StartTimer(kPeriod, [this] { FHandlers.Notify(nullptr, nullptr); })) {}

TTimerControl::~TTimerControl() { FLoop.StopTimer(FTimer); }

void TTimerControl::AddTimerHandler(const void* owner, THandler handler) { FHandlers.Add(handler, owner); }

void TTimerControl::RemoveTimerHandler(const void* owner) { FHandlers.RemoveOwner(owner); }

}  // namespace margindesk
