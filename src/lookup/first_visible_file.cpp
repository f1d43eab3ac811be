// Which one file a name means: on a whole path, or to code in a folder.
// On the path, the first hit in a class folder competes with the first among the plain folders by position. From a
// folder the first hit of private folder, class folders, plain folders wins, in this order. The asymmetry is intended.

#include <search_path_utilities/lookup.hpp>
#include <utility>

namespace Quorvex::PathManagement {

namespace {

using EntryPtr = std::shared_ptr<const IPathEntry>;
using Hit = boost::optional<FoundItem>;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Folder;

// For a plain name, folders are always selected natively; the caller's policy is for the file names.
constexpr FilenameMatchingPolicy kFolderPolicy = FilenameMatchingPolicy::Native;

Hit FindInEntry(const EntryPtr& entry, const detail::SearchTarget& target, FilenameMatchingPolicy policy) {
  auto item = entry->FindFirst(target, policy);
  if (!item) return boost::none;
  return FoundItem(std::move(item), entry);
}

using Entries = std::vector<EntryPtr>;

Entries ClassFoldersOf(const IPath& path, const detail::SearchTarget& target) {
  return path.GetMethodEntriesByName(MainScope, target.GetBaseName(), kFolderPolicy);
}

Hit FindInFirstOf(const Entries& entries, const detail::SearchTarget& target, FilenameMatchingPolicy policy) {
  for (const EntryPtr& entry : entries) {
    if (Hit hit = FindInEntry(entry, target, policy)) return hit;
  }
  return boost::none;
}

// The class folder's hit if its entry stands before that of the main hit. Out of line: most names are of no class.
[[gnu::noinline]] Hit EarlierOf(const IPath& path, Hit mainHit, Hit classHit) {
  if (!classHit) return mainHit;
  if (!mainHit) return classHit;
  const bool classComesFirst = path.FirstEntryIsBeforeSecondOnPath(*classHit->GetPathEntry(), *mainHit->GetPathEntry());
  return classComesFirst ? std::move(classHit) : std::move(mainHit);
}

Hit FindInPrivateFolderOf(const IPath& path, const AbsoluteIRI& folder, const detail::SearchTarget& target,
                          FilenameMatchingPolicy policy) {
  const EntryPtr entry = path.GetPathEntryFromAbsoluteIRI(folder, kFolderPolicy);
  const EntryPtr privateEntry = entry ? entry->GetPrivateEntry() : nullptr;
  return privateEntry ? FindInEntry(privateEntry, target, policy) : boost::none;
}

}  // namespace

Hit FindFirstFileVisibleOnPath(const IPath& path, const detail::SearchTarget& target, FilenameMatchingPolicy policy) {
  const bool isPartial = IsPartialPathname(target.GetBaseName());
  Hit hit = path.FindFirstInScope(isPartial ? VisibleScope : MainScope, target, policy);
  if (isPartial) return hit;

  const Entries classFolders = ClassFoldersOf(path, target);
  if (!classFolders.empty()) hit = EarlierOf(path, std::move(hit), FindInFirstOf(classFolders, target, policy));
  return hit;
}

Hit FindFirstFileVisibleFromFolder(const IPath& path, const AbsoluteIRI& folder, const detail::SearchTarget& target,
                                   FilenameMatchingPolicy policy) {
  if (IsPartialPathname(target.GetBaseName())) return path.FindFirstInScope(VisibleScope, target, policy);

  if (Hit privateHit = FindInPrivateFolderOf(path, folder, target, policy)) return privateHit;
  if (Hit classHit = FindInFirstOf(ClassFoldersOf(path, target), target, policy)) return classHit;
  return path.FindFirstInScope(MainScope, target, policy);
}

Hit FindFirstFileVisibleFromFolder(const IPath& path, const Folder& folder, const detail::SearchTarget& target,
                                   FilenameMatchingPolicy policy) {
  return FindFirstFileVisibleFromFolder(path, folder.getLocation(), target, policy);
}

}  // namespace Quorvex::PathManagement
