#pragma once

#include <cstddef>
#include <limits>
#include <new>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace Quorvex::PathEnvironment {

/// Allocates as the standard allocator does, but asks the system for large pages behind tables of many megabytes, which
/// are read at random: with small ones the processor spends more time on where the table is than on what it says.
template <class T>
class LargePageAllocator {
 public:
  using value_type = T;

  LargePageAllocator() = default;
  template <class Other>
  // NOLINTNEXTLINE(google-explicit-constructor): allocators convert
  LargePageAllocator(const LargePageAllocator<Other>& /*other*/) noexcept {}

  [[nodiscard]] T* allocate(std::size_t count) {
    if (count > std::numeric_limits<std::size_t>::max() / sizeof(T)) throw std::bad_array_new_length();
    void* const memory = ::operator new(count * sizeof(T), AlignmentOf(count));
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    // A wish: refused, the pages stay small, and all works as before.
    if (IsLarge(count)) static_cast<void>(::madvise(memory, count * sizeof(T), MADV_HUGEPAGE));
#endif
    return static_cast<T*>(memory);
  }

  void deallocate(T* memory, std::size_t count) noexcept { ::operator delete(memory, AlignmentOf(count)); }

  friend bool operator==(LargePageAllocator, LargePageAllocator) noexcept { return true; }

 private:
  static constexpr std::size_t kLargePage = std::size_t{2} << 20U;

  static bool IsLarge(std::size_t count) noexcept { return count * sizeof(T) >= 4 * kLargePage; }
  static std::align_val_t AlignmentOf(std::size_t count) noexcept {
    return std::align_val_t(IsLarge(count) ? kLargePage : alignof(T));
  }
};

}  // namespace Quorvex::PathEnvironment
