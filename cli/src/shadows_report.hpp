#pragma once

#include <optional>
#include <search_path_environment/path_problem.hpp>
#include <string>
#include <vector>

#include "shadow_pairs.hpp"

namespace vornixpath {

/// What `shadows` tells.
struct ShadowsReport {
  std::vector<ShadowPair> pairs;
  std::vector<Quorvex::PathEnvironment::PathProblem> problems;
  std::optional<BaselineEffect> baseline;  ///< where one was given
};

/// Where within their folders the two stand, behind the name: ": @Shape/Shape.vnx hides Shape.vnx". Empty for files of
/// that name directly in their folders, which need no further word. Safe for a terminal.
[[nodiscard]] std::string PlacesInWords(const ShadowPair& pair, const Shadow& shadow);

void WriteAsLines(const ShadowsReport& report);
void WriteAsJson(const ShadowsReport& report);

}  // namespace vornixpath
