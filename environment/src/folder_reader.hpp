#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <memory>
#include <search_path_environment/folder_entry.hpp>

namespace Quorvex::PathEnvironment {

/// Special subfolders nested deeper than this are not followed.
inline constexpr std::size_t kMaximumDepth = 128;

/// Reads `folder` as a main entry, with its special subfolders in depth.
///
/// Nothing that storage does is thrown: a folder that cannot be read becomes an entry without items that holds the
/// reason, and a subfolder that leads back to a folder of its own branch is left out and reported by its parent. One
/// listing a folder.
///
/// Special subfolders that are as they were when `previous`, null or an earlier entry of the folder, was read keep the
/// entries they had there.
[[nodiscard]] std::shared_ptr<const FolderEntry> ReadMainFolder(
    const foundation::storage::vfs::AbsoluteIRI& folder,
    const foundation::storage::vfs::StorageSystemReference& storage, const FolderEntry* previous);

}  // namespace Quorvex::PathEnvironment
