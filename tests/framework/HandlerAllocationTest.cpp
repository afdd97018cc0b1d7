#include <atomic>
#include <cstdlib>
#include <functional>
#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <malloc.h>

#include "model/contract/Handlers.h"

namespace {

std::atomic<std::size_t> allocationCount = 0;
std::atomic<std::size_t> bytesHeld = 0;

void Free(void* memory) noexcept {
  bytesHeld -= malloc_usable_size(memory);
  std::free(memory);  // NOLINT(cppcoreguidelines-no-malloc)
}

}  // namespace

// Of this test program alone: every allocation is counted. Never inlined, or the compiler takes free for the
// wrong partner of new.
[[gnu::noinline]] void* operator new(std::size_t size) {
  void* memory = std::malloc(size);  // NOLINT(cppcoreguidelines-no-malloc)
  if (memory == nullptr) throw std::bad_alloc();
  ++allocationCount;
  bytesHeld += malloc_usable_size(memory);
  return memory;
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { Free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { Free(memory); }

namespace margindesk {
namespace {

struct TCounter {
  int FCalls = 0;
  void Handle(void*, void*) { ++FCalls; }
};

class HandlerAllocation : public testing::Test {
 protected:
  THandler GetHandler() { return MakeHandler<&TCounter::Handle>(&FCounter); }

  struct TCounter {
    int FCalls = 0;
    std::function<void()> FAction;
    void Handle(void*, void*) {
      ++FCalls;
      if (FAction) FAction();
    }
  };

  TCounter FCounter;
  THandlerList FList;
  TKeyedHandlerList FKeyed;
  const std::vector<TCode> FKeys{TCode("A1001"), TCode("A1002"), TCode("A1003")};
};

TEST_F(HandlerAllocation, APassOfAListThatHasRunBeforeAllocatesNothing) {
  for (int i = 0; i < 10; ++i) {
    FList.Add(GetHandler(), &FList);
    for (const TCode key : FKeys) FKeyed.Register(key, GetHandler(), FKeys.data() + i % 3);
  }
  FKeyed.NotifyOnce(FKeys, nullptr, nullptr);
  const std::size_t before = allocationCount;
  FList.Notify(nullptr, nullptr);
  FKeyed.Notify(FKeys[0], nullptr, nullptr);
  FKeyed.NotifyOnce(FKeys, nullptr, nullptr);
  EXPECT_EQ(allocationCount, before);
  EXPECT_EQ(FCounter.FCalls, 3 + 10 + 10 + 3);
}

TEST_F(HandlerAllocation, WhatEndsLeavesNoMemoryBehindDuringAPassOrOutsideOne) {
  std::vector<TCode> symbols;
  symbols.reserve(303);
  for (int i = 0; i < 303; ++i) symbols.emplace_back(std::to_string(i));
  std::size_t next = 0;
  const auto comeAndGo = [&] {  // three more symbols each time
    FKeyed.Register(symbols[next], GetHandler(), &FKeyed);
    FKeyed.Register(symbols[next + 1], GetHandler(), &FKeyed, symbols[next]);
    FKeyed.Register(symbols[next + 2], GetHandler(), &FKeyed);
    FKeyed.RemoveOwner(&FKeyed);
    FList.Add(GetHandler(), &FList);
    FList.RemoveOwner(&FList);
    next += 3;
  };
  comeAndGo();
  std::size_t before = bytesHeld;
  for (int i = 0; i < 50; ++i) comeAndGo();
  for (const TCode key : FKeys) {
    FKeyed.Register(key, GetHandler(), this);
    FKeyed.Unregister(key, this);
  }
  EXPECT_EQ(bytesHeld, before);

  FKeyed.Register(FKeys[0], GetHandler(), this);
  FList.Add(GetHandler(), this);
  FCounter.FAction = comeAndGo;
  for (int i = 0; i < 25; ++i) {
    FKeyed.Notify(FKeys[0], nullptr, nullptr);
    FList.Notify(nullptr, nullptr);
    if (i == 0) before = bytesHeld;
  }
  EXPECT_EQ(FCounter.FCalls, 50);
  EXPECT_EQ(bytesHeld, before);
}

}  // namespace
}  // namespace margindesk
