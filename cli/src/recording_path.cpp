#include "recording_path.hpp"

#include <algorithm>
#include <utility>

#include "all_kinds.hpp"
#include "recording_entry.hpp"
#include "searched_entries.hpp"

namespace vornixpath {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::CanonicalAbsoluteIRI;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::FoundItem;
using Quorvex::PathManagement::IPathEntry;
using Quorvex::PathManagement::PathEntryCallback;
using Quorvex::PathManagement::PathEntryType;
using Quorvex::PathManagement::SearchScope;
using Quorvex::PathManagement::detail::SearchTarget;

namespace {

bool HoldsOnlyPlainFolders(SearchScope scope) {
  return std::all_of(scope.begin(), scope.end(), [](PathEntryType kind) { return kind == PathEntryType::Main; });
}

// The path's own pointer to `entry`; null for a stranger.
EntryPtr PointerTo(const IPathEntry& entry, const Quorvex::PathManagement::IPath& path) {
  EntryPtr pointer;
  path.ForEachEntry(AllKinds(), [&](const EntryPtr& candidate) {
    if (candidate.get() == &entry) pointer = candidate;
    return pointer != nullptr;
  });
  return pointer;
}

}  // namespace

RecordingPath::RecordingPath(const Quorvex::PathManagement::IPath& path)
    : path_(path), steps_(std::make_shared<LookupSteps>()) {}

std::shared_ptr<const std::vector<EntryPtr>> RecordingPath::GetMainEntries() const { return path_.GetMainEntries(); }
std::vector<EntryPtr> RecordingPath::GetMethodEntries() const { return path_.GetMethodEntries(); }

std::vector<EntryPtr> RecordingPath::GetMethodEntriesByName(SearchScope scope, const std::u16string& name,
                                                            FilenameMatchingPolicy policy) const {
  std::vector<EntryPtr> entries = path_.GetMethodEntriesByName(scope, name, policy);
  steps_->push_back(AskedForClassFolders{name, entries});
  for (EntryPtr& entry : entries) entry = RecordingEntry::Around(std::move(entry), steps_);
  return entries;
}

std::vector<EntryPtr> RecordingPath::GetPartiallyMatchingEntries(SearchScope scope,
                                                                 const std::u16string& partialPathname,
                                                                 FilenameMatchingPolicy policy) const {
  return path_.GetPartiallyMatchingEntries(scope, partialPathname, policy);
}

EntryPtr RecordingPath::GetMainEntryForEntry(const IPathEntry& entry) const {
  return path_.GetMainEntryForEntry(OriginalOf(entry));
}

EntryPtr RecordingPath::GetParentEntryForEntry(const IPathEntry& entry) const {
  return path_.GetParentEntryForEntry(OriginalOf(entry));
}

EntryPtr RecordingPath::GetPathEntryFromAbsoluteIRI(const AbsoluteIRI& location, FilenameMatchingPolicy policy) const {
  EntryPtr answer = path_.GetPathEntryFromAbsoluteIRI(location, policy);
  steps_->push_back(AskedForEntry{location, answer});
  return RecordingEntry::Around(std::move(answer), steps_);
}

EntryPtr RecordingPath::GetPathEntryFromAbsoluteIRI(const CanonicalAbsoluteIRI& location) const {
  return path_.GetPathEntryFromAbsoluteIRI(location);
}

boost::optional<FoundItem> RecordingPath::FindFirstInScope(SearchScope scope, const SearchTarget& target,
                                                           FilenameMatchingPolicy policy) const {
  auto answer = path_.FindFirstInScope(scope, target, policy);
  steps_->push_back(
      AskedInScope{HoldsOnlyPlainFolders(scope), EntriesSearchedInScope(path_, scope, target, policy), answer});
  return answer;
}

std::vector<FoundItem> RecordingPath::FindAllInScope(SearchScope scope, const SearchTarget& target,
                                                     FilenameMatchingPolicy policy) const {
  return path_.FindAllInScope(scope, target, policy);
}

bool RecordingPath::ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  return path_.ForEachEntry(scope, callback);
}

bool RecordingPath::ConcurrentForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  return path_.ConcurrentForEachEntry(scope, callback);
}

bool RecordingPath::FirstEntryIsBeforeSecondOnPath(const IPathEntry& first, const IPathEntry& second) const {
  const IPathEntry& originalOfFirst = OriginalOf(first);
  const IPathEntry& originalOfSecond = OriginalOf(second);
  const bool answer = path_.FirstEntryIsBeforeSecondOnPath(originalOfFirst, originalOfSecond);
  EntryPtr firstOnPath = PointerTo(originalOfFirst, path_);
  EntryPtr secondOnPath = PointerTo(originalOfSecond, path_);
  if (firstOnPath && secondOnPath) {
    steps_->push_back(AskedForOrder{std::move(firstOnPath), std::move(secondOnPath), answer});
  }
  return answer;
}

bool RecordingPath::IsEntryOnPath(const IPathEntry& entry) const { return path_.IsEntryOnPath(OriginalOf(entry)); }

}  // namespace vornixpath
