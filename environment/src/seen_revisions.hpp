// What each thread has last seen of something that changes.
#pragma once

#include <atomic>
#include <boost/unordered/unordered_flat_map.hpp>
#include <cstdint>

namespace Quorvex::PathEnvironment {

/// Safe from any thread. Each thread keeps what it has seen itself, a few bytes for each object of this class, until it
/// ends: so a thread that comes later has seen nothing, whatever number it bears.
class SeenRevisions {
 public:
  void Note(std::uint64_t revision) const { OfThread()[id_] = revision; }

  /// 0 when this thread has seen none.
  [[nodiscard]] std::uint64_t OfThisThread() const {
    const auto& seen = OfThread();
    const auto found = seen.find(id_);
    return found == seen.end() ? 0 : found->second;
  }

 private:
  using RevisionsById = boost::unordered_flat_map<std::uint64_t, std::uint64_t>;

  static RevisionsById& OfThread() {
    thread_local RevisionsById seen;
    return seen;
  }
  static std::uint64_t NextId() {
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
  }

  std::uint64_t id_ = NextId();
};

}  // namespace Quorvex::PathEnvironment
