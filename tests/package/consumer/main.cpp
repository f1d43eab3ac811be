// Tells what a name means on a path of two folders:  consumer NAME FOLDER FOLDER

#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <iostream>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>
#include <search_path_utilities/composite_paths.hpp>
#include <search_path_utilities/lookup.hpp>
#include <search_path_utilities/path_editing.hpp>

using fl::filesystem::from_bytes;
using foundation::storage::vfs::VornixStorageSystem;
using namespace Quorvex::PathEnvironment;
using namespace Quorvex::PathManagement;

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  const FolderEntryFactory entries(VornixStorageSystem::GetStorageSystemReference());
  const auto path_of = [&](const char* folder) {
    return FolderPathFactory().CreatePath({GetIRIFromString(from_bytes(folder))}, entries);
  };
  const ConcatenatedPath path(path_of(argv[2]), path_of(argv[3]));

  const std::u16string name = from_bytes(argv[1]);
  const std::vector<std::u16string> extensions = {u".vnx"};
  const auto target = CreateSearchTargetWithExtensionInFilenamePreferred(name, extensions);
  const auto found = FindFirstFileVisibleOnPath(path, target, FilenameMatchingPolicy::Native);
  if (!found) return 1;
  const auto item = found->GetPathItem();
  const auto file = item->folderIRI.getChild(item->baseName + item->extension);
  std::cout << fl::filesystem::to_displayed_text(GetStringFromIRI(file)) << '\n';
}
