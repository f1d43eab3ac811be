#pragma once

#include <search_path_environment/folder_entry.hpp>
#include <utility>
#include <vector>

namespace Quorvex::PathEnvironment {

/// Adds what went wrong with `entry` and those below it, in walk order, as problems of `position`.
// Depth is bounded by the reader, so recursion is too.
inline void CollectProblems(const FolderEntry& entry, std::size_t position, std::vector<PathProblem>& problems) {
  for (PathProblem problem : entry.GetProblems()) {
    problem.position = position;
    problems.push_back(std::move(problem));
  }
  for (const auto& child : entry.GetChildren()) CollectProblems(*child, position, problems);
}

}  // namespace Quorvex::PathEnvironment
