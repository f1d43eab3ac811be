#include "health_score.hpp"

#include <algorithm>

namespace vornixpath {

namespace {

// Counted up to where no more is taken, so that no count is too large.
int Taken(std::size_t count, int each, int most) {
  return std::min(static_cast<int>(std::min(count, static_cast<std::size_t>(most))) * each, most);
}

}  // namespace

FindingCounts CountsOf(const std::vector<Finding>& findings) {
  const auto count = [&findings](Severity severity) {
    return static_cast<std::size_t>(std::count_if(
        findings.begin(), findings.end(), [severity](const Finding& finding) { return finding.severity == severity; }));
  };
  return {count(Severity::Error), count(Severity::Warning), count(Severity::Note)};
}

int ScoreOf(const FindingCounts& counts) {
  return 100 - Taken(counts.errors, 10, 60) - Taken(counts.warnings, 3, 30) - Taken(counts.notes, 1, 10);
}

}  // namespace vornixpath
