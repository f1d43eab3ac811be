// What became of a folder of the list, in a word and a reason.
#pragma once

#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/path_problem.hpp>
#include <string>

namespace vornixpath {

struct FolderState {
  std::string word;    ///< "present", "missing", "unreadable" or "repeated"
  std::string reason;  ///< empty for a folder that is present
};

[[nodiscard]] FolderState StateOf(const Quorvex::PathEnvironment::KeptFolder& folder);
[[nodiscard]] FolderState StateOf(const Quorvex::PathEnvironment::DroppedFolder& folder);
/// The same of a folder that could not be read, or not as a whole, when the path was.
[[nodiscard]] FolderState StateOf(const Quorvex::PathEnvironment::PathProblem& problem);

}  // namespace vornixpath
