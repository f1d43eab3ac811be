// A name means another file only if a folder that changed has a part in it: most names come from these folders. The
// others have the same hash as one of theirs.

#include "changed_names.hpp"

#include <algorithm>
#include <fl/filesystem/displayed_text.hpp>
#include <functional>
#include <search_path_utilities/lookup.hpp>
#include <set>
#include <unordered_set>
#include <utility>

#include "file_location.hpp"
#include "location_text.hpp"
#include "offered_names.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::FolderPath;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::IPathEntry;
using Extensions = std::vector<std::u16string>;

/// Where a path offers names, apart by whether the folder of the path changed.
struct Places {
  std::vector<NamePlace> changed;
  std::vector<NamePlace> unchanged;
};

Places PlacesOf(const FolderPath& path, const std::unordered_set<const IPathEntry*>& changed) {
  Places places;
  for (NamePlace& place : PlacesOfNames(path)) {
    const bool isChanged = changed.contains(path.GetMainEntryForEntry(*place.entry).get());
    (isChanged ? places.changed : places.unchanged).push_back(std::move(place));
  }
  return places;
}

/// Gathers the names whose meaning may have changed.
class Gathering {
 public:
  explicit Gathering(const Extensions& extensions) : typed_(extensions) {}

  // All that these places offer.
  void AddChanged(const std::vector<NamePlace>& places) {
    for (const NamePlace& place : places) {
      if (!place.isUsual || IsClassInNoPackage(place)) meeting_.insert(place.hash.Value());
      const LetterCase letterCase = LetterCaseIn(*place.entry);
      isCaseIgnored_ = isCaseIgnored_ || letterCase == LetterCase::MakesNoDifference;
      AddNameOfClass(place, letterCase);
      ForEachOffer(place, typed_, [&](std::u16string_view name, bool isForClass) {
        hashes_.insert(HashOf(place.hash, name));
        if (isForClass) hashes_.insert(HashOf(FoldedHash(), name));
        if (place.isUsual) names_.insert(OfferedName(place, name, isForClass));
      });
    }
  }

  // What else a lookup may take for one of them, or one of them for it.
  void AddUnchanged(const std::vector<NamePlace>& places) {
    for (const NamePlace& place : places) {
      if (!place.isUsual || !MayMeet(place)) continue;
      ForEachOffer(place, typed_, [&](std::u16string_view name, bool isForClass) {
        const std::uint64_t hash = HashOf(isForClass ? FoldedHash() : place.hash, name);
        if (hashes_.contains(hash)) names_.insert(OfferedName(place, name, isForClass));
      });
    }
  }

  [[nodiscard]] const std::set<std::u16string>& Names() const { return names_; }

 private:
  // Even without a file of its name a class folder may decide what the name means.
  void AddNameOfClass(const NamePlace& place, LetterCase letterCase) {
    const std::u16string_view name = FolderName(place);
    if (!IsClassInNoPackage(place) || name.find(u'.', 1) != std::u16string_view::npos) return;
    hashes_.insert(HashOf(FoldedHash(), name));
    if (letterCase == LetterCase::Counts) names_.emplace(name);
  }

  [[nodiscard]] bool MayMeet(const NamePlace& place) const {
    return meeting_.contains(place.hash.Value()) || isCaseIgnored_ ||
           LetterCaseIn(*place.entry) == LetterCase::MakesNoDifference;
  }

  // In any letter case, without marks.
  static std::uint64_t HashOf(FoldedHash folders, std::u16string_view name) {
    folders.Add(name);
    return folders.Value();
  }

  TypedNames typed_;
  std::set<std::u16string> names_;
  std::unordered_set<std::uint64_t> hashes_;
  std::unordered_set<std::uint64_t> meeting_;  // of folders whose names others may offer under the same hash
  bool isCaseIgnored_ = false;
};

std::optional<AbsoluteIRI> FileFor(const std::u16string& name, const FolderPath& path, const Extensions& extensions) {
  const auto target = Quorvex::PathManagement::CreateSearchTargetWithExtensionInFilenamePreferred(name, extensions);
  const auto found = Quorvex::PathManagement::FindFirstFileVisibleOnPath(path, target, FilenameMatchingPolicy::Native);
  if (!found) return std::nullopt;
  return LocationOf(*found);
}

}  // namespace

std::vector<ChangedName> ChangedNames(const FolderPath& before, const FolderPath& after,
                                      const std::vector<FolderChange>& changes, const Extensions& extensions) {
  if (changes.empty()) return {};
  std::unordered_set<const IPathEntry*> entries;
  for (const FolderChange& change : changes) entries.insert({change.before.get(), change.after.get()});

  Gathering gathering(extensions);
  const Places oldPlaces = PlacesOf(before, entries);
  const Places newPlaces = PlacesOf(after, entries);
  for (const Places* const places : {&oldPlaces, &newPlaces}) gathering.AddChanged(places->changed);
  for (const Places* const places : {&oldPlaces, &newPlaces}) gathering.AddUnchanged(places->unchanged);

  std::vector<ChangedName> changed;
  for (const std::u16string& name : gathering.Names()) {
    ChangedName candidate{name, FileFor(name, before, extensions), FileFor(name, after, extensions)};
    if (candidate.before != candidate.after) changed.push_back(std::move(candidate));
  }
  return changed;
}

std::string InWords(const ChangedName& change) {
  const auto inWords = [](const std::optional<AbsoluteIRI>& file) { return file ? ShownText(*file) : "nothing"; };
  return fl::filesystem::to_displayed_text(change.name) + ": " + inWords(change.before) + " -> " +
         inWords(change.after);
}

}  // namespace vornixpath
