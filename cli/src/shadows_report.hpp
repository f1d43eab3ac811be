#pragma once

#include <optional>
#include <search_path_environment/path_problem.hpp>
#include <vector>

#include "shadow_pairs.hpp"

namespace vornixpath {

/// What `shadows` tells.
struct ShadowsReport {
  std::vector<ShadowPair> pairs;
  std::vector<Quorvex::PathEnvironment::PathProblem> problems;
  std::optional<BaselineEffect> baseline;  ///< where one was given
};

void WriteAsLines(const ShadowsReport& report);
void WriteAsJson(const ShadowsReport& report);

}  // namespace vornixpath
