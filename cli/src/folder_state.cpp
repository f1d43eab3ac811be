#include "folder_state.hpp"

#include <search_path_environment/path_problem.hpp>

namespace vornixpath {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::DroppedFolder;
using Quorvex::PathEnvironment::KeptFolder;
using Quorvex::PathEnvironment::PathProblem;
using Quorvex::PathEnvironment::ProblemKind;

namespace {

FolderState StateAfter(const std::error_code& error, const AbsoluteIRI& folder) {
  if (error == std::errc::no_such_file_or_directory)
    return {"missing", ReasonOf(PathProblem{folder, ProblemKind::Missing, error})};
  if (error == std::errc::not_a_directory)
    return {"missing", ReasonOf(PathProblem{folder, ProblemKind::NotAFolder, error})};
  const bool isLoop = error == std::errc::too_many_symbolic_link_levels;
  return {isLoop ? "missing" : "unreadable", ReasonOf(PathProblem{folder, ProblemKind::Unreadable, error})};
}

}  // namespace

FolderState StateOf(const KeptFolder& folder) {
  return folder.error ? StateAfter(folder.error, folder.location) : FolderState{"present", ""};
}

FolderState StateOf(const DroppedFolder& folder) { return {"repeated", ReasonOf(folder)}; }

}  // namespace vornixpath
