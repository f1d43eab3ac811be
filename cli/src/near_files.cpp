// Each file of the path that bears the name, or nearly, and is not reached; then what storage tells about plain
// subfolders.

#include "near_files.hpp"

#include <algorithm>
#include <fl/filesystem/case_folding.hpp>
#include <tuple>
#include <unordered_set>

#include "all_kinds.hpp"
#include "entry_ptr.hpp"
#include "file_location.hpp"
#include "location_text.hpp"
#include "looked_for.hpp"
#include "plain_subfolders.hpp"
#include "reach.hpp"
#include "wanted_name.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::FoundItem;
using Quorvex::PathManagement::PathEntryType;
using FolderNames = std::vector<std::u16string>;

// The names in a text of folders, without their marks and in one letter case, as they are compared here.
FolderNames ComparableNamesIn(const std::u16string& folders) {
  FolderNames names = FolderNamesIn(folders);
  for (std::u16string& name : names) {
    name = fl::filesystem::fold_case(name.substr(name.front() == u'@' || name.front() == u'+' ? 1 : 0));
  }
  return names;
}

bool HoldsName(const FolderNames& names, const std::u16string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

class NearSearch {
 public:
  NearSearch(const LoadedPath& path, const Standpoint& standpoint, const Question& question,
             const FolderNumbers& numbers)
      : path_(path),
        view_(path.GetView()),
        numbers_(numbers),
        written_(ComparableNamesIn(FolderPartOf(question.Target().GetBaseName()))),
        wanted_(question.Target(), standpoint.policy == FilenameMatchingPolicy::CaseInsensitive),
        reach_(standpoint, question.Target()) {}

  std::vector<NearFile> Run() && {
    view_.ForEachEntry(AllKinds(), [this](const EntryPtr& entry) {
      LookThrough(entry);
      return false;
    });
    if (path_.IsFromStorage()) LookBelowFolders();
    std::stable_sort(near_.begin(), near_.end(), IsLikelier);
    KeepEachLocationOnce();
    return std::move(near_);
  }

 private:
  void LookThrough(const EntryPtr& entry) {
    const auto items = entry->GetItems();  // nobody else keeps them
    for (const auto& item : *items) {
      const NameMatch match = wanted_.MatchOf(item->baseName + item->extension);
      if (match == NameMatch::None) continue;
      std::vector<Obstacle> obstacles = ObstaclesOf(entry, match);
      if (obstacles.empty()) continue;
      const AbsoluteIRI location = LocationOf(*item);
      near_.push_back({AgreeingFoldersOf(location), std::move(obstacles), location, numbers_.NumberOf(*entry),
                       FoundItem(item, entry)});
    }
  }

  void LookBelowFolders() {
    const auto folders = view_.GetMainEntries();
    for (const EntryPtr& folder : *folders) LookBelow(*folder);
  }

  void LookBelow(const Quorvex::PathManagement::IPathEntry& folder) {
    for (const SubfolderFile& file : FilesInPlainSubfolders(folder.GetAbsoluteIRI(), wanted_, path_)) {
      near_.push_back({AgreeingFoldersOf(file.location), WithObstacleOfName({Obstacle::InPlainSubfolder}, file.match),
                       file.location, numbers_.NumberOf(folder), boost::none});
    }
  }

  std::vector<Obstacle> ObstaclesOf(const EntryPtr& entry, NameMatch match) const {
    if (reach_.Includes(*entry)) return WithObstacleOfName({}, match);
    if (!reach_.WouldIncludeInAnyLetterCase(*entry)) return WithObstacleOfName({ObstacleOfPlace(entry)}, match);
    // A class folder bears the file's name, so that its letter case is the file's, too.
    return WithObstacleOfName({Obstacle::OtherLetterCaseOfFolder},
                              match == NameMatch::OtherLetterCase ? NameMatch::Exact : match);
  }

  static std::vector<Obstacle> WithObstacleOfName(std::vector<Obstacle> obstacles, NameMatch match) {
    if (match == NameMatch::OtherLetterCase) obstacles.push_back(Obstacle::OtherLetterCase);
    if (match == NameMatch::OtherExtension) obstacles.push_back(Obstacle::OtherExtension);
    return obstacles;
  }

  Obstacle ObstacleOfPlace(const EntryPtr& entry) const {
    switch (entry->GetEntryType()) {
      case PathEntryType::Private:
        return Obstacle::InPrivateFolder;
      case PathEntryType::Package:
        return Obstacle::InPackage;
      case PathEntryType::Class:
        return StandsInUnnamedPackage(entry) ? Obstacle::InPackage : Obstacle::InClassFolder;
      case PathEntryType::Resources:
        return Obstacle::InResources;
      default:
        return Obstacle::InOtherFolder;
    }
  }

  // A class may be left out of a partial pathname, but no package may.
  bool StandsInUnnamedPackage(const EntryPtr& entry) const {
    for (EntryPtr outer = entry; outer; outer = view_.GetParentEntryForEntry(*outer)) {
      if (outer->GetEntryType() != PathEntryType::Package) continue;
      if (!HoldsName(written_, ComparableNamesIn(outer->GetAbsoluteIRI().getName()).front())) return true;
    }
    return false;
  }

  std::size_t AgreeingFoldersOf(const AbsoluteIRI& file) const {
    if (written_.empty()) return 0;
    const FolderNames folders = ComparableNamesIn(TextOf(file.getParent()));
    return static_cast<std::size_t>(std::count_if(
        written_.begin(), written_.end(), [&folders](const std::u16string& name) { return HoldsName(folders, name); }));
  }

  static bool IsLikelier(const NearFile& left, const NearFile& right) {
    const auto rank = [](const NearFile& near) { return std::make_tuple(near.obstacles.size(), near.obstacles); };
    if (left.agreeingFolders != right.agreeingFolders) return left.agreeingFolders > right.agreeingFolders;
    return rank(left) < rank(right);
  }

  // A special folder that stands on the path, too, is met twice.
  void KeepEachLocationOnce() {
    std::unordered_set<AbsoluteIRI> known;
    const auto isKnown = [&known](const NearFile& near) { return !known.insert(near.location).second; };
    near_.erase(std::remove_if(near_.begin(), near_.end(), isKnown), near_.end());
  }

  const LoadedPath& path_;
  const Quorvex::PathManagement::IPath& view_;
  const FolderNumbers& numbers_;
  FolderNames written_;
  WantedName wanted_;
  Reach reach_;
  std::vector<NearFile> near_;
};

}  // namespace

std::vector<NearFile> FindNearFiles(const LoadedPath& path, const Standpoint& standpoint, const Question& question,
                                    const FolderNumbers& numbers) {
  return NearSearch(path, standpoint, question, numbers).Run();
}

}  // namespace vornixpath
