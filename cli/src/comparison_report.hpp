#pragma once

#include "path_comparison.hpp"

namespace vornixpath {

/// Writes the folders that changed and the names, one a line; with `isDeep`, too, the files of refreshed folders.
void WriteAsLines(const PathComparison& comparison, bool isDeep);

/// The same, but on a terminal in colours, and the folders of both paths beside each other.
void WriteForPeople(const PathComparison& comparison, bool isDeep);

void WriteAsJson(const PathComparison& comparison, bool isDeep);

}  // namespace vornixpath
