#pragma once

#include <vector>

#include "finding.hpp"

namespace vornixpath {

/// Names in one scope that differ in letter case only: different things where letter case counts, one and the same
/// elsewhere. A scope is all that is typed behind the same folders, from all over the path, or one private folder;
/// names are those of files with one of the extensions, without it, of packages and of classes.
///
/// Each group is one finding, with the first place of each spelling, by where it is met first. Where folders differ
/// themselves (+Geo, +geo), what is in them is told only if it differs, too. Nothing is told of names all of which
/// stand where storage tells no letter cases apart: lookups take them for one. O(n) in the number of files, and as much
/// memory.
[[nodiscard]] std::vector<Finding> LetterCaseTwins(const ExaminedPath& examined);

}  // namespace vornixpath
