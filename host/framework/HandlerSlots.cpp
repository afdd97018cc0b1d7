#include "host/framework/HandlerSlots.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace margindesk {

namespace {

THandlerFaultSink faultSink = nullptr;

void TellFaultSink(std::string_view what, const void* owner) noexcept {
  if (faultSink == nullptr) return;
  try {
    faultSink(what, owner);
  } catch (...) {  // nobody is left to be told
  }
}

}  // namespace

THandlerFaultSink SetHandlerFaultSink(THandlerFaultSink sink) noexcept {
  return std::exchange(faultSink, sink);
}

void ReportHandlerFault(const void* owner) noexcept {
  try {
    throw;
  } catch (const std::exception& fault) {
    TellFaultSink(fault.what(), owner);
  } catch (...) {
    TellFaultSink("unknown exception", owner);
  }
}

void AddSlot(THandlerPasses& passes, THandlerSlots& slots, THandler handler, const void* owner) {
  slots.push_back({handler, owner, passes.FNextSerial});
  ++passes.FNextSerial;
}

void EndSlots(THandlerPasses& passes, THandlerSlots& slots, const void* owner,
              std::uint64_t serialLimit) noexcept {
  bool hasEnded = false;
  for (THandlerSlot& slot : slots) {
    if (!slot.FHandler || slot.FOwner != owner || slot.FSerial >= serialLimit) continue;
    slot.FHandler = THandler();
    hasEnded = true;
  }
  if (!hasEnded) return;
  if (passes.FRunning > 0) {
    passes.FHasEndedSlots = true;
  } else {
    SweepSlots(slots);
  }
}

void SweepSlots(THandlerSlots& slots) noexcept {
  std::erase_if(slots, [](const THandlerSlot& slot) { return !slot.FHandler; });
}

std::size_t CountSlots(const THandlerSlots& slots) noexcept {
  return static_cast<std::size_t>(std::count_if(
      slots.begin(), slots.end(), [](const THandlerSlot& slot) { return static_cast<bool>(slot.FHandler); }));
}

std::size_t CountSlotsOf(const THandlerSlots& slots, const void* owner) noexcept {
  return static_cast<std::size_t>(
      std::count_if(slots.begin(), slots.end(),
                    [owner](const THandlerSlot& slot) { return slot.FHandler && slot.FOwner == owner; }));
}

}  // namespace margindesk
