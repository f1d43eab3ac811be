#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <memory>
#include <search_path_environment/folder_path.hpp>
#include <vector>

#include "command_line.hpp"

namespace vornixpath {

/// The folders that `options` name, else VORNIX_PATH, else the default session, in order and as they are given. Throws
/// UsageError when nothing names any, std::runtime_error with file and line for a path file that cannot be used, and
/// SavedPathError for such a session.
[[nodiscard]] std::vector<foundation::storage::vfs::AbsoluteIRI> FoldersFor(const PathOptions& options);

/// The path over them. Throws as FoldersFor does.
[[nodiscard]] std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> LoadPath(const PathOptions& options);

}  // namespace vornixpath
