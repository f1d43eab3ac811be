// What kind of folder may hold which special subfolders, and how they are gathered into an entry.
#pragma once

#include <memory>
#include <search_path_environment/folder_entry.hpp>

namespace Quorvex::PathEnvironment {

/// Whether a folder of the kind `outer` holds subfolders of the kind `inner` as entries.
[[nodiscard]] bool MayHold(PathManagement::PathEntryType outer, PathManagement::PathEntryType inner) noexcept;

/// Puts `entry`, which is no main entry, where one of its kind belongs.
void Place(std::shared_ptr<const FolderEntry> entry, SpecialSubfolders& subfolders);

/// Brings what was placed in any order into that of the names.
void SortByName(SpecialSubfolders& subfolders);

}  // namespace Quorvex::PathEnvironment
