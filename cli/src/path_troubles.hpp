#pragma once

#include <search_path_environment/folder_path.hpp>
#include <search_path_environment/path_problem.hpp>
#include <vector>

#include "loaded_path.hpp"

namespace vornixpath {

/// The problems of `path` that may make an answer incomplete, in path order. A repeat is none: the folder is searched
/// at its first place.
[[nodiscard]] std::vector<Quorvex::PathEnvironment::PathProblem> TroublesOf(
    const Quorvex::PathEnvironment::FolderPath& path);

/// The same, without those of masked folders.
[[nodiscard]] std::vector<Quorvex::PathEnvironment::PathProblem> TroublesOf(const LoadedPath& path);

/// Writes a warning for each.
void Warn(const std::vector<Quorvex::PathEnvironment::PathProblem>& troubles);

}  // namespace vornixpath
