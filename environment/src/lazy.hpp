#pragma once

#include <atomic>
#include <memory>
#include <mutex>

namespace Quorvex::PathEnvironment {

/// A value that is made on first use and then stays. Safe from any thread; once made, reading takes no lock. If making
/// throws, nothing is kept and the next call makes it again.
template <class T>
class Lazy {
 public:
  template <class Make>
  const T& Get(const Make& make) const {
    if (const T* const ready = ready_.load(std::memory_order_acquire)) return *ready;

    const std::scoped_lock lock(mutex_);
    if (!value_) {
      value_.reset(new T(make()));  // in place: T need not be movable
      ready_.store(value_.get(), std::memory_order_release);
    }
    return *value_;
  }

  /// Null as long as nobody has asked for the value.
  const T* GetIfMade() const noexcept { return ready_.load(std::memory_order_acquire); }

 private:
  mutable std::mutex mutex_;
  mutable std::unique_ptr<const T> value_;
  mutable std::atomic<const T*> ready_ = nullptr;
};

}  // namespace Quorvex::PathEnvironment
