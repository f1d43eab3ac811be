#pragma once

#include <vector>

#include "finding.hpp"

namespace vornixpath {

/// Files and folders that take part in lookups, and whose names another platform forbids, each location once: the
/// folders of the path, and packages, classes and private folders in them, by their own names, and in them files with
/// one of the extensions. In path order, a folder before its files. O(n).
[[nodiscard]] std::vector<Finding> ForbiddenNames(const ExaminedPath& examined);

}  // namespace vornixpath
