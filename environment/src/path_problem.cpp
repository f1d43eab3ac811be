#include <search_path_environment/path_problem.hpp>

namespace Quorvex::PathEnvironment {

std::string ReasonOf(const PathProblem& problem) {
  switch (problem.kind) {
    case ProblemKind::Missing:
      return "there is no such folder";
    case ProblemKind::NotAFolder:
      return "it is not a folder";
    case ProblemKind::Unreadable:
      return "it cannot be read: " + problem.error.message();
    case ProblemKind::Loop:
      return "it leads back to a folder that encloses it";
    case ProblemKind::TooDeep:
      return "its special subfolders are nested too deep";
    case ProblemKind::Repeated:
      return "it stands earlier on the path";
  }
  return "unknown problem";
}

}  // namespace Quorvex::PathEnvironment
