#pragma once

// Randomness that can be had again: the same seed gives the same values on every machine.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace Quorvex::PathManagement::support {

/// One stream of random values. Put `Describe()` into a SCOPED_TRACE, so that a failure names its seed.
class RandomSource {
 public:
  explicit RandomSource(std::uint64_t seed) : seed_(seed), engine_(seed) {}

  /// Seeded by the environment variable SPU_TEST_SEED, else by `usualSeed`.
  [[nodiscard]] static RandomSource OfThisRun(std::uint64_t usualSeed) {
    const char* const asked = std::getenv("SPU_TEST_SEED");  // NOLINT(concurrency-mt-unsafe): nobody sets variables
    return RandomSource(asked == nullptr ? usualSeed : std::strtoull(asked, nullptr, 10));
  }

  /// How often to try something that is tried `usual` times: as many per cent of that as the environment variable
  /// SPU_TEST_PERCENT says. Fewer under a sanitizer, which finds in the tenth round what it finds in the first;
  /// more in a long run.
  [[nodiscard]] static int Rounds(int usual) {
    const char* const asked = std::getenv("SPU_TEST_PERCENT");  // NOLINT(concurrency-mt-unsafe): nobody sets variables
    return asked == nullptr ? usual : std::max(1, usual * std::atoi(asked) / 100);
  }

  [[nodiscard]] std::string Describe() const { return "SPU_TEST_SEED=" + std::to_string(seed_); }

  /// From 0 up to, but not including, `bound`.
  [[nodiscard]] std::size_t Below(std::size_t bound) { return static_cast<std::size_t>(engine_() % bound); }
  [[nodiscard]] bool OneIn(std::size_t count) { return Below(count) == 0; }

  template <class T>
  [[nodiscard]] const T& Pick(const std::vector<T>& choices) {
    return choices[Below(choices.size())];
  }

  /// Up to `longest` values that `make()` gives.
  template <class Make>
  [[nodiscard]] auto ListOf(std::size_t longest, const Make& make) {
    std::vector<decltype(make())> values(Below(longest + 1));
    for (auto& value : values) value = make();
    return values;
  }

 private:
  std::uint64_t seed_;
  std::mt19937_64 engine_;
};

}  // namespace Quorvex::PathManagement::support
