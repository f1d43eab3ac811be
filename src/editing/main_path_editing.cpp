// Editing the main search path: read the list, compute the complete new one, hand that to the manager. An edit that
// cannot be made whole is not made at all.

#include <algorithm>
#include <boost/unordered/unordered_set.hpp>
#include <iterator>
#include <range/v3/range/access.hpp>
#include <range/v3/view/common.hpp>
#include <range/v3/view/remove_if.hpp>
#include <search_path_utilities/path_editing.hpp>

namespace Quorvex::PathManagement {

namespace {

using current_working_folder::ICurrentWorkingFolder;
using foundation::core::except::Notification;
using foundation::core::except::NotificationMessage;
using foundation::storage::vfs::AbsoluteIRI;

using Folders = std::vector<AbsoluteIRI>;
using FolderRange = detail::AnyRangeAdapter<AbsoluteIRI>;
using FolderSet = boost::unordered_set<AbsoluteIRI>;

// `change` installs a list. A manager that refuses it as begun within another change is obeyed in silence.
template <class Change>
void UnlessRecursive(const Change& change) {
  try {
    change();
  } catch (const RecursivePathChangeException&) {  // NOLINT(bugprone-empty-catch): the change is dropped
  }
}

// Of the folders that are given, each once, at its first mention; `seen` becomes their set. Reads the range once.
Folders WithoutRepeats(const FolderRange& folders, FolderSet& seen) {
  Folders additions;
  std::copy_if(folders.begin(), folders.end(), std::back_inserter(additions),
               [&seen](const AbsoluteIRI& folder) { return seen.insert(folder).second; });
  return additions;
}

Folders Without(const FolderSet& given, const Folders& list) {
  Folders kept;
  kept.reserve(list.size() + given.size());  // those given follow in the same vector when they are added at the end
  std::copy_if(list.begin(), list.end(), std::back_inserter(kept),
               [&given](const AbsoluteIRI& folder) { return !given.contains(folder); });
  return kept;
}

// A warning for each mention of a folder that is not in the list. `given` is the set of the folders.
Notification MissingOf(const Folders& folders, const FolderSet& given, const Folders& list) {
  FolderSet missing = given;
  for (const AbsoluteIRI& folder : list) missing.erase(folder);

  Notification warnings;
  for (const AbsoluteIRI& folder : folders) {
    if (!missing.contains(folder)) continue;
    warnings.Add(NotificationMessage::About(GetStringFromIRI(folder), "VORNIX:rmpath", "DirNotFound"));
  }
  return warnings;
}

}  // namespace

RecursivePathChangeException::RecursivePathChangeException() noexcept = default;
RecursivePathChangeException::RecursivePathChangeException(const RecursivePathChangeException&) noexcept = default;
RecursivePathChangeException& RecursivePathChangeException::operator=(const RecursivePathChangeException&) noexcept =
    default;
RecursivePathChangeException::~RecursivePathChangeException() = default;

Notification AddFoldersToVornixPath(const detail::AnyRangeAdapter<std::u16string>& names,
                                    const ICurrentWorkingFolder& workingFolder, IMainSearchPathManager& manager,
                                    const IPathFactory& /*pathFactory*/, const IPathEntryFactory& /*entryFactory*/,
                                    Position position) {
  Notification warnings;
  Folders folders = ConvertUstringRangeToAbsoluteIRIs(names, workingFolder, warnings);
  return warnings.IsEmpty() ? AddIRIsToVornixPath(folders, manager, position) : warnings;
}

Notification AddIRIsToVornixPath(const FolderRange& folders, IMainSearchPathManager& manager, Position position) {
  Notification result;
  const auto list = manager.GetMainPathFolders();
  FolderSet given;
  Folders second = WithoutRepeats(folders, given);
  Folders first = Without(given, *list);
  if (position == Position::Beginning) std::swap(first, second);
  first.insert(first.end(), second.begin(), second.end());

  UnlessRecursive([&] { manager.SetMainPathForAddition(first, result); });
  return result;
}

Notification RemoveFoldersFromVornixPath(const detail::AnyRangeAdapter<std::u16string>& names,
                                         const ICurrentWorkingFolder& workingFolder, IMainSearchPathManager& manager,
                                         const IPathFactory& /*pathFactory*/, const IPath& /*path*/) {
  Notification warnings;
  Folders folders = ConvertUstringRangeToAbsoluteIRIs(names, workingFolder, warnings);
  return warnings.IsEmpty() ? RemoveIRIsFromVornixPath(folders, manager) : warnings;
}

Notification RemoveIRIsFromVornixPath(const FolderRange& folders, IMainSearchPathManager& manager) {
  const auto list = manager.GetMainPathFolders();
  // Not by the vector's constructor, which walks a range twice: what is given may be computed while it is read.
  Folders mentions;
  std::copy(folders.begin(), folders.end(), std::back_inserter(mentions));
  const FolderSet given(mentions.begin(), mentions.end());
  Notification result = MissingOf(mentions, given, *list);
  if (!result.IsEmpty()) return result;

  UnlessRecursive([&] {
    // Not a copy of what may be a long list: the manager computes it as it reads.
    auto kept = *list |
                ranges::views::remove_if([&given](const AbsoluteIRI& folder) { return given.contains(folder); }) |
                ranges::views::common;
    manager.SetMainPathForRemoval(kept, result);
  });
  return result;
}

}  // namespace Quorvex::PathManagement
