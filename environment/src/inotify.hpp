// The kernel's notifications, behind an interface so that tests can refuse watches, lose events and hold them back.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace Quorvex::PathEnvironment {

/// One inotify instance. As with system calls, -1 is a failure and errno says why. Any thread may add and remove
/// watches; one at a time reads.
class Inotify {
 public:
  Inotify() = default;
  Inotify(const Inotify&) = delete;
  Inotify& operator=(const Inotify&) = delete;
  virtual ~Inotify() = default;

  /// What to poll(2) for events; -1 when the system grants no instance, and then every watch is refused.
  [[nodiscard]] virtual int GetDescriptor() const = 0;
  /// The watch on what `path` names, the same for the same folder; `mask` is joined with that of an earlier call.
  virtual int Add(const char* path, std::uint32_t mask) = 0;
  virtual void Remove(int watch) = 0;
  /// Never waits: EAGAIN when there are no events.
  virtual ssize_t Read(std::span<std::byte> buffer) = 0;
};

[[nodiscard]] std::unique_ptr<Inotify> OpenInotify();

}  // namespace Quorvex::PathEnvironment
