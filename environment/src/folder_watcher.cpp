#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <foundation/msg_svc/eventmgr/event_mgr.hpp>
#include <functional>
#include <mutex>
#include <search_path_environment/folder_watcher.hpp>
#include <search_path_utilities/services.hpp>
#include <thread>
#include <utility>

#include "inotify.hpp"
#include "watched_folders.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::StorageSystemReference;

namespace {

using Clock = WatchedFolders::Clock;

// What wakes the thread that waits for notifications.
class WakeUp {
 public:
  WakeUp() : descriptor_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (descriptor_ == -1) throw std::system_error(errno, std::generic_category(), "eventfd");
  }
  WakeUp(const WakeUp&) = delete;
  WakeUp& operator=(const WakeUp&) = delete;
  ~WakeUp() { ::close(descriptor_); }

  [[nodiscard]] int GetDescriptor() const noexcept { return descriptor_; }
  // Cannot fail but when the counter is full, and then the thread wakes anyway.
  void Ring() const noexcept { static_cast<void>(::eventfd_write(descriptor_, 1)); }
  void Silence() const noexcept {
    eventfd_t count = 0;
    static_cast<void>(::eventfd_read(descriptor_, &count));
  }

 private:
  int descriptor_;
};

void Announce(const AbsoluteIRI& folder) {
  using namespace foundation::msg_svc::eventmgr;
  PathManagement::NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges(folder, *createLocalEventMgr(SessionEmId));
}

}  // namespace

std::string ReasonOf(const FolderWatching& watching) {
  switch (watching.reason) {
    case WatchingReason::None:
      return {};
    case WatchingReason::Missing:
      return "there is no such folder yet";
    case WatchingReason::LimitReached:
      return "the system grants no further watch";
    case WatchingReason::NoInstance:
      return "the system grants no watches at all";
    case WatchingReason::NoPermission:
      return "the folder or one above it may not be watched";
    case WatchingReason::NotLocal:
      return "its storage does not tell of changes";
    case WatchingReason::HoldsLinks:
      return "what links in it lead to can change unnoticed";
    case WatchingReason::Failed:
      break;
  }
  return watching.error.message();
}

class FolderWatcher::Impl {
 public:
  Impl(StorageSystemReference storage, WatcherOptions options, std::unique_ptr<Inotify> inotify)
      : storage_(storage),
        pollInterval_(std::min<std::chrono::milliseconds>(options.pollInterval, std::chrono::hours(24))),
        whenAnnounced_(std::move(options.whenAnnounced)),
        inotify_(std::move(inotify)),
        folders_(std::move(storage), *inotify_, pollInterval_ > std::chrono::milliseconds::zero()),
        thread_([this](const std::stop_token& stop) { Run(stop); }) {}
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;
  ~Impl() {
    thread_.request_stop();
    wakeUp_.Ring();
  }

  // Changes the folders, on the caller's thread, and announces what is in doubt then.
  template <class Work>
  void Change(const Work& change) {
    try {
      const std::scoped_lock lock(mutex_);
      change(folders_);
    } catch (...) {
      DoubtAll();
      throw;
    }
    AnnounceDoubts();
    wakeUp_.Ring();  // what is polled may be other folders now
  }

  template <class Question>
  auto Ask(const Question& ask) const {
    const std::scoped_lock lock(mutex_);
    return ask(folders_);
  }

 private:
  // Some doubt was lost, so the thread doubts everything.
  void DoubtAll() {
    isAllInDoubt_ = true;
    wakeUp_.Ring();
  }

  void Run(const std::stop_token& stop) {
    while (!stop.stop_requested()) {
      try {
        Wait();
        if (stop.stop_requested()) return;
        TakeWhatHasHappened();
      } catch (const std::exception&) {
        // Memory has ended, most likely: what was lost is not known, so all is in doubt when there is some again.
        isAllInDoubt_ = true;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
      }
    }
  }

  void Wait() {
    pollfd descriptors[] = {{wakeUp_.GetDescriptor(), POLLIN, 0}, {inotify_->GetDescriptor(), POLLIN, 0}};
    if (::poll(descriptors, std::size(descriptors), MillisecondsToWait()) > 0 && descriptors[0].revents != 0) {
      wakeUp_.Silence();
    }
  }

