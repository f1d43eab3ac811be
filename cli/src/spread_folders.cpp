#include "spread_folders.hpp"

#include <algorithm>
#include <fl/filesystem/case_folding.hpp>
#include <map>
#include <utility>

#include "name_places.hpp"
#include "offered_names.hpp"
#include "output.hpp"

namespace vornixpath {

namespace {

using Quorvex::PathManagement::PathEntryType;

/// The folders of one package or class.
struct Spread {
  PathEntryType kind;
  std::u16string name;
  std::vector<FindingPlace> places;
};

// In the order of their first folders.
std::vector<Spread> AllPackagesAndClasses(const ExaminedPath& examined) {
  std::vector<Spread> all;
  std::map<std::pair<PathEntryType, std::u16string>, std::size_t> known;
  for (const NamePlace& place : PlacesOfNames(examined.path)) {
    if (!place.isUsual || place.folders.empty()) continue;
    const PathEntryType kind = place.entry->GetEntryType();
    const std::u16string name(FolderName(place));
    const bool isFolded = LetterCaseIn(*place.entry) == LetterCase::MakesNoDifference;
    const auto [where, isNew] =
        known.try_emplace({kind, isFolded ? fl::filesystem::fold_case(name) : name}, all.size());
    if (isNew) all.push_back({kind, name, {}});
    all[where->second].places.push_back({place.entry->GetAbsoluteIRI(), examined.numbers.NumberOf(*place.entry)});
  }
  return all;
}

bool IsSpread(const Spread& folders) {
  const std::size_t first = folders.places.front().number;
  return std::any_of(folders.places.begin(), folders.places.end(),
                     [first](const FindingPlace& place) { return place.number != first; });
}

Finding FindingFor(Spread folders) {
  const bool isClass = folders.kind == PathEntryType::Class;
  return {
      isClass ? FindingKind::SpreadClass : FindingKind::SpreadPackage,
      isClass ? Severity::Warning : Severity::Note,
      (isClass ? "the class " : "the package ") + Quoted(folders.name) + " is spread over several folders of the path",
      std::move(folders.places),
      {"move what it holds into one of them"},
      std::move(folders.name)};
}

}  // namespace

std::vector<Finding> SpreadFolders(const ExaminedPath& examined) {
  std::vector<Finding> findings;
  for (Spread& folders : AllPackagesAndClasses(examined)) {
    if (IsSpread(folders)) findings.push_back(FindingFor(std::move(folders)));
  }
  return findings;
}

}  // namespace vornixpath
