#include "bench/Allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

// What replaces operator new has nothing but malloc to stand on.
// NOLINTBEGIN(cppcoreguidelines-no-malloc)
namespace {

std::atomic<std::size_t> allocationCount{0};

void* Allocate(std::size_t size, std::size_t alignment) {
  allocationCount.fetch_add(1, std::memory_order_relaxed);
  void* memory = alignment == 0
                     ? std::malloc(size == 0 ? 1 : size)
                     : std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

void* operator new(std::size_t size) { return Allocate(size, 0); }
void* operator new(std::size_t size, std::align_val_t alignment) {
  return Allocate(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
void operator delete(void* memory, std::align_val_t /*alignment*/) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
  std::free(memory);
}

// NOLINTEND(cppcoreguidelines-no-malloc)

namespace margindesk {

std::size_t GetAllocationCount() noexcept { return allocationCount.load(std::memory_order_relaxed); }

}  // namespace margindesk
