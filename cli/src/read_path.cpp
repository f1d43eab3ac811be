#include "read_path.hpp"

#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>

namespace vornixpath {

using Quorvex::PathEnvironment::FolderEntryFactory;
using Quorvex::PathEnvironment::FolderPath;

std::shared_ptr<const FolderPath> ReadPath(const Quorvex::PathEnvironment::DistinctFolders& folders,
                                           const FolderPath* predecessor) {
  const auto storage = foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference();
  const auto entries = predecessor == nullptr ? FolderEntryFactory(storage) : FolderEntryFactory(storage, *predecessor);
  return Quorvex::PathEnvironment::FolderPathFactory().CreateFolderPath(folders, entries);
}

}  // namespace vornixpath
