// Resolves a name on a path of folders:  first_lookup NAME FOLDER...

#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <iostream>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>
#include <search_path_utilities/lookup.hpp>
#include <search_path_utilities/path_editing.hpp>

using fl::filesystem::from_bytes;
using fl::filesystem::to_displayed_text;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::FolderEntryFactory;
using Quorvex::PathEnvironment::FolderPathFactory;
using namespace Quorvex::PathManagement;

int main(int argc, char** argv) {
  if (argc < 3) {
    std::cerr << "usage: first_lookup NAME FOLDER...\n";
    return 2;
  }

  std::vector<AbsoluteIRI> folders;
  for (int i = 2; i < argc; ++i) folders.push_back(GetIRIFromString(from_bytes(argv[i])));
  const FolderEntryFactory entries(VornixStorageSystem::GetStorageSystemReference());
  const auto path = FolderPathFactory().CreatePath(folders, entries);

  // The target borrows both, so they stay alive as long as it is used.
  const std::u16string name = from_bytes(argv[1]);
  const std::vector<std::u16string> extensions = {u".vnx"};
  const auto target = CreateSearchTargetWithExtensionInFilenamePreferred(name, extensions);

  const auto found = FindFirstFileVisibleOnPath(*path, target, FilenameMatchingPolicy::Native);
  if (!found) return 1;
  const auto item = found->GetPathItem();
  const AbsoluteIRI file = item->folderIRI.getChild(item->baseName + item->extension);
  std::cout << to_displayed_text(GetStringFromIRI(file)) << '\n';
}
