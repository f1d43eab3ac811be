#pragma once

#include <cstddef>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <search_path_environment/export.hpp>
#include <string>
#include <system_error>

namespace Quorvex::PathEnvironment {

/// Why a folder, or a name in it, is not what a path hoped for.
enum class ProblemKind {
  Missing,     ///< there is no such folder
  NotAFolder,  ///< something else stands there
  Unreadable,  ///< the storage refused or failed; the error tells how
  Loop,        ///< a special subfolder leads back to a folder that encloses it; it is left out
  TooDeep,     ///< special subfolders are nested deeper than is followed
  Repeated,    ///< the folder stands earlier on the path, where it stays
};

/// One thing that went wrong while a path was read. It never spoils the rest of the path.
struct PathProblem {
  foundation::storage::vfs::AbsoluteIRI location;  ///< of the folder, or of the name in it
  ProblemKind kind;                                ///< what kind of trouble it is
  std::error_code error;                           ///< the storage's own error, where there is one
  std::size_t position = 0;                        ///< of the folder on the path as it was given, from 0

  friend bool operator==(const PathProblem&, const PathProblem&) = default;
};

/// The reason in words, for people: "there is no such folder".
[[nodiscard]] SEARCH_PATH_ENVIRONMENT_EXPORT std::string ReasonOf(const PathProblem& problem);

}  // namespace Quorvex::PathEnvironment
