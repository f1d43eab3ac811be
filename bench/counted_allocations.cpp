#include "counted_allocations.hpp"

#include <atomic>
#include <cstdlib>
#include <new>

namespace bench {

namespace {

// Looked at by every allocation of the program, so that others pay no more than that.
std::atomic<bool> isCounting = false;
std::atomic<std::size_t> countedBytes = 0;

}  // namespace

CountedAllocations::CountedAllocations() {
  countedBytes = 0;
  isCounting = true;
}

CountedAllocations::~CountedAllocations() { isCounting = false; }

std::size_t CountedAllocations::GetBytes() const { return countedBytes; }

static void* Allocate(std::size_t size) {
  if (isCounting.load(std::memory_order_relaxed)) countedBytes.fetch_add(size, std::memory_order_relaxed);
  if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}

}  // namespace bench

void* operator new(std::size_t size) { return bench::Allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  try {
    return bench::Allocate(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
