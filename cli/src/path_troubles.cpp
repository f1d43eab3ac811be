#include "path_troubles.hpp"

#include <algorithm>
#include <iterator>

#include "location_text.hpp"
#include "output.hpp"

namespace vornixpath {

using Quorvex::PathEnvironment::PathProblem;
using Quorvex::PathEnvironment::ProblemKind;

std::vector<PathProblem> TroublesOf(const Quorvex::PathEnvironment::FolderPath& path) {
  std::vector<PathProblem> troubles;
  const auto& problems = path.GetProblems();
  std::copy_if(problems.begin(), problems.end(), std::back_inserter(troubles),
               [](const PathProblem& problem) { return problem.kind != ProblemKind::Repeated; });
  return troubles;
}

std::vector<PathProblem> TroublesOf(const LoadedPath& path) {
  std::vector<PathProblem> troubles = TroublesOf(path.GetLeaf());
  std::erase_if(troubles, [&path](const PathProblem& trouble) { return path.IsMasked(trouble.position); });
  return troubles;
}

void Warn(const std::vector<PathProblem>& troubles) {
  for (const PathProblem& trouble : troubles) {
    WriteWarning(Quoted(TextOf(trouble.location)) + ", folder " + std::to_string(trouble.position + 1) +
                 " of the path: " + ReasonOf(trouble));
  }
}

}  // namespace vornixpath
