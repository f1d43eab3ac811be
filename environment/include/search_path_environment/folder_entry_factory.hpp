#pragma once

#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/export.hpp>
#include <search_path_environment/folder_entry.hpp>
#include <search_path_interfaces/factories.hpp>

namespace Quorvex::PathEnvironment {

/// Makes entries by reading folders from a storage system. Immutable, safe from any thread.
class SEARCH_PATH_ENVIRONMENT_EXPORT FolderEntryFactory final : public PathManagement::IPathEntryFactory {
 public:
  explicit FolderEntryFactory(foundation::storage::vfs::StorageSystemReference storage);
  ~FolderEntryFactory() override;

  /// Reads `folder` and its special subfolders in depth; always a `FolderEntry`. What cannot be read is kept with the
  /// entry it concerns; only std::bad_alloc and the like are thrown.
  [[nodiscard]] std::shared_ptr<const PathManagement::IPathEntry> CreateMainEntry(
      const foundation::storage::vfs::AbsoluteIRI& folder) const override;

  /// A text: one line a folder, in walk order, followed by a line for each of its files.
  void WriteToolboxCache(std::ostream& out, const foundation::storage::vfs::AbsoluteIRI& toolboxRoot) const override;

 private:
  foundation::storage::vfs::StorageSystemReference storage_;
};

}  // namespace Quorvex::PathEnvironment
