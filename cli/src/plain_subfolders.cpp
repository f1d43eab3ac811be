#include "plain_subfolders.hpp"

#include <algorithm>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/storage_provider.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_utilities/lookup.hpp>

#include "standpoint.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::FileKind;
using foundation::storage::vfs::ListedEntry;
using Quorvex::PathManagement::PathEntryType;

std::vector<ListedEntry> ListingOf(const AbsoluteIRI& folder) {
  try {
    const auto storage = foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference();
    return storage.ProviderFor(folder)->List(folder).entries;
  } catch (const foundation::storage::vfs::Exception&) {
    return {};  // it could only have offered a hint
  }
}

bool IsOnPath(const LoadedPath& path, const AbsoluteIRI& folder) {
  try {
    return EntryUnderAnySpelling(path, folder) != nullptr;
  } catch (const foundation::storage::vfs::Exception&) {
    return false;  // it was there a moment ago, under this spelling
  }
}

bool IsPlainFolder(const ListedEntry& entry) {
  return entry.kind == FileKind::Folder &&
         Quorvex::PathManagement::GetPathEntryTypeFromBaseName(entry.name) == PathEntryType::Main;
}

std::vector<SubfolderFile> WantedFilesIn(const AbsoluteIRI& folder, const WantedName& wanted) {
  std::vector<SubfolderFile> files;
  for (const ListedEntry& entry : ListingOf(folder)) {
    const NameMatch match = entry.kind == FileKind::File ? wanted.MatchOf(entry.name) : NameMatch::None;
    if (match != NameMatch::None) files.push_back({folder.getChild(entry.name), match});
  }
  return files;
}

}  // namespace

std::vector<SubfolderFile> FilesInPlainSubfolders(const AbsoluteIRI& folder, const WantedName& wanted,
                                                  const LoadedPath& path) {
  std::vector<SubfolderFile> files;
  for (const ListedEntry& entry : ListingOf(folder)) {
    if (!IsPlainFolder(entry)) continue;
    const AbsoluteIRI subfolder = folder.getChild(entry.name);
    const std::vector<SubfolderFile> found = WantedFilesIn(subfolder, wanted);
    if (!found.empty() && !IsOnPath(path, subfolder)) files.insert(files.end(), found.begin(), found.end());
  }
  // Storage lists in no order.
  std::sort(files.begin(), files.end(),
            [](const SubfolderFile& left, const SubfolderFile& right) { return left.location < right.location; });
  return files;
}

}  // namespace vornixpath
