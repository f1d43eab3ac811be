#pragma once

#include <sys/wait.h>
#include <unistd.h>

namespace Quorvex::PathManagement::support {

/// What `run`, which returns an int from 0 to 254, comes to in a process of its own, which it may limit as it likes. -1
/// when that cannot be started or does not end by itself. Only where this process has one thread.
template <class Run>
[[nodiscard]] int InChild(const Run& run) {
  const pid_t child = ::fork();
  if (child == -1) return -1;
  if (child == 0) ::_exit(static_cast<int>(run()));
  int status = 0;
  return ::waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace Quorvex::PathManagement::support
