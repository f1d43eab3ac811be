#include "visible_files.hpp"

#include <algorithm>
#include <iterator>
#include <search_path_environment/folder_entry.hpp>
#include <search_path_utilities/lookup.hpp>

#include "each_location_once.hpp"
#include "searched_entries.hpp"

namespace vornixpath {

namespace {

using Quorvex::PathEnvironment::FolderEntry;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::FoundItem;
using Quorvex::PathManagement::MainScope;
using Quorvex::PathManagement::VisibleScope;
using Quorvex::PathManagement::detail::SearchTarget;

void AppendMatches(const EntryPtr& entry, const SearchTarget& target, FilenameMatchingPolicy policy,
                   std::vector<FoundItem>& files) {
  const auto folder = std::dynamic_pointer_cast<const FolderEntry>(entry);
  if (!folder) return;
  for (const auto& item : folder->FindAll(target, policy)) files.emplace_back(item, entry);
}

std::vector<FoundItem> FilesInPrivateFolder(const Standpoint& standpoint, const SearchTarget& target) {
  std::vector<FoundItem> files;
  AppendMatches(PrivateFolderSeenFrom(standpoint), target, standpoint.policy, files);
  return files;
}

std::vector<FoundItem> FilesInClassFolders(const Standpoint& standpoint, const SearchTarget& target) {
  std::vector<FoundItem> files;
  for (const EntryPtr& entry : ClassFoldersFor(standpoint.path, target)) {
    AppendMatches(entry, target, standpoint.policy, files);
  }
  return files;
}

std::vector<FoundItem> FilesInOrderOfPrecedence(const Standpoint& standpoint, const SearchTarget& target) {
  if (Quorvex::PathManagement::IsPartialPathname(target.GetBaseName()))
    return standpoint.path.FindAllInScope(VisibleScope, target, standpoint.policy);

  const std::vector<FoundItem> inClassFolders = FilesInClassFolders(standpoint, target);
  const std::vector<FoundItem> inMainFolders = standpoint.path.FindAllInScope(MainScope, target, standpoint.policy);

  std::vector<FoundItem> files;
  if (standpoint.folder) {
    files = FilesInPrivateFolder(standpoint, target);
    files.insert(files.end(), inClassFolders.begin(), inClassFolders.end());
    files.insert(files.end(), inMainFolders.begin(), inMainFolders.end());
    return files;
  }
  // On the path, a class folder's file comes first only where its entry does.
  std::merge(inMainFolders.begin(), inMainFolders.end(), inClassFolders.begin(), inClassFolders.end(),
             std::back_inserter(files), [&](const FoundItem& left, const FoundItem& right) {
               return standpoint.path.FirstEntryIsBeforeSecondOnPath(*left.GetPathEntry(), *right.GetPathEntry());
             });
  return files;
}

}  // namespace

boost::optional<FoundItem> FindVisibleFile(const Standpoint& standpoint, const SearchTarget& target) {
  if (!standpoint.folder) return FindFirstFileVisibleOnPath(standpoint.path, target, standpoint.policy);
  return FindFirstFileVisibleFromFolder(standpoint.path, *standpoint.folder, target, standpoint.policy);
}

std::vector<FoundItem> FindAllFiles(const Standpoint& standpoint, const SearchTarget& target) {
  std::vector<FoundItem> files = FilesInOrderOfPrecedence(standpoint, target);

  // Among names of one folder that differ in letter case only, the list goes by name, but the exact one wins.
  if (const auto winner = FindVisibleFile(standpoint, target)) {
    const auto place = std::find(files.begin(), files.end(), *winner);
    if (place != files.end()) std::rotate(files.begin(), place, std::next(place));
  }
  KeepEachLocationOnce(files);
  return files;
}

}  // namespace vornixpath
