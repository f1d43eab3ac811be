#include "map_path.hpp"

#include <algorithm>
#include <fl/filesystem/path.hpp>
#include <search_path_utilities/lookup.hpp>

namespace map_path {

namespace {

using path_management::PathEntryType;
using path_management::detail::SearchTarget;
using Quorvex::PathEnvironment::FolderEntry;

// The texts between the separators.
std::vector<std::u16string> NamesIn(const std::u16string& text) {
  std::vector<std::u16string> names;
  for (std::size_t begin = text.find_first_not_of(u'/'); begin != std::u16string::npos;) {
    const std::size_t end = std::min(text.find(u'/', begin), text.size());
    names.push_back(text.substr(begin, end - begin));
    begin = text.find_first_not_of(u'/', end);
  }
  return names;
}

AbsoluteIRI LocationOf(const std::u16string& folder) {
  AbsoluteIRI location(u"map:///");
  for (const std::u16string& name : NamesIn(folder)) location = location.getChild(name);
  return location;
}

FolderEntryPtr MakeEntry(const std::u16string& folder, PathEntryType kind, const FolderMap& contents) {
  FolderEntry::Contents made = {LocationOf(folder), LocationOf(folder), kind, true, {}, {}, {}, {}};
  if (const auto found = contents.find(folder); found != contents.end()) made.files = found->second;

  const std::u16string prefix = folder + u'/';
  for (auto below = contents.lower_bound(prefix); below != contents.end() && below->first.starts_with(prefix);
       ++below) {
    const std::u16string name = below->first.substr(prefix.size());
    const PathEntryType kindBelow = path_management::GetPathEntryTypeFromBaseName(name);
    if (kindBelow == PathEntryType::Main || name.find(u'/') != std::u16string::npos) continue;

    FolderEntryPtr entry = MakeEntry(below->first, kindBelow, contents);
    if (kindBelow == PathEntryType::Class) {
      made.subfolders.classes.push_back(std::move(entry));
    } else if (kindBelow == PathEntryType::Package) {
      made.subfolders.packages.push_back(std::move(entry));
    } else if (kindBelow == PathEntryType::Private) {
      made.subfolders.privateEntry = std::move(entry);
    } else {
      made.subfolders.resources = std::move(entry);
    }
  }
  return FolderEntry::Create(std::move(made));
}

bool AreSame(const FolderEntry& entry, const std::u16string& wanted, const std::u16string& text,
             FilenameMatchingPolicy policy) {
  return (*entry.GetFilenameComparator(policy))(wanted, text);
}

// Whether `folders`, names of folders or a whole path, name the folder of `entry`.
bool IsNamedBy(const std::u16string& folders, const FolderEntryPtr& entry, FilenameMatchingPolicy policy) {
  if (folders.starts_with(u'/')) {
    return AreSame(*entry, fl::filesystem::detail::make_native_form(folders, true), entry->GetLocation().getPath(),
                   policy);
  }
  const std::vector<std::u16string> names = NamesIn(folders);
  return path_management::DoesPartialPathnameMatchPathEntryIRI(names, entry, policy);
}

}  // namespace

MapPath::MapPath(const std::vector<std::u16string>& folders, const FolderMap& contents) {
  std::vector<EntryPtr> mainEntries;
  for (const std::u16string& folder : folders) {
    const FolderEntryPtr entry = MakeEntry(folder, PathEntryType::Main, contents);
    Add(entry, nullptr, mainEntries.size());
    mainEntries.push_back(entry);
  }
  mainEntries_ = std::make_shared<const std::vector<EntryPtr>>(std::move(mainEntries));
}

void MapPath::Add(const FolderEntryPtr& entry, const FolderEntryPtr& parent, std::size_t main) {
  places_.push_back({entry, parent, main});
  for (const FolderEntryPtr& child : entry->GetChildren()) Add(child, entry, main);
}

const MapPath::Place* MapPath::Find(const path_management::IPathEntry& entry) const {
  const auto place = std::find_if(places_.begin(), places_.end(),
                                  [&](const Place& candidate) { return candidate.entry.get() == &entry; });
  return place == places_.end() ? nullptr : &*place;
}

std::vector<EntryPtr> MapPath::EntriesWhere(const std::function<bool(const Place&)>& isWanted) const {
  std::vector<EntryPtr> entries;
  for (const Place& place : places_) {
    if (isWanted(place)) entries.push_back(place.entry);
  }
  return entries;
}

EntryPtr MapPath::FirstMainThenMethod(const std::function<bool(const Place&)>& isWanted) const {
  std::vector<EntryPtr> entries = EntriesWhere([&](const Place& place) { return !place.parent && isWanted(place); });
  if (entries.empty()) entries = EntriesWhere(isWanted);
  return entries.empty() ? nullptr : entries.front();
}

std::shared_ptr<const std::vector<EntryPtr>> MapPath::GetMainEntries() const { return mainEntries_; }

std::vector<EntryPtr> MapPath::GetMethodEntries() const {
  return EntriesWhere([](const Place& place) { return place.parent != nullptr; });
}

std::vector<EntryPtr> MapPath::GetMethodEntriesByName(SearchScope scope, const std::u16string& name,
                                                      FilenameMatchingPolicy policy) const {
  return EntriesWhere([&](const Place& place) {
    return place.parent && place.entry->GetEntryType() == PathEntryType::Class && !name.empty() &&
           scope.Contains(place.parent->GetEntryType()) &&
           AreSame(*place.entry, name, place.entry->GetLocation().getName().substr(1), policy);
  });
}

std::vector<EntryPtr> MapPath::GetPartiallyMatchingEntries(SearchScope scope, const std::u16string& partialPathname,
                                                           FilenameMatchingPolicy policy) const {
  return EntriesWhere([&](const Place& place) {
    return scope.Contains(place.entry->GetEntryType()) && IsNamedBy(partialPathname, place.entry, policy);
  });
}

EntryPtr MapPath::GetMainEntryForEntry(const path_management::IPathEntry& entry) const {
  const Place* const place = Find(entry);
  return place == nullptr ? nullptr : (*mainEntries_)[place->main];
}

EntryPtr MapPath::GetParentEntryForEntry(const path_management::IPathEntry& entry) const {
  const Place* const place = Find(entry);
  return place == nullptr ? nullptr : place->parent;
}

EntryPtr MapPath::GetPathEntryFromAbsoluteIRI(const AbsoluteIRI& location, FilenameMatchingPolicy policy) const {
  const auto isThere = [&](const Place& place) { return place.entry->GetLocation() == location; };
  if (EntryPtr exact = FirstMainThenMethod(isThere)) return exact;
  return FirstMainThenMethod([&](const Place& place) {
    return AreSame(*place.entry, location.toString(), place.entry->GetLocation().toString(), policy);
  });
}

EntryPtr MapPath::GetPathEntryFromAbsoluteIRI(const CanonicalAbsoluteIRI& location) const {
  return GetPathEntryFromAbsoluteIRI(location.getAbsoluteIRI(), FilenameMatchingPolicy::CaseSensitive);
}

boost::optional<FoundItem> MapPath::FindFirstInScope(SearchScope scope, const SearchTarget& target,
                                                     FilenameMatchingPolicy policy) const {
  const std::vector<FoundItem> found = FindAllInScope(scope, target, policy);
  if (found.empty()) return boost::none;
  return found.front();
}

std::vector<FoundItem> MapPath::FindAllInScope(SearchScope scope, const SearchTarget& target,
                                               FilenameMatchingPolicy policy) const {
  const std::u16string& name = target.GetBaseName();
  const std::size_t cut = name.rfind(u'/') + 1;  // npos + 1 is 0
  const std::u16string folders = name.substr(0, cut);
  const std::u16string plainName = name.substr(cut);
  const SearchTarget plain(plainName, target.GetExtensions());

  std::vector<FoundItem> found;
  for (const Place& place : places_) {
    if (!scope.Contains(place.entry->GetEntryType())) continue;
    if (!folders.empty() && !IsNamedBy(folders, place.entry, policy)) continue;
    for (const auto& item : place.entry->FindAll(plain, policy)) found.emplace_back(item, place.entry);
  }
  return found;
}

bool MapPath::ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  return std::any_of(places_.begin(), places_.end(), [&](const Place& place) {
    return scope.Contains(place.entry->GetEntryType()) && callback(place.entry);
  });
}

bool MapPath::ConcurrentForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  return ForEachEntry(scope, callback);  // one thread is a number of threads, too
}

bool MapPath::FirstEntryIsBeforeSecondOnPath(const path_management::IPathEntry& first,
                                             const path_management::IPathEntry& second) const {
  const Place* const placeOfFirst = Find(first);
  const Place* const placeOfSecond = Find(second);
  if (placeOfFirst == nullptr) return false;
  return placeOfSecond == nullptr || placeOfFirst->main < placeOfSecond->main;
}

bool MapPath::IsEntryOnPath(const path_management::IPathEntry& entry) const { return Find(entry) != nullptr; }

}  // namespace map_path
