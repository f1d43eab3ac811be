#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <memory>
#include <search_path_environment/folder_entry.hpp>
#include <unordered_set>

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

/// Entries that may no longer be what their folders hold.
class EntriesInDoubt {
 public:
  /// `entry` must outlive this object.
  void Add(const FolderEntry& entry);

  [[nodiscard]] bool Is(const FolderEntry& entry) const;
  /// Whether it or an entry below it is. O(entries below).
  [[nodiscard]] bool IsInOrBelow(const FolderEntry& entry) const;

 private:
  std::unordered_set<const FolderEntry*> entries_;
};

/// Reads again those folders of `former`, a main entry, that are in doubt: one listing each, and one of each new
/// special subfolder, in depth. All other entries stay, unless their folder has become another one. Gives `former`
/// itself when all is as it was. Throws as ReadMainFolder does.
[[nodiscard]] std::shared_ptr<const FolderEntry> ReadMainFolderAgain(
    const std::shared_ptr<const FolderEntry>& former, const EntriesInDoubt& doubt,
    const foundation::storage::vfs::StorageSystemReference& storage);

}  // namespace Quorvex::PathEnvironment
