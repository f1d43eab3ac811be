#include "parallel.hpp"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace Quorvex::PathEnvironment {

namespace {

constexpr std::size_t kFewest = 64;

// One call of InParallel. The caller and workers that come in time take one number after another; a worker that comes
// late finds the job closed and does not touch `work`, which may be gone.
class Job {
 public:
  Job(std::size_t count, const std::function<void(std::size_t)>& work) : count_(count), work_(work) {}

  void Help() noexcept {
    {
      const std::scoped_lock lock(mutex_);
      if (isClosed_) return;
      ++helpers_;
    }
    TakeNumbers();
    const std::scoped_lock lock(mutex_);
    --helpers_;
    changed_.notify_all();
  }

  // Takes numbers until none is left.
  void TakeNumbers() noexcept {
    try {
      for (std::size_t i = next_++; i < count_; i = next_++) work_(i);
    } catch (...) {
      next_ = count_;
      const std::scoped_lock lock(mutex_);
      if (!failure_) failure_ = std::current_exception();
    }
  }

  // Returns when no helper is left, and reports the failure of any.
  void Finish() {
    std::unique_lock lock(mutex_);
    isClosed_ = true;
    changed_.wait(lock, [this] { return helpers_ == 0; });
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  const std::size_t count_;
  const std::function<void(std::size_t)>& work_;
  std::atomic<std::size_t> next_ = 0;

  std::mutex mutex_;
  std::condition_variable changed_;
  std::size_t helpers_ = 0;
  bool isClosed_ = false;
  std::exception_ptr failure_;
};

// Set when the process ends: whatever still runs then does its work alone.
std::atomic<bool> areWorkersGone = false;

class Workers {
 public:
  // One fewer than the processors: the caller works, too. Where the system has no more threads to give, those it gave.
  Workers() {
    const std::size_t count = std::max(std::thread::hardware_concurrency(), 1U) - 1;
    threads_->reserve(count);
    while (threads_->size() < count && StartOne()) continue;
  }
  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;

  // A forked process inherits the handles but not the threads, for which it would wait for ever.
  ~Workers() {
    areWorkersGone = true;
    if (!AreHere()) {
      static_cast<void>(threads_.release());
      return;
    }
    {
      const std::scoped_lock lock(mutex_);
      isEnding_ = true;
    }
    changed_.notify_all();
    for (std::thread& thread : *threads_) thread.join();
  }

  [[nodiscard]] bool AreHere() const { return process_ == ::getpid(); }

  // The workers help with `job` until it is forgotten or nothing of it is left.
  void Ask(const std::shared_ptr<Job>& job) {
    {
      const std::scoped_lock lock(mutex_);
      jobs_.push_back(job);
    }
    changed_.notify_all();
  }
  void Forget(const std::shared_ptr<Job>& job) noexcept {
    const std::scoped_lock lock(mutex_);
    std::erase(jobs_, job);
  }

 private:
  bool StartOne() noexcept {
    try {
      threads_->emplace_back([this] { Work(); });
      return true;
    } catch (const std::exception&) {
      return false;
    }
  }

  void Work() {
    std::unique_lock lock(mutex_);
    while (true) {
      changed_.wait(lock, [this] { return isEnding_ || !jobs_.empty(); });
      if (isEnding_) return;
      const std::shared_ptr<Job> job = jobs_.front();
      lock.unlock();
      job->Help();
      lock.lock();
      std::erase(jobs_, job);
    }
  }

  const pid_t process_ = ::getpid();
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<std::shared_ptr<Job>> jobs_;
  bool isEnding_ = false;
  std::unique_ptr<std::vector<std::thread>> threads_ = std::make_unique<std::vector<std::thread>>();
};

}  // namespace

void InParallel(std::size_t count, const std::function<void(std::size_t)>& work) {
  const auto runAlone = [&] {
    for (std::size_t i = 0; i < count; ++i) work(i);
  };
  if (count < kFewest || areWorkersGone) return runAlone();

  static Workers workers;
  if (!workers.AreHere()) return runAlone();
  const auto job = std::make_shared<Job>(count, work);
  workers.Ask(job);
  job->TakeNumbers();
  workers.Forget(job);
  job->Finish();
}

}  // namespace Quorvex::PathEnvironment
