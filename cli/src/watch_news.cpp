#include "watch_news.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace vornixpath {

namespace {

constexpr short kNobodyReads = POLLERR | POLLHUP | POLLNVAL;

// Standard output may be closed, and must not become a descriptor of ours.
int AboveTheStandardOnes(int descriptor) {
  if (descriptor == -1 || descriptor > STDERR_FILENO) return descriptor;
  const int moved = ::fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  ::close(descriptor);
  return moved;
}

int TakeSignals() {
  sigset_t taken;
  sigemptyset(&taken);
  sigaddset(&taken, SIGINT);
  sigaddset(&taken, SIGTERM);
  sigset_t blocked = taken;
  sigaddset(&blocked, SIGPIPE);
  if (const int error = pthread_sigmask(SIG_BLOCK, &blocked, nullptr)) {
    throw std::system_error(error, std::generic_category(), "cannot hold back signals");
  }
  const int descriptor = AboveTheStandardOnes(::signalfd(-1, &taken, SFD_CLOEXEC | SFD_NONBLOCK));
  if (descriptor == -1) throw std::system_error(errno, std::generic_category(), "cannot wait for signals");
  return descriptor;
}

}  // namespace

WatchNews::WatchNews()
    : signals_(TakeSignals()), bell_(AboveTheStandardOnes(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))) {
  if (bell_ != -1) return;
  const std::system_error failure(errno, std::generic_category(), "cannot wait for changes");
  ::close(signals_);
  throw failure;
}

WatchNews::~WatchNews() {
  ::close(bell_);
  ::close(signals_);
}

// Cannot fail but when the counter is full, and then it has been rung.
void WatchNews::Ring() const noexcept { static_cast<void>(::eventfd_write(bell_, 1)); }

WatchNews::News WatchNews::Wait() const {
  while (true) {
    std::array<pollfd, 3> descriptors = {{{signals_, POLLIN, 0}, {STDOUT_FILENO, 0, 0}, {bell_, POLLIN, 0}}};
    if (::poll(descriptors.data(), descriptors.size(), -1) == -1) {
      if (errno == EINTR) continue;
      throw std::system_error(errno, std::generic_category(), "cannot wait for changes");
    }
    if (descriptors[0].revents != 0 || (descriptors[1].revents & kNobodyReads) != 0) return News::TheEnd;
    eventfd_t count = 0;
    if (::eventfd_read(bell_, &count) == 0) return News::Changes;
  }
}

bool WatchNews::IsNobodyReading() {
  pollfd output{STDOUT_FILENO, 0, 0};
  return ::poll(&output, 1, 0) > 0 && (output.revents & kNobodyReads) != 0;
}

}  // namespace vornixpath
