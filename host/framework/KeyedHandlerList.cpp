#include <algorithm>
#include <limits>
#include <unordered_map>
#include <utility>

#include "host/framework/HandlerSlots.h"

namespace margindesk {

namespace {

// Who has been called in the passes of NotifyOnce that run, the inner ones last: one stack for all of them,
// so that a pass allocates nothing once the stack has grown.
using TCalledStack = std::vector<std::pair<THandler, const void*>>;

// One pass's part of the stack. Few views listen at once, so a walk over them beats a hash.
class TCalledFrame {
 public:
  explicit TCalledFrame(TCalledStack& stack) noexcept : FStack(stack), FBase(stack.size()) {}
  ~TCalledFrame() { FStack.resize(FBase); }
  TCalledFrame(const TCalledFrame&) = delete;
  TCalledFrame& operator=(const TCalledFrame&) = delete;

  bool IsFirstCall(const THandlerSlot& slot) {
    const std::pair called(slot.FHandler, slot.FOwner);
    const auto begin = FStack.begin() + static_cast<std::ptrdiff_t>(FBase);
    if (std::find(begin, FStack.end(), called) != FStack.end()) return false;
    FStack.push_back(called);
    return true;
  }

 private:
  TCalledStack& FStack;
  std::size_t FBase;
};

}  // namespace

struct TKeyedHandlerList::TState {
  THandlerPasses FPasses;
  std::unordered_map<TCode, THandlerSlots> FSlotsByKey;
  TCalledStack FCalled;

  THandlerSlots* Find(TCode key) noexcept {
    const auto found = FSlotsByKey.find(key);
    return found == FSlotsByKey.end() ? nullptr : &found->second;
  }

  void End(TCode key, const void* owner, std::uint64_t serialLimit) noexcept {
    const auto found = FSlotsByKey.find(key);
    if (found == FSlotsByKey.end()) return;
    EndSlots(FPasses, found->second, owner, serialLimit);
    if (found->second.empty()) FSlotsByKey.erase(found);
  }

  void Sweep() noexcept {
    for (auto& [key, slots] : FSlotsByKey) SweepSlots(slots);
    std::erase_if(FSlotsByKey, [](const auto& entry) { return entry.second.empty(); });
  }
};

TKeyedHandlerList::TKeyedHandlerList() : FState(std::make_shared<TState>()) {}

TKeyedHandlerList::~TKeyedHandlerList() { FState->FPasses.FIsClosed = true; }

void TKeyedHandlerList::Register(TCode key, THandler handler, const void* owner, TCode previousKey) {
  // The new subscription is made before the old ones end: should memory run out, nothing has changed.
  const std::uint64_t serial = FState->FPasses.FNextSerial;
  if (!key.IsEmpty() && handler) AddSlot(FState->FPasses, FState->FSlotsByKey[key], handler, owner);
  if (!previousKey.IsEmpty()) FState->End(previousKey, owner, serial);
}

void TKeyedHandlerList::Unregister(TCode key, const void* owner) {
  FState->End(key, owner, std::numeric_limits<std::uint64_t>::max());
}

void TKeyedHandlerList::RemoveOwner(const void* owner) {
  for (auto& [key, slots] : FState->FSlotsByKey) {
    EndSlots(FState->FPasses, slots, owner, std::numeric_limits<std::uint64_t>::max());
  }
  if (FState->FPasses.FRunning == 0) FState->Sweep();
}

void TKeyedHandlerList::Notify(TCode key, void* sender, void* data) {
  const THandlerPass<TState> pass(FState);
  TState& state = pass.GetState();
  const THandlerSlots* slots = state.Find(key);
  if (slots == nullptr) return;
  CallSlots(state.FPasses, *slots, pass.GetSerialLimit(), sender, data,
            [](const THandlerSlot&) { return true; });
}

void TKeyedHandlerList::NotifyOnce(const std::vector<TCode>& keys, void* sender, void* data) {
  const THandlerPass<TState> pass(FState);
  TState& state = pass.GetState();
  TCalledFrame called(state.FCalled);
  for (const TCode key : keys) {
    const THandlerSlots* slots = state.Find(key);
    if (slots == nullptr) continue;
    CallSlots(state.FPasses, *slots, pass.GetSerialLimit(), sender, data,
              [&called](const THandlerSlot& slot) { return called.IsFirstCall(slot); });
    if (state.FPasses.FIsClosed) return;  // the keys may have gone with the list
  }
}

bool TKeyedHandlerList::HasKey(TCode key) const noexcept {
  const THandlerSlots* slots = FState->Find(key);
  return slots != nullptr && CountSlots(*slots) > 0;
}

std::vector<std::pair<TCode, std::size_t>> TKeyedHandlerList::GetKeyCounts() const {
  std::vector<std::pair<TCode, std::size_t>> counts;
  for (const auto& [key, slots] : FState->FSlotsByKey) {
    if (const std::size_t count = CountSlots(slots); count > 0) counts.emplace_back(key, count);
  }
  std::ranges::sort(counts, {}, [](const auto& entry) -> const std::string& { return entry.first.Text(); });
  return counts;
}

std::size_t TKeyedHandlerList::GetCount() const noexcept {
  std::size_t count = 0;
  for (const auto& [key, slots] : FState->FSlotsByKey) count += CountSlots(slots);
  return count;
}

std::size_t TKeyedHandlerList::GetCountOf(const void* owner) const noexcept {
  std::size_t count = 0;
  for (const auto& [key, slots] : FState->FSlotsByKey) count += CountSlotsOf(slots, owner);
  return count;
}

}  // namespace margindesk
