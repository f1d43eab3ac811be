#pragma once

#include <search_path_environment/path_problem.hpp>
#include <vector>

#include "explanation.hpp"

namespace vornixpath {

/// For people.
void WriteAsLines(const Explanation& explanation, const FolderNumbers& numbers);

/// For programs: the same facts.
void WriteAsJson(const Explanation& explanation, const FolderNumbers& numbers,
                 const std::vector<Quorvex::PathEnvironment::PathProblem>& problems);

}  // namespace vornixpath
