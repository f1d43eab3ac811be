// What each thread has last seen of something that changes.
#pragma once

#include <cstdint>
#include <mutex>
#include <thread>
#include <unordered_map>

namespace Quorvex::PathEnvironment {

/// Safe from any thread. A thread that comes later may bear the number of one that has ended, and then has seen what
/// that one saw.
class SeenRevisions {
 public:
  void Note(std::uint64_t revision) {
    const std::scoped_lock lock(mutex_);
    seen_[std::this_thread::get_id()] = revision;
  }

  /// 0 when this thread has seen none.
  [[nodiscard]] std::uint64_t OfThisThread() const {
    const std::scoped_lock lock(mutex_);
    const auto found = seen_.find(std::this_thread::get_id());
    return found == seen_.end() ? 0 : found->second;
  }

 private:
  mutable std::mutex mutex_;
  std::unordered_map<std::thread::id, std::uint64_t> seen_;
};

}  // namespace Quorvex::PathEnvironment
