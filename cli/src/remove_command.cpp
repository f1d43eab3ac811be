#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>
#include <search_path_environment/working_folder.hpp>
#include <search_path_utilities/path_editing.hpp>

#include "commands.hpp"
#include "current_folder.hpp"
#include "path_edit.hpp"

namespace vornixpath {

using Quorvex::PathManagement::IMainSearchPathManager;

ExitStatus RunRemove(const RemoveOptions& options) {
  const auto storage = foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference();
  const Quorvex::PathEnvironment::FolderPathFactory paths;
  const auto noPath = paths.CreatePath({}, Quorvex::PathEnvironment::FolderEntryFactory(storage));
  // By text alone: a folder that is gone from the disk can still be taken off.
  const Quorvex::PathEnvironment::TextualWorkingFolder workingFolder(CurrentFolderIfAny());
  const std::vector<std::u16string> names = FolderNames(options.edit);

  return RunEdit(options.edit, [&](IMainSearchPathManager& manager) {
    return Quorvex::PathManagement::RemoveFoldersFromVornixPath(names, workingFolder, manager, paths, *noPath);
  });
}

}  // namespace vornixpath
