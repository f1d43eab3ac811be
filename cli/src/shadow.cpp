// What competing names mean is asked of the lookup alone.

#include "shadow.hpp"

#include <algorithm>
#include <search_path_utilities/lookup.hpp>

#include "competing_names.hpp"
#include "file_location.hpp"
#include "standpoint.hpp"
#include "visible_files.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::FoundItem;
using Quorvex::PathManagement::IPath;
using Quorvex::PathManagement::PathEntryType;

constexpr auto kPolicy = FilenameMatchingPolicy::Native;

/// A name and the files that it might mean, the winner first.
struct Meaning {
  std::u16string name;
  std::vector<FoundItem> files;

  [[nodiscard]] const FoundItem& Winner() const { return files.front(); }
  [[nodiscard]] bool Holds(const FoundItem& file) const {
    return std::find(files.begin(), files.end(), file) != files.end();
  }
  [[nodiscard]] bool HoldsFileIn(const AbsoluteIRI& folder) const {
    return std::any_of(files.begin(), files.end(),
                       [&](const FoundItem& file) { return file.GetPathItem()->folderIRI == folder; });
  }
};

/// Tells what the names of one group hide.
class Hiding {
 public:
  Hiding(const IPath& path, const std::vector<std::u16string>& extensions, std::vector<Shadow>& shadows)
      : standpoint_{path, boost::none, kPolicy}, extensions_(extensions), shadows_(shadows) {}

  void operator()(const CompetingNames& group) {
    const std::vector<Meaning> meanings = MeaningsOf(group.names);
    for (const Meaning& meaning : meanings) AddFilesHiddenBy(meaning);
    for (const Meaning& meaning : meanings) AddOtherLetterCase(meanings.front(), meaning);
    for (const NamedFolder& folder : group.folders) AddFolder(meanings, folder);
  }

 private:
  // In path order of the winners. Where letter case makes no difference, two names mean the same: it is told once.
  std::vector<Meaning> MeaningsOf(const std::vector<std::u16string>& names) const {
    std::vector<Meaning> meanings;
    for (const std::u16string& name : names) {
      const auto target =
          Quorvex::PathManagement::CreateSearchTargetWithExtensionInFilenamePreferred(name, extensions_);
      Meaning meaning{name, FindAllFiles(standpoint_, target)};
      if (meaning.files.empty()) continue;
      const auto same = std::find_if(meanings.begin(), meanings.end(),
                                     [&](const Meaning& other) { return other.files == meaning.files; });
      if (same == meanings.end()) {
        meanings.push_back(std::move(meaning));
      } else if (name.ends_with(meaning.Winner().GetPathItem()->baseName)) {
        same->name = name;  // as the winner spells it
      }
    }
    std::stable_sort(meanings.begin(), meanings.end(), [this](const Meaning& left, const Meaning& right) {
      return standpoint_.path.FirstEntryIsBeforeSecondOnPath(*left.Winner().GetPathEntry(),
                                                             *right.Winner().GetPathEntry());
    });
    return meanings;
  }

  void AddFilesHiddenBy(const Meaning& meaning) {
    const AbsoluteIRI& folder = meaning.Winner().GetPathItem()->folderIRI;
    const PathEntryType kind = meaning.Winner().GetPathEntry()->GetEntryType();
    for (const FoundItem& file : meaning.files) {
      if (file.GetPathItem()->folderIRI == folder) continue;
      const bool isSameKind = file.GetPathEntry()->GetEntryType() == kind;
      Add(meaning, file.GetPathEntry(), LocationOf(file), isSameKind ? Likeness::SameName : Likeness::OtherKind);
    }
  }

  void AddOtherLetterCase(const Meaning& first, const Meaning& other) {
    if (first.Holds(other.Winner())) return;
    Add(first, other.Winner().GetPathEntry(), LocationOf(other.Winner()), Likeness::OtherLetterCase);
  }

  void AddFolder(const std::vector<Meaning>& meanings, const NamedFolder& folder) {
    if (meanings.empty()) return;

    const auto isSameName = folder.entry->GetFilenameComparator(kPolicy);
    const auto meaning = std::find_if(meanings.begin(), meanings.end(), [&](const Meaning& candidate) {
      return (*isSameName)(candidate.name, folder.name);
    });
    // A class whose own file takes part in the lookup is told by that file, even where it is found as another folder's.
    if (meaning != meanings.end() && IsClass(*folder.entry) && meaning->HoldsFileIn(folder.entry->GetAbsoluteIRI())) {
      return;
    }
    const Meaning& hiding = meaning != meanings.end() ? *meaning : meanings.front();
    if (IsClass(*folder.entry) && MeansAClass(hiding)) return;
    Add(hiding, folder.entry, folder.entry->GetAbsoluteIRI(),
        meaning != meanings.end() ? Likeness::OtherKind : Likeness::OtherLetterCase);
  }

  static bool IsClass(const Quorvex::PathManagement::IPathEntry& entry) {
    return entry.GetEntryType() == PathEntryType::Class;
  }

  // Two classes of one name are no more a conflict than two packages are: only what is in them can be.
  static bool MeansAClass(const Meaning& meaning) {
    return IsClass(*meaning.Winner().GetPathEntry()) && !Quorvex::PathManagement::IsPartialPathname(meaning.name);
  }

  void Add(const Meaning& meaning, const EntryPtr& entry, const AbsoluteIRI& hidden, Likeness likeness) {
    shadows_.push_back({meaning.name, meaning.Winner(), entry, hidden, likeness});
  }

  Standpoint standpoint_;
  const std::vector<std::u16string>& extensions_;
  std::vector<Shadow>& shadows_;
};

}  // namespace

std::vector<Shadow> FindShadows(const IPath& path, const std::vector<std::u16string>& extensions) {
  std::vector<Shadow> shadows;
  Hiding addShadowsOf(path, extensions, shadows);
  for (const CompetingNames& group : FindCompetingNames(path, extensions)) addShadowsOf(group);
  return shadows;
}

}  // namespace vornixpath
