#pragma once

#include <memory>
#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/folder_path.hpp>

namespace vornixpath {

/// The path over `folders`, read now. A folder that holds the same as on `predecessor`, if there is one, keeps the
/// entry that it has there.
[[nodiscard]] std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> ReadPath(
    const Quorvex::PathEnvironment::DistinctFolders& folders,
    const Quorvex::PathEnvironment::FolderPath* predecessor = nullptr);

}  // namespace vornixpath
