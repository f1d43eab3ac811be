// Near names: each file of the path that bears the name, or nearly, and is not reached; then what storage tells about
// plain subfolders; then the folders that could not be read.

#include "near_names.hpp"

#include <algorithm>

#include "all_kinds.hpp"
#include "file_location.hpp"
#include "looked_for.hpp"
#include "path_troubles.hpp"
#include "plain_subfolders.hpp"
#include "reach.hpp"
#include "visible_files.hpp"
#include "wanted_name.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::FolderPath;
using Quorvex::PathEnvironment::ProblemKind;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::FoundItem;
using Quorvex::PathManagement::IPathEntry;
using Quorvex::PathManagement::PathEntryType;
using Entry = std::shared_ptr<const IPathEntry>;

Obstacle ObstacleOfPlace(PathEntryType kind) {
  switch (kind) {
    case PathEntryType::Private:
      return Obstacle::InPrivateFolder;
    case PathEntryType::Package:
      return Obstacle::InPackage;
    case PathEntryType::Class:
      return Obstacle::InClassFolder;
    case PathEntryType::Resources:
      return Obstacle::InResources;
    default:
      return Obstacle::InOtherFolder;
  }
}

boost::optional<Obstacle> ObstacleOf(const IPathEntry& entry, Likeness likeness, const Reach& reach) {
  const bool isReached = reach.Holds(entry);
  const bool isNamed = likeness == Likeness::Exact || likeness == Likeness::OtherLetterCase;
  if (isReached && likeness == Likeness::OtherLetterCase) return Obstacle::OtherLetterCase;
  if (isReached && likeness == Likeness::OtherExtension) return Obstacle::OtherExtension;
  if (!isReached && isNamed && reach.HoldsButForLetterCase(entry)) return Obstacle::OtherLetterCaseOfFolder;
  if (!isReached && likeness == Likeness::Exact) return ObstacleOfPlace(entry.GetEntryType());
  return boost::none;
}

// The names of the special folders from the folder of the path down to `entry`, marks left out: "geometry/Point/".
std::u16string FoldersWithinPath(const FolderPath& path, Entry entry) {
  std::u16string folders;
  for (Entry parent; (parent = path.GetParentEntryForEntry(*entry)); entry = parent) {
    const std::u16string name = entry->GetAbsoluteIRI().getName();
    const bool isMarked =
        entry->GetEntryType() == PathEntryType::Package || entry->GetEntryType() == PathEntryType::Class;
    folders.insert(0, name.substr(isMarked ? 1 : 0) + u'/');
  }
  return folders;
}

/// Collects what is near one name.
class Search {
 public:
  Search(const FolderPath& path, const Standpoint& standpoint, const Question& question, const FolderNumbers& numbers)
      : path_(path),
        standpoint_(standpoint),
        question_(question),
        numbers_(numbers),
        wanted_(question.Target(), standpoint.policy == FilenameMatchingPolicy::CaseInsensitive),
        reach_(standpoint, question.Target()) {}

  std::vector<NearName> Run() && {
    path_.ForEachEntry(AllKinds(), [this](const Entry& entry) {
      LookThrough(entry);
      return false;
    });
    const auto folders = path_.GetMainEntries();
    for (const Entry& folder : *folders) LookBelow(*folder);
    AddUnreadableFolders();
    std::stable_sort(near_.begin(), near_.end(),
                     [](const NearName& left, const NearName& right) { return left.obstacle < right.obstacle; });
    return std::move(near_);
  }

 private:
  void LookThrough(const Entry& entry) {
    const auto items = entry->GetItems();  // nobody else keeps them
    for (const auto& item : *items) {
      const Likeness likeness = wanted_.LikenessOf(item->baseName + item->extension);
      if (likeness == Likeness::None) continue;
      if (const auto obstacle = ObstacleOf(*entry, likeness, reach_)) Add(*obstacle, FoundItem(item, entry));
    }
  }

  void Add(Obstacle obstacle, const FoundItem& file) {
    const Entry entry = file.GetPathEntry();
    NearName name{obstacle, LocationOf(file), numbers_.NumberOf(*entry), {}, boost::none, {}};
    if (obstacle == Obstacle::InPrivateFolder) {
      TellWhoSees(file, name);
    } else if (obstacle != Obstacle::InResources) {
      name.otherName = NameThatMeans(file);
    }
    near_.push_back(std::move(name));
  }

  // The folder around a private one, if the plain name means the file there.
  void TellWhoSees(const FoundItem& file, NearName& name) const {
    const AbsoluteIRI folder = path_.GetParentEntryForEntry(*file.GetPathEntry())->GetAbsoluteIRI();
    const std::u16string plainName = question_.name.substr(FolderPartOf(question_.name).size());
    if (!Means({path_, folder, standpoint_.policy}, plainName, file)) return;
    name.askFrom = folder;
    name.otherName = plainName;
  }

  // The shortest way to write the file's name, with its extension only where it must be, that means it from here.
  std::u16string NameThatMeans(const FoundItem& file) const {
    const auto item = file.GetPathItem();
    const std::u16string folders = FoldersWithinPath(path_, file.GetPathEntry());
    const std::u16string fullName = item->baseName + item->extension;
    for (const std::u16string& name : {item->baseName, fullName, folders + item->baseName, folders + fullName}) {
      if (Means(standpoint_, name, file)) return name;
    }
    return {};
  }

  bool Means(const Standpoint& standpoint, const std::u16string& name, const FoundItem& file) const {
    const Question question{name, question_.extensions};
    const auto found = FindVisibleFile(standpoint, question.Target());
    return found && *found == file;
  }

  void LookBelow(const IPathEntry& folder) {
    for (const AbsoluteIRI& file : FilesInPlainSubfolders(folder.GetAbsoluteIRI(), wanted_, path_)) {
      near_.push_back({Obstacle::InPlainSubfolder, file, numbers_.NumberOf(folder), {}, boost::none, {}});
    }
  }

  // A folder left out because it encloses itself is read where it stands first.
  void AddUnreadableFolders() {
    for (const auto& trouble : TroublesOf(path_)) {
      if (trouble.kind == ProblemKind::Loop) continue;
      near_.push_back(
          {Obstacle::InUnreadableFolder, trouble.location, trouble.position + 1, {}, boost::none, ReasonOf(trouble)});
    }
  }

  const FolderPath& path_;
  const Standpoint& standpoint_;
  const Question& question_;
  const FolderNumbers& numbers_;
  WantedName wanted_;
  Reach reach_;
  std::vector<NearName> near_;
};

}  // namespace

std::vector<NearName> FindNearNames(const FolderPath& path, const Standpoint& standpoint, const Question& question,
                                    const FolderNumbers& numbers) {
  return Search(path, standpoint, question, numbers).Run();
}

}  // namespace vornixpath
