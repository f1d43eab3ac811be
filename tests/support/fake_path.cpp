#include <algorithm>
#include <fl/filesystem/path.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <oracle/partial_pathname.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <stdexcept>
#include <support/fake_path.hpp>
#include <utility>

namespace Quorvex::PathManagement::support {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::CanonicalAbsoluteIRI;

// Folder names only. A text that begins with a separator is the folder's whole path.
bool IsNamedBy(const std::u16string& folders, const FakeEntry& entry, FilenameMatchingPolicy policy) {
  if (folders.starts_with(u'/')) {
    return entry.AreSame(fl::filesystem::detail::make_native_form(folders, true), entry.GetAbsoluteIRI().getPath(),
                         policy);
  }
  return oracle::DoesPartialPathnameMatch(
      oracle::ComponentsOf(folders), oracle::ComponentsOf(GetStringFromIRI(entry.GetAbsoluteIRI())),
      [&](const std::u16string& wanted, const std::u16string& name) { return entry.AreSame(wanted, name, policy); });
}

}  // namespace

FakePath::FakePath(std::string name, const std::vector<std::shared_ptr<const FakeEntry>>& mainEntries,
                   std::shared_ptr<CallLog> log)
    : name_(std::move(name)), log_(std::move(log)) {
  for (std::size_t position = 0; position < mainEntries.size(); ++position) {
    Add(mainEntries[position], nullptr, mainEntries[position], position);
  }
}

void FakePath::Add(const std::shared_ptr<const FakeEntry>& entry, const EntryPtr& parent, const EntryPtr& main,
                   std::size_t position) {
  places_.push_back({entry, parent, main, position});
  for (const auto& child : entry->GetChildren()) Add(child, entry, main, position);
}

void FakePath::Note(Call call) const {
  if (!log_) return;
  call.operation = name_ + '.' + call.operation;
  log_->Note(std::move(call));
}

const FakePath::Place* FakePath::FindPlace(const IPathEntry& entry) const {
  const auto place = std::find_if(places_.begin(), places_.end(),
                                  [&](const Place& candidate) { return candidate.entry.get() == &entry; });
  return place == places_.end() ? nullptr : &*place;
}

template <class IsWanted>
EntryPtr FakePath::FirstMainThenMethod(const IsWanted& isWanted) const {
  for (const bool wantsMain : {true, false}) {
    for (const Place& place : places_) {
      if ((place.parent == nullptr) == wantsMain && isWanted(*place.entry)) return place.entry;
    }
  }
  return nullptr;
}

std::shared_ptr<const std::vector<EntryPtr>> FakePath::GetMainEntries() const {
  Note({"GetMainEntries"});
  auto entries = std::make_shared<std::vector<EntryPtr>>();
  for (const Place& place : places_) {
    if (place.parent == nullptr) entries->push_back(place.entry);
  }
  return entries;
}

std::vector<EntryPtr> FakePath::GetMethodEntries() const {
  Note({"GetMethodEntries"});
  std::vector<EntryPtr> entries;
  for (const Place& place : places_) {
    if (place.parent != nullptr) entries.push_back(place.entry);
  }
  return entries;
}

std::vector<EntryPtr> FakePath::GetMethodEntriesByName(SearchScope scope, const std::u16string& name,
                                                       FilenameMatchingPolicy policy) const {
  Note({.operation = "GetMethodEntriesByName", .scope = scope, .policy = policy, .text = name});
  std::vector<EntryPtr> entries;
  for (const Place& place : places_) {
    const bool isClass = place.entry->GetEntryType() == PathEntryType::Class && place.parent != nullptr;
    if (!isClass || name.empty() || !scope.Contains(place.parent->GetEntryType())) continue;

    const std::u16string className = place.entry->GetAbsoluteIRI().getName().substr(1);
    if (place.entry->AreSame(name, className, policy)) entries.push_back(place.entry);
  }
  return entries;
}

std::vector<EntryPtr> FakePath::GetPartiallyMatchingEntries(SearchScope scope, const std::u16string& partialPathname,
                                                            FilenameMatchingPolicy policy) const {
  Note({.operation = "GetPartiallyMatchingEntries", .scope = scope, .policy = policy, .text = partialPathname});
  std::vector<EntryPtr> entries;
  for (const Place& place : places_) {
    if (!scope.Contains(place.entry->GetEntryType())) continue;
    if (IsNamedBy(partialPathname, *place.entry, policy)) entries.push_back(place.entry);
  }
  return entries;
}

EntryPtr FakePath::GetMainEntryForEntry(const IPathEntry& entry) const {
  Note({.operation = "GetMainEntryForEntry", .arguments = {&entry}});
  const Place* const place = FindPlace(entry);
  return place == nullptr ? nullptr : place->main;
}

EntryPtr FakePath::GetParentEntryForEntry(const IPathEntry& entry) const {
  Note({.operation = "GetParentEntryForEntry", .arguments = {&entry}});
  const Place* const place = FindPlace(entry);
  return place == nullptr ? nullptr : place->parent;
}

