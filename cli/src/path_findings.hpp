// All that `doctor` finds out about a path, for whoever tells it.
#pragma once

#include <search_path_environment/path_problem.hpp>
#include <vector>

#include "command_line.hpp"
#include "finding.hpp"
#include "folder_removal.hpp"
#include "loaded_path.hpp"
#include "packages.hpp"
#include "shadow_pairs.hpp"

namespace vornixpath {

/// How folders are taken off `path`, which was loaded as `options` say, with the folders of `packages` behind it.
[[nodiscard]] FolderRemoval RemovalFor(const PathOptions& options, const LoadedPath& path, const Packages& packages);

/// What is hidden on the path, graded. Asks storage about files that share a name.
[[nodiscard]] std::vector<ShadowPair> ShadowsOf(const ExaminedPath& examined);

/// What is known of a path. All of it must outlive this object.
struct KnownPath {
  const LoadedPath& path;
  const ExaminedPath& examined;  ///< the same path
  const std::vector<Quorvex::PathEnvironment::PathProblem>& troubles;
  const std::vector<ShadowPair>& shadows;
};

/// Everything that may be amiss, most severe first, those of one severity by kind.
[[nodiscard]] std::vector<Finding> FindingsOf(const KnownPath& known, const FolderRemoval& removal);

}  // namespace vornixpath
