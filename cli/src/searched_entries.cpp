#include "searched_entries.hpp"

#include <search_path_utilities/lookup.hpp>

#include "looked_for.hpp"

namespace vornixpath {

using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::IPath;
using Quorvex::PathManagement::SearchScope;
using Quorvex::PathManagement::detail::SearchTarget;

std::vector<EntryPtr> EntriesSearchedInScope(const IPath& path, SearchScope scope, const SearchTarget& target,
                                             FilenameMatchingPolicy policy) {
  const std::u16string folders = FolderPartOf(target.GetBaseName());
  if (!folders.empty()) return path.GetPartiallyMatchingEntries(scope, folders, policy);

  std::vector<EntryPtr> entries;
  path.ForEachEntry(scope, [&entries](const EntryPtr& entry) {
    entries.push_back(entry);
    return false;
  });
  return entries;
}

std::vector<EntryPtr> ClassFoldersFor(const IPath& path, const SearchTarget& target, FilenameMatchingPolicy policy) {
  return path.GetMethodEntriesByName(Quorvex::PathManagement::MainScope, target.GetBaseName(), policy);
}

EntryPtr PrivateFolderSeenFrom(const Standpoint& standpoint) {
  if (!standpoint.folder) return nullptr;
  const EntryPtr entry =
      standpoint.path.GetPathEntryFromAbsoluteIRI(*standpoint.folder, FilenameMatchingPolicy::Native);
  return entry ? entry->GetPrivateEntry() : nullptr;
}

}  // namespace vornixpath
