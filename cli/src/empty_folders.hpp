#pragma once

#include <search_path_environment/path_problem.hpp>
#include <vector>

#include "finding.hpp"
#include "folder_removal.hpp"

namespace vornixpath {

/// Folders of the path in which no lookup finds anything: they hold no file with one of the extensions, and neither
/// does a package, class or private folder in them. Those to which `troubles` belong are passed over: nobody knows what
/// they hold. In path order, O(n).
[[nodiscard]] std::vector<Finding> EmptyFolders(const ExaminedPath& examined,
                                                const std::vector<Quorvex::PathEnvironment::PathProblem>& troubles,
                                                const FolderRemoval& removal);

}  // namespace vornixpath
