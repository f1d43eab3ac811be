#pragma once

#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/path_problem.hpp>
#include <vector>

#include "finding.hpp"
#include "folder_removal.hpp"

namespace vornixpath {

/// Folders that are missing, cannot be read, or lead back to one that encloses them: one finding for each of
/// `troubles`, in their order.
[[nodiscard]] std::vector<Finding> UnusableFolders(const ExaminedPath& examined,
                                                   const std::vector<Quorvex::PathEnvironment::PathProblem>& troubles,
                                                   const FolderRemoval& removal);

/// Folders that stand on the path already, in whatever spelling, in path order.
[[nodiscard]] std::vector<Finding> RepeatedFolders(const std::vector<Quorvex::PathEnvironment::DroppedFolder>& dropped,
                                                   const FolderRemoval& removal);

}  // namespace vornixpath
