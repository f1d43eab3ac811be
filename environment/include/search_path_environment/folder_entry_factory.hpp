#pragma once

#include <foundation/storage/vfs/storage_system.hpp>
#include <memory>
#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/export.hpp>
#include <search_path_environment/folder_entry.hpp>
#include <search_path_environment/folder_path.hpp>
#include <search_path_environment/toolbox_cache.hpp>
#include <search_path_interfaces/factories.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathEnvironment {

class AliveEntries;

/// Makes entries by reading folders from a storage system. Safe from any thread.
///
/// A folder that is read again and has not changed keeps its entry as long as somebody holds that, special subfolders
/// within a folder that has changed included: paths made one after another by the same factory share what they have in
/// common. Copies of a factory share what they know.
class SEARCH_PATH_ENVIRONMENT_EXPORT FolderEntryFactory final : public PathManagement::IPathEntryFactory {
 public:
  /// Reads through `storage`, and knows no entry yet.
  explicit FolderEntryFactory(foundation::storage::vfs::StorageSystemReference storage);
  /// The same, as if it had made the entries of `predecessor`.
  FolderEntryFactory(foundation::storage::vfs::StorageSystemReference storage, const FolderPath& predecessor);
  /// The same, as if it had made `entries`, main entries none of which is null.
  FolderEntryFactory(foundation::storage::vfs::StorageSystemReference storage,
                     const std::vector<std::shared_ptr<const FolderEntry>>& entries);
  /// The same, but folders that are recorded in `cache`, and proven to be as they were, are not read. If the cache is
  /// to be trusted blindly, nothing is proven and nothing read: a folder that it does not hold throws
  /// ToolboxCacheError.
  FolderEntryFactory(foundation::storage::vfs::StorageSystemReference storage, const ToolboxCache& cache);
  ~FolderEntryFactory() override;

  /// Reads `folder` and its special subfolders in depth; always a `FolderEntry`. What cannot be read is kept with the
  /// entry it concerns; only std::bad_alloc and the like are thrown.
  [[nodiscard]] std::shared_ptr<const PathManagement::IPathEntry> CreateMainEntry(
      const foundation::storage::vfs::AbsoluteIRI& folder) const override;

  /// Lets WriteToolboxCache keep `path`, made of entries of this factory over what stays of `folders`: their order,
  /// what was dropped, and an index. The path is not kept alive. `FolderPathFactory` calls this for each path it makes.
  void RememberPath(const std::shared_ptr<const FolderPath>& path, const DistinctFolders& folders) const;

  /// Keeps with the path last remembered the bytes that its list was read from, by which it is recognised without being
  /// read again.
  void RememberOrigin(std::string origin) const;

  /// Writes the main entries at or below `toolboxRoot` and what proves them, in the format of `ToolboxCache`: those of
  /// the path last remembered, as long as it lives, in its order and, when all of them are, with its list; else all
  /// that this factory has made and somebody holds, by location. Errors are the stream's.
  void WriteToolboxCache(std::ostream& out, const foundation::storage::vfs::AbsoluteIRI& toolboxRoot) const override;

 private:
  struct Memory;

  foundation::storage::vfs::StorageSystemReference storage_;
  std::shared_ptr<AliveEntries> alive_;
  std::shared_ptr<Memory> memory_;
};

}  // namespace Quorvex::PathEnvironment
