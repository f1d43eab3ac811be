#pragma once

// What a leaf path must answer, found by looking at everything: slow, obvious, and written apart from the path.
//
// It knows entries by the contract alone: their kind, their location, their items, their comparator, and what they
// hold.

#include <algorithm>
#include <boost/optional/optional.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <functional>
#include <memory>
#include <oracle/partial_pathname.hpp>
#include <search_path_interfaces/constants.hpp>
#include <search_path_interfaces/found_item.hpp>
#include <search_path_interfaces/path_entry.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <string>
#include <utility>
#include <vector>

namespace Quorvex::PathManagement::oracle {

class PlainWalk {
 public:
  using EntryPtr = std::shared_ptr<const IPathEntry>;
  using AbsoluteIRI = foundation::storage::vfs::AbsoluteIRI;
  /// Tells where a location really is.
  using Canonicalizer = std::function<AbsoluteIRI(const AbsoluteIRI&)>;

  PlainWalk(const std::vector<EntryPtr>& mainEntries, const Canonicalizer& canonicalOf) {
    for (const auto& entry : mainEntries) Add(entry, nullptr, canonicalOf);
  }

  /// The entries in `scope`, in path order.
  [[nodiscard]] std::vector<EntryPtr> Entries(SearchScope scope) const {
    std::vector<EntryPtr> entries;
    for (const Place& place : places_) {
      if (scope.Contains(place.entry->GetEntryType())) entries.push_back(place.entry);
    }
    return entries;
  }

  [[nodiscard]] std::vector<EntryPtr> MethodEntriesByName(SearchScope scope, const std::u16string& name,
                                                          FilenameMatchingPolicy policy) const {
    std::vector<EntryPtr> entries;
    for (const Place& place : places_) {
      if (place.entry->GetEntryType() != PathEntryType::Class || name.empty()) continue;
      if (!scope.Contains(place.parent->GetEntryType())) continue;
      const Comparison areSame = *place.parent->GetFilenameComparator(policy);
      if (areSame(u"@" + name, place.entry->GetAbsoluteIRI().getName())) entries.push_back(place.entry);
    }
    return entries;
  }

  [[nodiscard]] std::vector<EntryPtr> PartiallyMatchingEntries(SearchScope scope, const std::u16string& partial,
                                                               FilenameMatchingPolicy policy) const {
    std::vector<EntryPtr> entries;
    for (const EntryPtr& entry : Entries(scope)) {
      if (IsNamedBy(partial, *entry, policy)) entries.push_back(entry);
    }
    return entries;
  }

  /// As it is spelled, else as it is canonically, else as the policy compares; each time main entries first.
  [[nodiscard]] EntryPtr EntryAt(const AbsoluteIRI& location, FilenameMatchingPolicy policy) const {
    if (const EntryPtr entry = EntryAt(location)) return entry;
    return FirstOf([&](const Place& place) {
      const Comparison areSame = *place.entry->GetFilenameComparator(policy);
      return areSame(location.toString(), place.entry->GetAbsoluteIRI().toString());
    });
  }
  [[nodiscard]] EntryPtr EntryAt(const AbsoluteIRI& location) const {
    EntryPtr spelled = FirstOf([&](const Place& place) { return place.entry->GetAbsoluteIRI() == location; });
    if (spelled) return spelled;
    return FirstOf([&](const Place& place) { return place.canonicalLocation == location; });
  }

  [[nodiscard]] boost::optional<FoundItem> FindFirst(SearchScope scope, const detail::SearchTarget& target,
                                                     FilenameMatchingPolicy policy) const {
    for (const Place& place : places_) {
      auto matches = Matches(place, scope, target, policy);
      if (matches.empty()) continue;

      // The first extension that has a match at all decides; there the spelling asked for comes before any other.
      const std::u16string spelling = PlainNameOf(target) + matches.front().extension;
      const auto exact = std::find_if(matches.begin(), matches.end(), [&](const Match& match) {
        return match.extension == matches.front().extension && FullNameOf(*match.item) == spelling;
      });
      return FoundItem(exact == matches.end() ? matches.front().item : exact->item, place.entry);
    }
    return boost::none;
  }

