#pragma once

#include <cstddef>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <memory>
#include <optional>
#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/folder_path.hpp>
#include <search_path_environment/path_snapshot.hpp>
#include <search_path_interfaces/path.hpp>
#include <vector>

#include "entry_ptr.hpp"

namespace vornixpath {

/// A path that was read, or kept in a snapshot: all of it, and what is asked of it, which is all but what is masked.
/// Cheap to copy.
///
/// Lookups go through the view. The leaf knows what the view does not: positions and problems. An entry of the one is
/// an entry of the other.
class LoadedPath {
 public:
  using Folders = std::vector<foundation::storage::vfs::AbsoluteIRI>;

  /// Reads each of `folders` once, under the first of its spellings, those of `masks` included.
  explicit LoadedPath(const Folders& folders, const Folders& masks = {});

  /// What a snapshot holds. Storage is never asked about it: what it holds may stand on another machine, or no longer.
  explicit LoadedPath(const Quorvex::PathEnvironment::PathSnapshot& snapshot, const Folders& masks = {});

  /// Answers as a path without the masked folders would.
  [[nodiscard]] const Quorvex::PathManagement::IPath& GetView() const noexcept { return *view_; }
  [[nodiscard]] const Quorvex::PathEnvironment::FolderPath& GetLeaf() const noexcept { return *leaf_; }
  /// The same, for whoever outlives this object.
  [[nodiscard]] const std::shared_ptr<const Quorvex::PathEnvironment::FolderPath>& GetSharedLeaf() const noexcept {
    return leaf_;
  }

  /// The folders of the path that are masked, in path order.
  [[nodiscard]] const std::vector<EntryPtr>& GetMaskedFolders() const noexcept { return maskedFolders_; }
  /// Those masks that are no folder of the path, and so hide nothing.
  [[nodiscard]] const Folders& GetIdleMasks() const noexcept { return idleMasks_; }
  /// Whether the folder at `position` of the path as it was given is masked.
  [[nodiscard]] bool IsMasked(std::size_t position) const;

  /// Whether storage may be asked about the path's folders.
  [[nodiscard]] bool IsFromStorage() const noexcept { return folders_.has_value(); }

  /// The folder of the path that `folder` is in any spelling, masked or not, or null. Asks storage about a spelling
  /// that the path does not know; a snapshot knows how its folders were spelled and where they really were.
  [[nodiscard]] EntryPtr FindFolder(const foundation::storage::vfs::AbsoluteIRI& folder) const;

 private:
  using DistinctFolders = Quorvex::PathEnvironment::DistinctFolders;
  using FolderPath = Quorvex::PathEnvironment::FolderPath;

  LoadedPath(std::optional<DistinctFolders> folders, std::shared_ptr<const FolderPath> leaf, const Folders& masks);

  [[nodiscard]] std::optional<std::size_t> IndexOf(const foundation::storage::vfs::AbsoluteIRI& folder) const;

  std::optional<DistinctFolders> folders_;  // none of a snapshot
  std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> leaf_;
  std::vector<EntryPtr> maskedFolders_;
  std::vector<std::size_t> maskedPositions_;  // rising
  Folders idleMasks_;
  std::shared_ptr<const Quorvex::PathManagement::IPath> view_;
};

}  // namespace vornixpath
