#include "path_troubles.hpp"

#include "location_text.hpp"
#include "output.hpp"

namespace vornixpath {

using Quorvex::PathEnvironment::PathProblem;
using Quorvex::PathEnvironment::ProblemKind;

namespace {

// A repeat is no trouble.
std::vector<PathProblem> TroublesAmong(std::vector<PathProblem> problems) {
  std::erase_if(problems, [](const PathProblem& problem) { return problem.kind == ProblemKind::Repeated; });
  return problems;
}

}  // namespace

std::vector<PathProblem> TroublesOf(const Quorvex::PathEnvironment::FolderPath& path) {
  return TroublesAmong(path.GetProblems());
}

std::vector<PathProblem> TroublesOf(const LoadedPath& path) {
  std::vector<PathProblem> troubles = TroublesAmong(path.GetProblems());
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
