#pragma once

#include <vector>

#include "finding.hpp"

namespace vornixpath {

/// Packages, and classes, whose folders stand in several folders of the path, by where they stand first; one within
/// another is told by itself. Where no letter case is told apart, none is here. O(n log n).
[[nodiscard]] std::vector<Finding> SpreadFolders(const ExaminedPath& examined);

}  // namespace vornixpath
