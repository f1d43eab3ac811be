#include "parallel.hpp"

// What a job's calls share they hand over under its own lock; a fence more is what ThreadSanitizer cannot follow.
#define BOOST_ASIO_DISABLE_FENCED_BLOCK

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <boost/asio/post.hpp>
#include <boost/asio/thread_pool.hpp>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>

namespace Quorvex::PathEnvironment {

namespace {

constexpr std::size_t kFewest = 64;

// One call of InParallel. The caller and workers that come in time take one number after another; a worker that comes
// late finds the job closed and does not touch `work`, which may be gone.
class Job {
 public:
  Job(std::size_t count, const std::function<void(std::size_t)>& work) : count_(count), work_(work) {}

  void Help() {
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

  void RunToTheEnd() {
    TakeNumbers();
    std::unique_lock lock(mutex_);
    isClosed_ = true;
    changed_.wait(lock, [this] { return helpers_ == 0; });
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  void TakeNumbers() {
    try {
      for (std::size_t i = next_++; i < count_; i = next_++) work_(i);
    } catch (...) {
      next_ = count_;
      const std::scoped_lock lock(mutex_);
      if (!failure_) failure_ = std::current_exception();
    }
  }

  const std::size_t count_;
  const std::function<void(std::size_t)>& work_;
  std::atomic<std::size_t> next_ = 0;

  std::mutex mutex_;
  std::condition_variable changed_;
  std::size_t helpers_ = 0;
  bool isClosed_ = false;
  std::exception_ptr failure_;
};

class Workers {
 public:
  // One fewer than the processors: the caller works, too.
  Workers() {
    const std::size_t count = std::max(std::thread::hardware_concurrency(), 1U) - 1;
    if (count == 0) return;
    try {
      pool_ = std::make_unique<boost::asio::thread_pool>(count);
      count_ = count;
    } catch (const std::system_error&) {
      count_ = 0;  // no thread can be had, and the caller does everything
    }
  }
  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;

  // A forked process inherits the pool but not its threads, for which it would wait for ever.
  ~Workers() {
    if (!AreHere()) static_cast<void>(pool_.release());
  }

  void Ask(const std::shared_ptr<Job>& job) {
    if (!AreHere()) return;
    for (std::size_t i = 0; i < count_; ++i) boost::asio::post(*pool_, [job] { job->Help(); });
  }

 private:
  [[nodiscard]] bool AreHere() const { return process_ == ::getpid(); }

  pid_t process_ = ::getpid();
  std::size_t count_ = 0;
  std::unique_ptr<boost::asio::thread_pool> pool_;
};

}  // namespace

void InParallel(std::size_t count, const std::function<void(std::size_t)>& work) {
  if (count < kFewest) {
    for (std::size_t i = 0; i < count; ++i) work(i);
    return;
  }
  static Workers workers;
  const auto job = std::make_shared<Job>(count, work);
  workers.Ask(job);
  job->RunToTheEnd();
}

}  // namespace Quorvex::PathEnvironment
