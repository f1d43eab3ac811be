#include "parallel.hpp"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <set>
#include <stdexcept>
#include <support/run_together.hpp>
#include <thread>
#include <vector>

namespace Quorvex::PathEnvironment {
namespace {

using PathManagement::support::RunTogether;

constexpr std::size_t kMany = 10'000;

void ExpectEachOnce(std::size_t count) {
  std::vector<std::atomic<int>> calls(count);
  InParallel(count, [&](std::size_t i) { ++calls[i]; });
  for (std::size_t i = 0; i < count; ++i) ASSERT_EQ(calls[i], 1) << i << " of " << count;
}

TEST(InParallel, CallsForEachNumberOnce) {
  for (const std::size_t count : {0U, 1U, 63U, 64U, 65U, 1'000U}) ExpectEachOnce(count);
}

TEST(InParallel, KeepsAFewCallsOnTheCallingThread) {
  const auto caller = std::this_thread::get_id();
  InParallel(10, [&](std::size_t) { EXPECT_EQ(std::this_thread::get_id(), caller); });
}

TEST(InParallel, MayBeCalledFromManyThreads) {
  RunTogether(4, [](std::size_t) {
    for (int round = 0; round < 20; ++round) ExpectEachOnce(200);
  });
}

TEST(InParallel, MayBeCalledFromItsOwnWork) {
  std::atomic<std::size_t> calls = 0;
  InParallel(100, [&](std::size_t) { InParallel(100, [&](std::size_t) { ++calls; }); });
  EXPECT_EQ(calls, 10'000U);
}

TEST(InParallel, RethrowsAFailureAndBeginsNothingMore) {
  std::atomic<std::size_t> calls = 0;
  const auto work = [&](std::size_t i) {
    ++calls;
    if (i == 100) throw std::runtime_error("the hundredth");
  };

  EXPECT_THROW(InParallel(kMany * 100, work), std::runtime_error);
  EXPECT_LT(calls, kMany * 100);
  ExpectEachOnce(1'000);
}

TEST(InParallel, HasReturnedFromEveryCallWhenItThrows) {
  for (int round = 0; round < 50; ++round) {
    std::atomic<int> running = 0;
    const auto work = [&](std::size_t i) {
      ++running;
      if (i == 70) {
        --running;
        throw std::runtime_error("one");
      }
      std::this_thread::yield();
      --running;
    };
    EXPECT_THROW(InParallel(kMany, work), std::runtime_error);
    ASSERT_EQ(running, 0);
  }
}

TEST(InParallel, WorksInAForkedProcessThatHasNoWorkers) {
  ExpectEachOnce(1'000);  // so that there are workers to be missed

  const pid_t child = ::fork();
  ASSERT_NE(child, -1);
  if (child == 0) {
    std::size_t calls = 0;
    InParallel(1'000, [&](std::size_t) { ++calls; });
    ::_exit(calls == 1'000 ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
