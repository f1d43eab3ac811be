// What kind of folder may hold which special subfolders, and how they are gathered into an entry.
#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <memory>
#include <search_path_environment/folder_entry.hpp>
#include <unordered_map>
#include <vector>

namespace Quorvex::PathEnvironment {

/// Whether a folder of the kind `outer` holds subfolders of the kind `inner` as entries.
[[nodiscard]] bool MayHold(PathManagement::PathEntryType outer, PathManagement::PathEntryType inner) noexcept;

/// Puts `entry`, which is no main entry, where one of its kind belongs.
void Place(std::shared_ptr<const FolderEntry> entry, SpecialSubfolders& subfolders);

/// Brings what was placed in any order into that of the names.
void SortByName(SpecialSubfolders& subfolders);

/// The entries that folders had before they were read again.
class FormerEntries {
 public:
  using EntryPtr = std::shared_ptr<const FolderEntry>;

  explicit FormerEntries(const std::vector<EntryPtr>& entries);

  /// The entries directly below `entry`, if there is one.
  [[nodiscard]] static FormerEntries Below(const FolderEntry* entry);

  /// Null when there was none at that location.
  [[nodiscard]] EntryPtr Find(const foundation::storage::vfs::AbsoluteIRI& location) const;

  /// The former entry at the location of `entry` if it holds the same, else `entry`.
  [[nodiscard]] EntryPtr FormerIfEqual(const EntryPtr& entry) const;

 private:
  std::unordered_map<foundation::storage::vfs::AbsoluteIRI, EntryPtr> entries_;
};

}  // namespace Quorvex::PathEnvironment
