#pragma once

#include <search_path_environment/path_problem.hpp>
#include <search_path_interfaces/found_item.hpp>
#include <string>
#include <vector>

#include "command_line.hpp"
#include "packages.hpp"

namespace vornixpath {

/// What a name means: nothing, one file, or the winner followed by what it hides.
struct Answer {
  std::u16string name;
  std::vector<Quorvex::PathManagement::FoundItem> files;
};

void WriteAsLines(const std::vector<Answer>& answers, OutputForm form);
/// Among the problems are those of `packages` about which nobody can tell.
void WriteAsJson(const std::vector<Answer>& answers, const std::vector<Quorvex::PathEnvironment::PathProblem>& problems,
                 const Packages& packages);

}  // namespace vornixpath