EntryPtr FakePath::GetPathEntryFromAbsoluteIRI(const AbsoluteIRI& location, FilenameMatchingPolicy policy) const {
  Note({.operation = "GetPathEntryFromAbsoluteIRI(policy)", .policy = policy, .location = location});
  const auto isThere = [&](const FakeEntry& entry) { return entry.GetAbsoluteIRI() == location; };
  if (EntryPtr exact = FirstMainThenMethod(isThere)) return exact;

  return FirstMainThenMethod([&](const FakeEntry& entry) {
    return entry.AreSame(location.toString(), entry.GetAbsoluteIRI().toString(), policy);
  });
}

EntryPtr FakePath::GetPathEntryFromAbsoluteIRI(const CanonicalAbsoluteIRI& location) const {
  Note({.operation = "GetPathEntryFromAbsoluteIRI(canonical)",
        .text = location.getShownText(),
        .location = location.getAbsoluteIRI()});
  return FirstMainThenMethod(
      [&](const FakeEntry& entry) { return entry.GetAbsoluteIRI() == location.getAbsoluteIRI(); });
}

std::vector<FoundItem> FakePath::Walk(SearchScope scope, const detail::SearchTarget& target,
                                      FilenameMatchingPolicy policy) const {
  const std::u16string& name = target.GetBaseName();
  const std::size_t cut = name.rfind(u'/') + 1;  // 0 when there is none
  const std::u16string folders = name.substr(0, cut);
  const std::u16string plainName = name.substr(cut);
  const detail::SearchTarget plain(plainName, target.GetExtensions());

  std::vector<FoundItem> found;
  for (const Place& place : places_) {
    if (!scope.Contains(place.entry->GetEntryType())) continue;
    if (cut != 0 && !IsNamedBy(folders, *place.entry, policy)) continue;
    for (const auto& item : place.entry->FindAll(plain, policy)) found.emplace_back(item, place.entry);
  }
  return found;
}

boost::optional<FoundItem> FakePath::FindFirstInScope(SearchScope scope, const detail::SearchTarget& target,
                                                      FilenameMatchingPolicy policy) const {
  Note({.operation = "FindFirstInScope", .scope = scope, .policy = policy, .target = &target});
  const auto found = Walk(scope, target, policy);
  if (found.empty()) return boost::none;
  return found.front();
}

std::vector<FoundItem> FakePath::FindAllInScope(SearchScope scope, const detail::SearchTarget& target,
                                                FilenameMatchingPolicy policy) const {
  Note({.operation = "FindAllInScope", .scope = scope, .policy = policy, .target = &target});
  return Walk(scope, target, policy);
}

bool FakePath::ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  Note({.operation = "ForEachEntry", .scope = scope, .arguments = {&callback}});
  return std::any_of(places_.begin(), places_.end(), [&](const Place& place) {
    return scope.Contains(place.entry->GetEntryType()) && callback(place.entry);
  });
}

bool FakePath::ConcurrentForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  Note({.operation = "ConcurrentForEachEntry", .scope = scope, .arguments = {&callback}});
  return std::any_of(places_.begin(), places_.end(), [&](const Place& place) {
    return scope.Contains(place.entry->GetEntryType()) && callback(place.entry);
  });
}

bool FakePath::FirstEntryIsBeforeSecondOnPath(const IPathEntry& first, const IPathEntry& second) const {
  Note({.operation = "FirstEntryIsBeforeSecondOnPath", .arguments = {&first, &second}});
  const Place* const placeOfFirst = FindPlace(first);
  const Place* const placeOfSecond = FindPlace(second);
  if (placeOfFirst == nullptr) return false;
  return placeOfSecond == nullptr || placeOfFirst->position < placeOfSecond->position;
}

bool FakePath::IsEntryOnPath(const IPathEntry& entry) const {
  Note({.operation = "IsEntryOnPath", .arguments = {&entry}});
  return FindPlace(entry) != nullptr;
}

std::shared_ptr<const FakeEntry> FakePath::EntryAt(std::string_view path) const {
  const std::u16string wanted = fl::filesystem::from_bytes(path);
  for (const Place& place : places_) {
    if (place.entry->GetAbsoluteIRI().getPath() == wanted) return place.entry;
  }
  throw std::out_of_range("no entry at " + std::string(path));
}

APath& APath::With(const Folder& folder) {
  const auto location = foundation::storage::vfs::toAbsoluteIRI(scheme_, fl::filesystem::path(folder.GetName()));
  entries_.push_back(FakeEntry::Create(location, PathEntryType::Main, folder, behaviour_));
  return *this;
}

APath& APath::With(const std::shared_ptr<const FakeEntry>& entry) {
  entries_.push_back(entry);
  return *this;
}

APath& APath::Under(const std::u16string& scheme) {
  scheme_ = scheme;
  return *this;
}

APath& APath::IgnoringCase() {
  behaviour_.ignoresCaseNatively = true;
  return *this;
}

APath& APath::Comparing(std::shared_ptr<const FilenameComparator> comparator) {
  behaviour_.comparator = std::move(comparator);
  return *this;
}

APath& APath::Recording(std::string name, const std::shared_ptr<CallLog>& log) {
  name_ = std::move(name);
  behaviour_.log = log;
  return *this;
}

std::shared_ptr<const FakePath> APath::Build() const {
  return std::make_shared<const FakePath>(name_, entries_, behaviour_.log);
}

}  // namespace Quorvex::PathManagement::support
