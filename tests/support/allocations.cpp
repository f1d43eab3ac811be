#include <algorithm>
#include <cstdlib>
#include <new>
#include <support/allocations.hpp>

namespace Quorvex::PathManagement::support {

namespace {

struct Watch {
  bool isOn = false;
  std::size_t successesLeft = 0;
  std::size_t count = 0;
  std::size_t bytes = 0;
  std::ptrdiff_t alive = 0;
  std::ptrdiff_t mostAlive = 0;
};

thread_local Watch watch;

}  // namespace

Allocations::Allocations(std::size_t successes) { watch = Watch{true, successes, 0, 0, 0, 0}; }
Allocations::~Allocations() { watch.isOn = false; }
std::size_t Allocations::GetCount() const { return watch.count; }
std::size_t Allocations::GetBytes() const { return watch.bytes; }
std::ptrdiff_t Allocations::GetAlive() const { return watch.alive; }
std::size_t Allocations::GetMostAlive() const { return static_cast<std::size_t>(watch.mostAlive); }

static void* Allocate(std::size_t size, std::size_t alignment = alignof(std::max_align_t)) {
  if (watch.isOn) {
    if (watch.successesLeft-- == 0) throw std::bad_alloc();
    ++watch.count;
    watch.bytes += size;
    watch.mostAlive = std::max(watch.mostAlive, ++watch.alive);
  }
  const std::size_t whole = (std::max<std::size_t>(size, 1) + alignment - 1) / alignment * alignment;
  if (void* const memory = std::aligned_alloc(alignment, whole)) return memory;
  throw std::bad_alloc();
}

static void Free(void* memory) noexcept {
  if (watch.isOn && memory != nullptr) --watch.alive;
  std::free(memory);
}

}  // namespace Quorvex::PathManagement::support

void* operator new(std::size_t size) { return Quorvex::PathManagement::support::Allocate(size); }
void* operator new(std::size_t size, std::align_val_t alignment) {
  return Quorvex::PathManagement::support::Allocate(size, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  try {
    return Quorvex::PathManagement::support::Allocate(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
void operator delete(void* memory) noexcept { Quorvex::PathManagement::support::Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Quorvex::PathManagement::support::Free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { Quorvex::PathManagement::support::Free(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
  Quorvex::PathManagement::support::Free(memory);
}