  [[nodiscard]] std::vector<FoundItem> FindAll(SearchScope scope, const detail::SearchTarget& target,
                                               FilenameMatchingPolicy policy) const {
    std::vector<FoundItem> found;
    for (const Place& place : places_) {
      for (const Match& match : Matches(place, scope, target, policy)) {
        const FoundItem item(match.item, place.entry);
        if (std::find(found.begin(), found.end(), item) == found.end()) found.push_back(item);
      }
    }
    return found;
  }

 private:
  struct Place {
    EntryPtr entry;
    EntryPtr parent;  // null for a main entry
    std::shared_ptr<const std::vector<std::shared_ptr<const PathItem>>> items;
    AbsoluteIRI canonicalLocation;
  };
  struct Match {
    std::shared_ptr<const PathItem> item;
    std::u16string extension;  // of the target's, the one it matched with
  };

  void Add(const EntryPtr& entry, const EntryPtr& parent, const Canonicalizer& canonicalOf) {
    places_.push_back({entry, parent, entry->GetItems(), canonicalOf(entry->GetAbsoluteIRI())});
    if (entry->GetPrivateEntry()) Add(entry->GetPrivateEntry(), entry, canonicalOf);
    if (entry->GetSecondSingleEntry()) Add(entry->GetSecondSingleEntry(), entry, canonicalOf);
    for (const auto& group : {entry->GetFirstEntryGroup(), entry->GetSecondEntryGroup(), entry->GetThirdEntryGroup()}) {
      for (const auto& child : *group) Add(child, entry, canonicalOf);
    }
  }

  template <class Predicate>
  [[nodiscard]] EntryPtr FirstOf(const Predicate& isWanted) const {
    for (const Place& place : places_) {
      if (!place.parent && isWanted(place)) return place.entry;
    }
    for (const Place& place : places_) {
      if (isWanted(place)) return place.entry;
    }
    return nullptr;
  }

  static std::u16string FullNameOf(const PathItem& item) { return item.baseName + item.extension; }

  static std::size_t LengthOfFolders(const std::u16string& name) {
    const std::size_t separator = name.find_last_of(Constants::PathnameSeparatorStr);
    return separator == std::u16string::npos ? 0 : separator + 1;
  }
  static std::u16string PlainNameOf(const detail::SearchTarget& target) {
    return target.GetBaseName().substr(LengthOfFolders(target.GetBaseName()));
  }

  // A text that begins with a separator is a whole path; any other is matched from the end, leniently.
  static bool IsNamedBy(const std::u16string& folders, const IPathEntry& entry, FilenameMatchingPolicy policy) {
    const Comparison areSame = *entry.GetFilenameComparator(policy);
    if (!folders.starts_with(u'/')) {
      return DoesPartialPathnameMatch(ComponentsOf(folders), ComponentsOf(GetStringFromIRI(entry.GetAbsoluteIRI())),
                                      areSame);
    }

    std::u16string wholePath;
    for (const std::u16string& name : ComponentsOf(folders)) wholePath += u"/" + name;
    return areSame(wholePath.empty() ? u"/" : wholePath, entry.GetAbsoluteIRI().getPath());
  }

  // By extension in the target's order, then in the order of the items.
  static std::vector<Match> Matches(const Place& place, SearchScope scope, const detail::SearchTarget& target,
                                    FilenameMatchingPolicy policy) {
    const std::u16string plainName = PlainNameOf(target);
    const std::u16string folders = target.GetBaseName().substr(0, LengthOfFolders(target.GetBaseName()));
    if (plainName.empty() || !scope.Contains(place.entry->GetEntryType())) return {};
    if (!folders.empty() && !IsNamedBy(folders, *place.entry, policy)) return {};

    std::vector<Match> matches;
    const Comparison areSame = *place.entry->GetFilenameComparator(policy);
    for (const std::u16string& extension : target.GetExtensions()) {
      for (const auto& item : *place.items) {
        if (areSame(plainName + extension, FullNameOf(*item))) matches.push_back({item, extension});
      }
    }
    return matches;
  }

  std::vector<Place> places_;
};

}  // namespace Quorvex::PathManagement::oracle
