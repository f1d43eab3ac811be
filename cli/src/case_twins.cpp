#include "case_twins.hpp"

#include <algorithm>
#include <fl/filesystem/case_folding.hpp>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "entry_ptr.hpp"
#include "name_places.hpp"
#include "offered_names.hpp"
#include "output.hpp"
#include "typed_name.hpp"

namespace vornixpath {

namespace {

using fl::filesystem::fold_case;
using foundation::storage::vfs::AbsoluteIRI;

/// The first that has its spelling.
struct Bearer {
  std::u16string folders;  // typed before the name
  std::u16string name;
  FindingPlace place;
};

/// What is met under one name, whatever its letter case.
struct Group {
  std::vector<Bearer> bearers;
  bool isTold = false;  // whether any of them stands where letter case counts
};

class TwinSearch {
 public:
  explicit TwinSearch(const ExaminedPath& examined) : examined_(examined), typed_(examined.extensions) {}

  std::vector<Finding> Run() {
    for (const NamePlace& place : PlacesOfNames(examined_.path)) {
      if (!place.isUsual) continue;
      AddFolder(place);
      AddFiles(*place.entry, fold_case(place.folders), place.folders);
      if (const EntryPtr own = place.entry->GetPrivateEntry()) AddFiles(*own, ScopeOfPrivate(*own), u"");
    }
    return Findings();
  }

 private:
  using Entry = Quorvex::PathManagement::IPathEntry;

  // No folder that is typed begins with a NUL.
  static std::u16string ScopeOfPrivate(const Entry& folder) {
    return u'\0' + folder.GetAbsoluteIRI().toString() + u'\0';
  }

  void AddFolder(const NamePlace& place) {
    const std::u16string_view chain = FolderName(place);
    if (chain.empty()) return;
    const std::size_t begin = chain.rfind(u'/') + 1;  // npos + 1 is 0
    const std::u16string folders(chain.substr(0, begin));
    Add(*place.entry, fold_case(folders), {folders, std::u16string(chain.substr(begin)), PlaceOf(*place.entry)});
  }

  void AddFiles(const Entry& folder, const std::u16string& scope, const std::u16string& folders) {
    const LetterCase letterCase = LetterCaseIn(folder);
    const FindingPlace place = PlaceOf(folder);
    ForEachName(folder, [&](std::u16string_view baseName, std::u16string_view extension) {
      const std::u16string name(typed_.NameFor(baseName, extension, letterCase));
      if (name.empty()) return;
      const AbsoluteIRI file = place.location.getChild(std::u16string(baseName).append(extension));
      Add(folder, scope, {folders, name, {file, place.number}});
    });
  }

  FindingPlace PlaceOf(const Entry& folder) const {
    return {folder.GetAbsoluteIRI(), examined_.numbers.NumberOf(folder)};
  }

  void Add(const Entry& folder, const std::u16string& scope, Bearer bearer) {
    const auto [where, isNew] = numbers_.try_emplace(scope + fold_case(bearer.name), groups_.size());
    if (isNew) groups_.emplace_back();
    Group& group = groups_[where->second];
    group.isTold = group.isTold || LetterCaseIn(folder) == LetterCase::Counts;
    const bool isKnown = std::any_of(group.bearers.begin(), group.bearers.end(),
                                     [&](const Bearer& other) { return other.name == bearer.name; });
    if (!isKnown) group.bearers.push_back(std::move(bearer));
  }

  std::vector<Finding> Findings() {
    std::vector<Finding> findings;
    for (Group& group : groups_) {
      if (group.isTold && group.bearers.size() > 1) findings.push_back(FindingFor(group));
    }
    return findings;
  }

  static Finding FindingFor(const Group& group) {
    std::string names;
    std::vector<FindingPlace> places;
    for (const Bearer& bearer : group.bearers) {
      const bool isLast = &bearer == &group.bearers.back();
      names.append(names.empty() ? "" : isLast ? " and " : ", ").append(Quoted(bearer.folders + bearer.name));
      places.push_back(bearer.place);
    }
    const Bearer& first = group.bearers.front();
    return {FindingKind::LetterCaseTwins,
            Severity::Warning,
            names + " differ in letter case only: where that makes no difference they are one",
            std::move(places),
            {"rename all of them but one"},
            first.folders + first.name};
  }

  const ExaminedPath& examined_;
  TypedNames typed_;
  std::unordered_map<std::u16string, std::size_t> numbers_;  // of groups, by scope and folded name
  std::vector<Group> groups_;                                // in the order in which they are met
};

}  // namespace

std::vector<Finding> LetterCaseTwins(const ExaminedPath& examined) { return TwinSearch(examined).Run(); }

}  // namespace vornixpath
