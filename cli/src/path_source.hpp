#pragma once

#include <memory>
#include <search_path_environment/folder_path.hpp>

#include "command_line.hpp"

namespace vornixpath {

/// The path over the folders that `options` name, else VORNIX_PATH. Throws UsageError when nothing names any, and
/// std::runtime_error with file and line for a path file that cannot be used.
[[nodiscard]] std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> LoadPath(const PathOptions& options);

}  // namespace vornixpath
