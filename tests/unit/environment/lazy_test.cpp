#include "lazy.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <support/run_together.hpp>
#include <vector>

namespace Quorvex::PathEnvironment {
namespace {

using PathManagement::support::RunTogether;

constexpr int kThreads = 8;

TEST(Lazy, MakesItsValueOnFirstUseAndOnlyOnce) {
  int made = 0;
  const Lazy<std::string> lazy;
  const auto make = [&made] {
    ++made;
    return std::string("value");
  };
  EXPECT_EQ(made, 0);

  const std::string& first = lazy.Get(make);
  const std::string& second = lazy.Get(make);

  EXPECT_EQ(first, "value");
  EXPECT_EQ(&first, &second);
  EXPECT_EQ(made, 1);
}

TEST(Lazy, MakesItsValueAgainAfterAFailure) {
  const Lazy<int> lazy;

  EXPECT_THROW(static_cast<void>(lazy.Get([]() -> int { throw std::runtime_error("not now"); })), std::runtime_error);

  EXPECT_EQ(lazy.Get([] { return 5; }), 5);
  EXPECT_EQ(lazy.Get([]() -> int { throw std::runtime_error("not asked"); }), 5);
}

TEST(Lazy, HoldsWhatCanNeitherBeCopiedNorMoved) {
  struct Fixed {
    explicit Fixed(int number) : value(number) {}
    Fixed(const Fixed&) = delete;
    Fixed& operator=(const Fixed&) = delete;
    int value;
  };
  const Lazy<Fixed> lazy;

  EXPECT_EQ(lazy.Get([] { return Fixed(3); }).value, 3);
}

TEST(Lazy, GivesAllThreadsTheOneValue) {
  for (int round = 0; round < 50; ++round) {
    const Lazy<std::vector<int>> lazy;
    std::atomic<int> made = 0;
    std::vector<const std::vector<int>*> seen(kThreads);

    RunTogether(kThreads, [&](std::size_t number) {
      seen[number] = &lazy.Get([&made] {
        ++made;
        return std::vector<int>(100, 1);
      });
    });

    ASSERT_EQ(made, 1);
    for (const auto* value : seen) {
      ASSERT_EQ(value, seen.front());
      ASSERT_EQ(value->size(), 100U);
    }
  }
}

TEST(Lazy, SucceedsForAllThreadsButThoseWhoseOwnAttemptFailed) {
  const Lazy<int> lazy;
  std::atomic<int> attempts = 0;
  std::atomic<int> failures = 0;
  std::atomic<int> successes = 0;

  RunTogether(kThreads, [&](std::size_t) {
    try {
      successes += lazy.Get([&attempts]() -> int {
        if (++attempts <= 2) throw std::runtime_error("one of the first two");
        return 1;
      });
    } catch (const std::runtime_error&) {
      ++failures;
    }
  });

  EXPECT_EQ(attempts, 3);
  EXPECT_EQ(failures, 2);
  EXPECT_EQ(successes, kThreads - 2);
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
