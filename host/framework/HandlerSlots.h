#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "model/contract/Handlers.h"

namespace margindesk {

// One registration. An ended one has an empty handler and stays in its place until no pass runs.
struct THandlerSlot {
  THandler FHandler;
  const void* FOwner = nullptr;
  std::uint64_t FSerial = 0;  // rises with every registration of the list
};

using THandlerSlots = std::vector<THandlerSlot>;  // in the order of registration

// What the passes of one list share. A pass calls the slots older than itself, so whatever is registered
// while it runs waits for the next one, and nothing has to be copied before the first call.
struct THandlerPasses {
  std::uint64_t FNextSerial = 1;
  std::int32_t FRunning = 0;
  bool FHasEndedSlots = false;  // to be swept when the last pass ends
  bool FIsClosed = false;       // the list has gone
};

// Tells the fault sink of the exception now being handled. Called inside a catch block.
void ReportHandlerFault(const void* owner) noexcept;

void AddSlot(THandlerPasses& passes, THandlerSlots& slots, THandler handler, const void* owner);

// Ends the owner's slots with a serial below `serialLimit`; they are taken out at once when no pass runs.
void EndSlots(THandlerPasses& passes, THandlerSlots& slots, const void* owner,
              std::uint64_t serialLimit) noexcept;

void SweepSlots(THandlerSlots& slots) noexcept;  // takes out the ended slots

std::size_t CountSlots(const THandlerSlots& slots) noexcept;  // without the ended ones
std::size_t CountSlotsOf(const THandlerSlots& slots, const void* owner) noexcept;

// Calls the slots older than `serialLimit` for which `accept` answers true, until the list closes. The slots
// may grow and end while it runs.
template <class TAccept>
void CallSlots(const THandlerPasses& passes, const THandlerSlots& slots, std::uint64_t serialLimit,
               void* sender, void* data, TAccept accept) {
  for (std::size_t i = 0; !passes.FIsClosed && i < slots.size(); ++i) {
    const THandlerSlot slot = slots[i];
    if (slot.FSerial >= serialLimit) return;
    if (!slot.FHandler || !accept(slot)) continue;
    try {
      slot.FHandler(sender, data);
    } catch (...) {
      ReportHandlerFault(slot.FOwner);
    }
  }
}

// Keeps a list's state for the length of a pass, and sweeps it when the outermost pass ends. TState has
// `THandlerPasses FPasses` and `void Sweep() noexcept`.
template <class TState>
class THandlerPass {
 public:
  explicit THandlerPass(std::shared_ptr<TState> state) noexcept
      : FState(std::move(state)), FSerialLimit(FState->FPasses.FNextSerial) {
    ++FState->FPasses.FRunning;
  }
  ~THandlerPass() {
    THandlerPasses& passes = FState->FPasses;
    if (--passes.FRunning > 0 || !passes.FHasEndedSlots) return;
    passes.FHasEndedSlots = false;
    FState->Sweep();
  }
  THandlerPass(const THandlerPass&) = delete;
  THandlerPass& operator=(const THandlerPass&) = delete;

  TState& GetState() const noexcept { return *FState; }
  std::uint64_t GetSerialLimit() const noexcept { return FSerialLimit; }

 private:
  std::shared_ptr<TState> FState;
  std::uint64_t FSerialLimit;
};

}  // namespace margindesk
