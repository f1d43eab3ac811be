#pragma once

#include <cstddef>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <memory>
#include <optional>
#include <search_path_environment/cached_path.hpp>
#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/folder_path.hpp>
#include <search_path_environment/path_problem.hpp>
#include <search_path_environment/path_snapshot.hpp>
#include <search_path_environment/toolbox_cache.hpp>
#include <search_path_interfaces/factories.hpp>
#include <search_path_interfaces/path.hpp>
#include <vector>

#include "entry_ptr.hpp"
#include "folder_list.hpp"

namespace vornixpath {

/// A path that was read, or kept in a snapshot: all of it, and what is asked of it, which is all but what is masked.
/// Cheap to copy.
///
/// Lookups go through the view. The leaf knows what the view does not: positions and problems. An entry of the one is
/// an entry of the other.
class LoadedPath {
 public:
  using Folders = std::vector<foundation::storage::vfs::AbsoluteIRI>;
  using FolderPath = Quorvex::PathEnvironment::FolderPath;

  /// Reads each of the folders once, under the first of its spellings, those of `masks` included.
  explicit LoadedPath(const FolderList& folders, const Folders& masks = {});
  explicit LoadedPath(const Folders& folders, const Folders& masks = {});

  /// The same, with what `cache` holds of some of them.
  LoadedPath(const FolderList& folders, const Quorvex::PathEnvironment::ToolboxCache& cache, const Folders& masks);

  /// The same, with what `entries` makes of each of them: a FolderEntry.
  LoadedPath(const FolderList& folders, const Quorvex::PathManagement::IPathEntryFactory& entries,
             const Folders& masks);

  /// The path of that list, or the first folders of it, which a cache holds.
  LoadedPath(const FolderList& folders, std::shared_ptr<const Quorvex::PathEnvironment::CachedPath> cached,
             const Folders& masks);

  /// What a snapshot holds. Storage is never asked about it: what it holds may stand on another machine, or no longer.
  explicit LoadedPath(const Quorvex::PathEnvironment::PathSnapshot& snapshot, const Folders& masks = {});

  /// Answers as a path without the masked folders would.
  [[nodiscard]] const Quorvex::PathManagement::IPath& GetView() const noexcept { return *view_; }
  /// Of a path in a cache it is made now, which takes as long as the path.
  [[nodiscard]] const FolderPath& GetLeaf() const { return *GetSharedLeaf(); }
  /// The same, for whoever outlives this object.
  [[nodiscard]] std::shared_ptr<const FolderPath> GetSharedLeaf() const {
    return cached_ ? cached_->GetWhole() : leaf_;
  }

  /// What went wrong while the path was read, in path order, without making the leaf of a path in a cache.
  [[nodiscard]] std::vector<Quorvex::PathEnvironment::PathProblem> GetProblems() const {
    return cached_ ? cached_->GetProblems() : leaf_->GetProblems();
  }

  /// Whether it is over the first folders of the list alone.
  [[nodiscard]] bool IsPart() const noexcept { return cached_ && !cached_->IsWhole(); }

  /// The folders of the path that are masked, in path order.
  [[nodiscard]] const std::vector<EntryPtr>& GetMaskedFolders() const noexcept { return maskedFolders_; }
  /// Those masks that are no folder of the path, and so hide nothing.
  [[nodiscard]] const Folders& GetIdleMasks() const noexcept { return idleMasks_; }
  /// Whether the folder at `position` of the path as it was given is masked.
  [[nodiscard]] bool IsMasked(std::size_t position) const;

  /// Whether storage may be asked about the path's folders.
  [[nodiscard]] bool IsFromStorage() const noexcept { return list_.has_value(); }

  /// Which folders of the list stay on the path, and which are repeats. Of a path that a cache gave it is found out
  /// now. A snapshot has no list: throws std::logic_error.
  [[nodiscard]] const Quorvex::PathEnvironment::DistinctFolders& GetDistinctFolders() const;

  /// The folder of the path that `folder` is in any spelling, masked or not, or null. Asks storage about a spelling
  /// that the path does not know; a snapshot knows how its folders were spelled and where they really were.
  [[nodiscard]] EntryPtr FindFolder(const foundation::storage::vfs::AbsoluteIRI& folder) const;

 private:
  using DistinctFolders = Quorvex::PathEnvironment::DistinctFolders;

  LoadedPath(std::optional<FolderList> list, std::optional<DistinctFolders> folders,
             std::shared_ptr<const FolderPath> leaf, std::shared_ptr<const Quorvex::PathEnvironment::CachedPath> cached,
             const Folders& masks);
  LoadedPath(const FolderList& list, const DistinctFolders& folders,
             const Quorvex::PathManagement::IPathEntryFactory& entries, const Folders& masks);

  [[nodiscard]] std::optional<std::size_t> IndexOf(const foundation::storage::vfs::AbsoluteIRI& folder) const;

  std::optional<FolderList> list_;                  // none of a snapshot
  mutable std::optional<DistinctFolders> folders_;  // of the list, looked through when somebody asks
  std::shared_ptr<const FolderPath> leaf_;          // unless cached_ makes it
  std::shared_ptr<const Quorvex::PathEnvironment::CachedPath> cached_;
  std::vector<EntryPtr> maskedFolders_;
  std::vector<std::size_t> maskedPositions_;  // rising
  Folders idleMasks_;
  std::shared_ptr<const Quorvex::PathManagement::IPath> view_;
};

}  // namespace vornixpath
