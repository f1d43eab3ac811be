// Entries that are kept when their folders are read again and hold the same.
#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <memory>
#include <search_path_environment/folder_entry.hpp>
#include <unordered_map>
#include <vector>

namespace Quorvex::PathEnvironment {

/// `former`, with the proofs of `entry`, if there is one and it holds the same; else `entry`.
[[nodiscard]] std::shared_ptr<const FolderEntry> FormerIfEqual(const std::shared_ptr<const FolderEntry>& former,
                                                               const std::shared_ptr<const FolderEntry>& entry);

/// The entries that folders had before they were read again.
class FormerEntries {
 public:
  using EntryPtr = std::shared_ptr<const FolderEntry>;

  explicit FormerEntries(const std::vector<EntryPtr>& entries);

  /// The entries directly below `entry`, if there is one.
  [[nodiscard]] static FormerEntries Below(const FolderEntry* entry);

  /// Null when there was none at that location.
  [[nodiscard]] EntryPtr Find(const foundation::storage::vfs::AbsoluteIRI& location) const;

  /// FormerIfEqual of the one at the location of `entry`.
  [[nodiscard]] EntryPtr FormerIfEqualTo(const EntryPtr& entry) const;

 private:
  std::unordered_map<foundation::storage::vfs::AbsoluteIRI, EntryPtr> entries_;
};

}  // namespace Quorvex::PathEnvironment
