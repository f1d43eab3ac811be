#pragma once

// A program that watches compiles allocations.cpp in, which replaces its operator new.

#include <cstddef>

namespace Quorvex::PathManagement::support {

/// Watches what this thread asks of `operator new`, from construction on; and lets one request fail. One at a time.
class Allocations {
 public:
  static constexpr std::size_t kNever = static_cast<std::size_t>(-1);

  /// The request that comes after `successes` others throws std::bad_alloc.
  explicit Allocations(std::size_t successes = kNever);
  Allocations(const Allocations&) = delete;
  Allocations& operator=(const Allocations&) = delete;
  ~Allocations();

  [[nodiscard]] std::size_t GetCount() const;
  /// Those of all blocks together.
  [[nodiscard]] std::size_t GetBytes() const;
  /// Blocks asked for since, less all that were given back since, those of before included.
  [[nodiscard]] std::ptrdiff_t GetAlive() const;
  /// The largest number of blocks that were held at once, of those asked for since.
  [[nodiscard]] std::size_t GetMostAlive() const;
};

}  // namespace Quorvex::PathManagement::support
