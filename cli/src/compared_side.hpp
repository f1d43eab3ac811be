#pragma once

#include <memory>
#include <search_path_environment/folder_path.hpp>
#include <string>

#include "command_line.hpp"

namespace vornixpath {

/// What a side of a comparison may be called besides a file or a path string.
constexpr const char* kSavedSide = "saved";
constexpr const char* kCurrentSide = "now";

/// The path that `side` names: "saved", "now", a file that is there, which then is a snapshot, or a path string.
/// Folders that hold the same as on `predecessor`, if there is one, keep the entries that they have there. Warns of a
/// session in which nothing was saved. Throws as LoadPath does.
[[nodiscard]] std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> LoadSide(
    const std::string& side, const CompareOptions& options, const Quorvex::PathEnvironment::FolderPath* predecessor);

}  // namespace vornixpath
