#pragma once

// The kernel's notifications with trouble on demand.

#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <inotify.hpp>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace Quorvex::PathEnvironment {

/// What a test may do to notifications. Shared by the test and the watcher; safe from any thread.
class WatchTrouble {
 public:
  /// The error with which the watch on a path is refused, or 0.
  using Refuse = std::function<int(const std::string& path)>;

  void RefuseWatches(Refuse refuse) {
    const std::scoped_lock lock(mutex_);
    refuse_ = std::move(refuse);
  }
  [[nodiscard]] int RefusalOf(const std::string& path) {
    const std::scoped_lock lock(mutex_);
    return refuse_ ? refuse_(path) : 0;
  }

  /// Whoever reads waits until Resume.
  void Pause() {
    const std::scoped_lock lock(mutex_);
    isPaused_ = true;
  }
  void Resume() {
    {
      const std::scoped_lock lock(mutex_);
      isPaused_ = false;
    }
    resumed_.notify_all();
  }
  void WaitWhilePaused() {
    std::unique_lock lock(mutex_);
    resumed_.wait(lock, [this] { return !isPaused_; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable resumed_;
  bool isPaused_ = false;
  Refuse refuse_;
};

class TroubledInotify final : public Inotify {
 public:
  explicit TroubledInotify(std::shared_ptr<WatchTrouble> trouble)
      : trouble_(std::move(trouble)), inotify_(OpenInotify()) {}

  [[nodiscard]] int GetDescriptor() const override { return inotify_->GetDescriptor(); }
  int Add(const char* path, std::uint32_t mask) override {
    if (const int refusal = trouble_->RefusalOf(path)) {
      errno = refusal;
      return -1;
    }
    return inotify_->Add(path, mask);
  }
  void Remove(int watch) override { inotify_->Remove(watch); }
  ssize_t Read(std::span<std::byte> buffer) override {
    trouble_->WaitWhilePaused();
    const ssize_t size = inotify_->Read(buffer);
    return size;
  }

 private:
  std::shared_ptr<WatchTrouble> trouble_;
  std::unique_ptr<Inotify> inotify_;
};

}  // namespace Quorvex::PathEnvironment
