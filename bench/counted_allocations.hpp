#pragma once

#include <cstddef>

namespace bench {

/// The bytes asked of `operator new`, by any thread, since construction. One at a time.
class CountedAllocations {
 public:
  CountedAllocations();
  CountedAllocations(const CountedAllocations&) = delete;
  CountedAllocations& operator=(const CountedAllocations&) = delete;
  ~CountedAllocations();

  [[nodiscard]] std::size_t GetBytes() const;
};

}  // namespace bench
