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
using Quorvex::PathManagement::Position;

ExitStatus RunAdd(const AddOptions& options) {
  const auto storage = foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference();
  const Quorvex::PathEnvironment::WorkingFolder workingFolder(CurrentFolderIfAny(), storage);
  const std::vector<std::u16string> names = FolderNames(options.edit);
  const Position position = options.atEnd ? Position::End : Position::Beginning;

  return RunEdit(options.edit, [&](IMainSearchPathManager& manager) {
    return Quorvex::PathManagement::AddFoldersToVornixPath(
        names, workingFolder, manager, Quorvex::PathEnvironment::FolderPathFactory(),
        Quorvex::PathEnvironment::FolderEntryFactory(storage), position);
  });
}

}  // namespace vornixpath
