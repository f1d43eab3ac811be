#include "plain_subfolders.hpp"

#include <algorithm>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/storage_provider.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_utilities/lookup.hpp>
#include <search_path_utilities/path_editing.hpp>

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::FileKind;
using foundation::storage::vfs::ListedEntry;
using Quorvex::PathEnvironment::FolderPath;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::PathEntryType;

std::vector<ListedEntry> ListingOf(const AbsoluteIRI& folder) {
  try {
    const auto storage = foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference();
    return storage.ProviderFor(folder)->List(folder).entries;
  } catch (const foundation::storage::vfs::Exception&) {
    return {};  // it could only have offered a hint
  }
}

bool IsPlainFolder(const ListedEntry& entry) {
  return entry.kind == FileKind::Folder &&
         Quorvex::PathManagement::GetPathEntryTypeFromBaseName(entry.name) == PathEntryType::Main;
}

// Under any spelling.
bool IsOnPath(const FolderPath& path, const AbsoluteIRI& folder) {
  if (path.GetPathEntryFromAbsoluteIRI(folder, FilenameMatchingPolicy::Native)) return true;
  try {
    return path.GetPathEntryFromAbsoluteIRI(Quorvex::PathManagement::GetCanonicalIRI(folder)) != nullptr;
  } catch (const foundation::storage::vfs::Exception&) {
    return false;  // it was there a moment ago, under this spelling
  }
}

std::vector<AbsoluteIRI> WantedFilesIn(const AbsoluteIRI& folder, const WantedName& wanted) {
  std::vector<AbsoluteIRI> files;
  for (const ListedEntry& entry : ListingOf(folder)) {
    const bool isWanted = entry.kind == FileKind::File && wanted.LikenessOf(entry.name) == Likeness::Exact;
    if (isWanted) files.push_back(folder.getChild(entry.name));
  }
  return files;
}

}  // namespace

std::vector<AbsoluteIRI> FilesInPlainSubfolders(const AbsoluteIRI& folder, const WantedName& wanted,
                                                const FolderPath& path) {
  std::vector<AbsoluteIRI> files;
  for (const ListedEntry& entry : ListingOf(folder)) {
    if (!IsPlainFolder(entry)) continue;
    const AbsoluteIRI subfolder = folder.getChild(entry.name);
    const std::vector<AbsoluteIRI> found = WantedFilesIn(subfolder, wanted);
    if (!found.empty() && !IsOnPath(path, subfolder)) files.insert(files.end(), found.begin(), found.end());
  }
  // Storage lists in no order.
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace vornixpath
