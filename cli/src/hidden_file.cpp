// Which files a winner hides, and why. Who wins is decided by the lookup alone; here its rules are only put into words
// for each file that lost.

#include "hidden_file.hpp"

#include <algorithm>

#include "file_location.hpp"
#include "looked_for.hpp"
#include "visible_files.hpp"

namespace vornixpath {

namespace {

using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::FoundItem;
using Quorvex::PathManagement::PathEntryType;
using Quorvex::PathManagement::detail::SearchTarget;

std::u16string FullNameOf(const FoundItem& found) {
  return found.GetPathItem()->baseName + found.GetPathItem()->extension;
}

// The last component of the names looked for, in order.
std::vector<std::u16string> FileNamesLookedFor(const SearchTarget& target) {
  std::vector<std::u16string> names = NamesLookedFor(target);
  const std::size_t folders = FolderPartOf(target.GetBaseName()).size();
  for (std::u16string& name : names) name.erase(0, folders);
  return names;
}

// Two files of one folder.
HidingReason ReasonWithinFolder(const FoundItem& winner, const FoundItem& loser, const SearchTarget& target,
                                FilenameMatchingPolicy policy) {
  const auto matches = winner.GetPathEntry()->GetFilenameComparator(policy);
  const std::vector<std::u16string> names = FileNamesLookedFor(target);
  const auto firstNameOf = [&](const FoundItem& found) {
    return std::find_if(names.begin(), names.end(),
                        [&](const std::u16string& name) { return (*matches)(name, FullNameOf(found)); });
  };

  const auto winning = firstNameOf(winner);
  const auto exact = std::find(names.begin(), names.end(), FullNameOf(loser));
  const auto losing = exact != names.end() ? exact : firstNameOf(loser);
  if (winning == names.end() || winning != losing) return HidingReason::LaterExtension;
  return *winning == FullNameOf(winner) ? HidingReason::OtherLetterCase : HidingReason::LaterByName;
}

// Two files of different folders, asked on the path or by partial pathname.
HidingReason ReasonByPlace(const FoundItem& winner, const FoundItem& loser, bool classesCompete,
                           const FolderNumbers& numbers) {
  const bool isLater = numbers.NumberOf(*winner.GetPathEntry()) < numbers.NumberOf(*loser.GetPathEntry());
  const PathEntryType kindOfWinner = winner.GetPathEntry()->GetEntryType();
  const PathEntryType kindOfLoser = loser.GetPathEntry()->GetEntryType();
  if (classesCompete && kindOfWinner == PathEntryType::Main && kindOfLoser == PathEntryType::Class) {
    return isLater ? HidingReason::ClassFolderLater : HidingReason::ClassFolderNotEarlier;
  }
  if (classesCompete && kindOfWinner == PathEntryType::Class && kindOfLoser == PathEntryType::Main) {
    return HidingReason::PlainFileLater;
  }
  return isLater ? HidingReason::LaterOnPath : HidingReason::LaterInTheSameFolder;
}

HidingReason ReasonFor(const FoundItem& winner, const FoundItem& loser, const Standpoint& standpoint,
                       const SearchTarget& target, const FolderNumbers& numbers) {
  if (winner.GetPathItem()->folderIRI == loser.GetPathItem()->folderIRI) {
    return ReasonWithinFolder(winner, loser, target, standpoint.policy);
  }
  const bool isPlainName = FolderPartOf(target.GetBaseName()).empty();
  if (isPlainName && standpoint.folder) {
    const PathEntryType kindOfWinner = winner.GetPathEntry()->GetEntryType();
    if (kindOfWinner == PathEntryType::Private) return HidingReason::PrivateFolderFirst;
    const bool isPlainFile = loser.GetPathEntry()->GetEntryType() == PathEntryType::Main;
    if (kindOfWinner == PathEntryType::Class && isPlainFile) return HidingReason::ClassFoldersFirst;
  }
  return ReasonByPlace(winner, loser, isPlainName, numbers);
}

}  // namespace

std::vector<HiddenFile> FilesHiddenBy(const FoundItem& winner, const Standpoint& standpoint, const SearchTarget& target,
                                      const FolderNumbers& numbers) {
  std::vector<HiddenFile> hidden;
  for (FoundItem& file : FindAllFiles(standpoint, target)) {
    if (LocationOf(file) == LocationOf(winner)) continue;
    const HidingReason reason = ReasonFor(winner, file, standpoint, target, numbers);
    hidden.push_back({std::move(file), reason});
  }
  return hidden;
}

}  // namespace vornixpath
