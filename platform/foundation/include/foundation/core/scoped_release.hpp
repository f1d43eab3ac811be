// A connection, a mount or another thing that lasts as long as its holder wants. Moves, never copies. One holder per
// object: not to be used from two threads at once. No storage is touched.
#pragma once

#include <foundation/export.hpp>
#include <functional>

namespace foundation::core {

/// Ends what it stands for when it is destroyed, or before, by Release.
class FOUNDATION_EXPORT ScopedRelease {
 public:
  /// Holds nothing.
  ScopedRelease() noexcept;
  /// `release` is called once; it must not throw.
  explicit ScopedRelease(std::function<void()> release) noexcept;
  ScopedRelease(ScopedRelease&& other) noexcept;
  /// Ends what was held before.
  ScopedRelease& operator=(ScopedRelease&& other) noexcept;
  ScopedRelease(const ScopedRelease&) = delete;
  ScopedRelease& operator=(const ScopedRelease&) = delete;
  ~ScopedRelease();

  /// Ends it now; does nothing when nothing is held.
  void Release() noexcept;

 private:
  std::function<void()> release_;
};

}  // namespace foundation::core
