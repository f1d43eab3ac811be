#pragma once

#include <csignal>
#include <cstdint>

namespace vornixpath {

/// What a command that runs on waits for: changes, somebody who ends it, and nobody reading any more.
///
/// Must be made before any thread is started: INT and TERM are held back from all threads and taken from a descriptor
/// instead, and a pipe that nobody reads is an error of the write. That stays so until the process ends. Throws
/// std::system_error when the system grants no descriptor.
class WatchNews {
 public:
  WatchNews();
  WatchNews(const WatchNews&) = delete;
  WatchNews& operator=(const WatchNews&) = delete;
  ~WatchNews();

  /// Something may have changed. Safe from any thread.
  void Ring() const noexcept;

  enum class News : std::uint8_t {
    Changes,  ///< Ring was called since this was last told
    TheEnd    ///< INT or TERM has come, or standard output cannot be read any more
  };
  [[nodiscard]] News Wait() const;

  /// Whether whoever read standard output has gone.
  [[nodiscard]] static bool IsNobodyReading();

 private:
  int signals_;
  int bell_;
};

}  // namespace vornixpath
