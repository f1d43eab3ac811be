#pragma once

#include <cstddef>
#include <vector>

#include "finding.hpp"

namespace vornixpath {

/// How many findings there are of each severity.
struct FindingCounts {
  std::size_t errors = 0;
  std::size_t warnings = 0;
  std::size_t notes = 0;

  friend bool operator==(const FindingCounts&, const FindingCounts&) = default;
};

[[nodiscard]] FindingCounts CountsOf(const std::vector<Finding>& findings);

/// From 0 to 100, which is without findings. Each error takes 10, 60 at most; each warning 3, 30 at most; each note 1,
/// 10 at most.
[[nodiscard]] int ScoreOf(const FindingCounts& counts);

}  // namespace vornixpath
