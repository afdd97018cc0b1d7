#include <limits>

#include "host/framework/HandlerSlots.h"

namespace margindesk {

struct THandlerList::TState {
  THandlerPasses FPasses;
  THandlerSlots FSlots;

  void Sweep() noexcept { SweepSlots(FSlots); }
};

THandlerList::THandlerList() : FState(std::make_shared<TState>()) {}

THandlerList::~THandlerList() { FState->FPasses.FIsClosed = true; }

void THandlerList::Add(THandler handler, const void* owner) {
  if (handler) AddSlot(FState->FPasses, FState->FSlots, handler, owner);
}

void THandlerList::RemoveOwner(const void* owner) {
  EndSlots(FState->FPasses, FState->FSlots, owner, std::numeric_limits<std::uint64_t>::max());
}

void THandlerList::Notify(void* sender, void* data) {
  const THandlerPass<TState> pass(FState);
  const TState& state = pass.GetState();
  CallSlots(state.FPasses, state.FSlots, pass.GetSerialLimit(), sender, data,
            [](const THandlerSlot&) { return true; });
}

std::size_t THandlerList::GetCount() const noexcept { return CountSlots(FState->FSlots); }

std::size_t THandlerList::GetCountOf(const void* owner) const noexcept {
  return CountSlotsOf(FState->FSlots, owner);
}

}  // namespace margindesk
