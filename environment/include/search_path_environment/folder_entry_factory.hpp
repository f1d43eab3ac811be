#pragma once

#include <foundation/storage/vfs/storage_system.hpp>
#include <memory>
#include <search_path_environment/export.hpp>
#include <search_path_environment/folder_entry.hpp>
#include <search_path_environment/folder_path.hpp>
#include <search_path_interfaces/factories.hpp>

namespace Quorvex::PathEnvironment {

class AliveEntries;

/// Makes entries by reading folders from a storage system. Safe from any thread.
///
/// A folder that is read again and has not changed keeps its entry as long as somebody holds that, special subfolders
/// within a folder that has changed included: paths made one after another by the same factory share what they have in
/// common. Copies of a factory share what they know.
class SEARCH_PATH_ENVIRONMENT_EXPORT FolderEntryFactory final : public PathManagement::IPathEntryFactory {
 public:
  explicit FolderEntryFactory(foundation::storage::vfs::StorageSystemReference storage);
  /// The same, as if it had made the entries of `predecessor`.
  FolderEntryFactory(foundation::storage::vfs::StorageSystemReference storage, const FolderPath& predecessor);
  ~FolderEntryFactory() override;

  /// Reads `folder` and its special subfolders in depth; always a `FolderEntry`. What cannot be read is kept with the
  /// entry it concerns; only std::bad_alloc and the like are thrown.
  [[nodiscard]] std::shared_ptr<const PathManagement::IPathEntry> CreateMainEntry(
      const foundation::storage::vfs::AbsoluteIRI& folder) const override;

  /// A text: one line a folder, in walk order, followed by a line for each of its files.
  void WriteToolboxCache(std::ostream& out, const foundation::storage::vfs::AbsoluteIRI& toolboxRoot) const override;

 private:
  foundation::storage::vfs::StorageSystemReference storage_;
  std::shared_ptr<AliveEntries> alive_;
};

}  // namespace Quorvex::PathEnvironment