  // -1, for ever, when nothing is polled.
  int MillisecondsToWait() {
    if (isAllInDoubt_) return 0;
    if (!Ask([](const WatchedFolders& folders) { return folders.NeedGlances(); })) {
      nextGlance_ = Clock::time_point::max();
      return -1;
    }
    if (nextGlance_ == Clock::time_point::max()) nextGlance_ = Clock::now() + pollInterval_;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(nextGlance_ - Clock::now());
    return std::max(static_cast<int>(left.count()), 0);  // no more than a day
  }

  void TakeWhatHasHappened() {
    const std::vector<std::byte> events = ReadEvents();
    {
      const std::scoped_lock lock(mutex_);
      if (isAllInDoubt_.exchange(false)) {
        folders_.DoubtAll();
      } else {
        folders_.TakeEvents(events);
      }
    }
    if (Clock::now() >= nextGlance_) Glance();
    AnnounceDoubts();
  }

  // All there are, up to a limit, so that a flood of them cannot keep back what came first.
  std::vector<std::byte> ReadEvents() {
    constexpr std::size_t limit = std::size_t{1} << 20U;
    std::vector<std::byte> events;
    while (events.size() < limit) {
      const ssize_t size = inotify_->Read(buffer_);
      if (size <= 0) {
        const bool isEmpty = size == 0 || errno == EAGAIN || errno == EINTR || inotify_->GetDescriptor() == -1;
        if (isEmpty) break;
        throw std::system_error(errno, std::generic_category(), "inotify");
      }
      events.insert(events.end(), buffer_.begin(), buffer_.begin() + size);
    }
    return events;
  }

  // Storage may be slow, so nobody is kept waiting meanwhile.
  void Glance() {
    auto glances = Ask([](const WatchedFolders& folders) { return folders.GetGlances(); });
    for (auto& glance : glances) WatchedFolders::Look(glance, storage_);
    nextGlance_ = Clock::now() + pollInterval_;
    const std::scoped_lock lock(mutex_);
    folders_.TakeGlances(glances, Clock::now());
  }

  void AnnounceDoubts() {
    std::vector<AbsoluteIRI> doubts;
    {
      const std::scoped_lock lock(mutex_);
      doubts = folders_.TakeDoubts();
    }
    if (doubts.empty()) return;
    try {
      for (const AbsoluteIRI& folder : doubts) Announce(folder);
    } catch (...) {
      DoubtAll();
      throw;
    }
    if (whenAnnounced_) whenAnnounced_();
  }

  const StorageSystemReference storage_;
  const std::chrono::milliseconds pollInterval_;
  const std::function<void()> whenAnnounced_;
  const std::unique_ptr<Inotify> inotify_;
  mutable std::mutex mutex_;  // of folders_
  WatchedFolders folders_;
  std::atomic<bool> isAllInDoubt_ = false;
  WakeUp wakeUp_;

  // Of the thread alone.
  Clock::time_point nextGlance_ = Clock::time_point::max();
  alignas(inotify_event) std::array<std::byte, std::size_t{1} << 16U> buffer_{};

  std::jthread thread_;  // last: it uses all the others
};

FolderWatcher::FolderWatcher(StorageSystemReference storage, WatcherOptions options)
    : FolderWatcher(std::move(storage), std::move(options), OpenInotify()) {}

FolderWatcher::FolderWatcher(StorageSystemReference storage, WatcherOptions options, std::unique_ptr<Inotify> inotify)
    : impl_(std::make_unique<Impl>(std::move(storage), std::move(options), std::move(inotify))) {}

FolderWatcher::~FolderWatcher() = default;

void FolderWatcher::Watch(const FolderPath& path) {
  impl_->Change([&](WatchedFolders& folders) { folders.Set(*path.GetMainEntries()); });
}

void FolderWatcher::WatchInstead(const std::vector<std::shared_ptr<const FolderEntry>>& entries) {
  impl_->Change([&](WatchedFolders& folders) {
    for (const auto& entry : entries) folders.Replace(*entry);
  });
}

std::vector<FolderWatching> FolderWatcher::GetFolders() const {
  return impl_->Ask([](const WatchedFolders& folders) { return folders.GetStates(); });
}

std::optional<FolderWatching> FolderWatcher::Find(const AbsoluteIRI& folder) const {
  return impl_->Ask([&](const WatchedFolders& folders) { return folders.Find(folder); });
}

}  // namespace Quorvex::PathEnvironment
