#include "folder_state.hpp"

namespace vornixpath {

using Quorvex::PathEnvironment::DroppedFolder;
using Quorvex::PathEnvironment::KeptFolder;
using Quorvex::PathEnvironment::PathProblem;
using Quorvex::PathEnvironment::ProblemKind;

namespace {

ProblemKind KindOf(const std::error_code& error) {
  if (error == std::errc::no_such_file_or_directory) return ProblemKind::Missing;
  return error == std::errc::not_a_directory ? ProblemKind::NotAFolder : ProblemKind::Unreadable;
}

}  // namespace

FolderState StateOf(const PathProblem& problem) {
  const bool isThere = problem.kind != ProblemKind::Missing && problem.kind != ProblemKind::NotAFolder;
  const bool leadsAnywhere = problem.error != std::errc::too_many_symbolic_link_levels;
  return {isThere && leadsAnywhere ? "unreadable" : "missing", ReasonOf(problem)};
}

FolderState StateOf(const KeptFolder& folder) {
  if (!folder.error) return {"present", ""};
  return StateOf(PathProblem{folder.location, KindOf(folder.error), folder.error});
}

FolderState StateOf(const DroppedFolder& folder) { return {"repeated", ReasonOf(folder)}; }

}  // namespace vornixpath
