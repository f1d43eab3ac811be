// Every operation asks the components in order. Lists are concatenated, first answers win, and an entry belongs to the
// first component that holds it.

#include <algorithm>
#include <search_path_utilities/composite_paths.hpp>
#include <stdexcept>
#include <utility>

#include "build_once.hpp"

namespace Quorvex::PathManagement {

namespace {

using EntryPtr = std::shared_ptr<const IPathEntry>;
using PathPtr = std::shared_ptr<const IPath>;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::CanonicalAbsoluteIRI;

std::vector<PathPtr>&& WithoutNull(std::vector<PathPtr>&& paths) {
  const auto null = std::find(paths.begin(), paths.end(), nullptr);
  if (null == paths.end()) return std::move(paths);
  throw std::invalid_argument("component " + std::to_string(null - paths.begin()) + " of a concatenated path is null");
}

std::vector<PathPtr> PairOf(const PathPtr& first, const PathPtr& second) {
  std::vector<PathPtr> paths;
  paths.reserve(2);
  paths.push_back(first);
  paths.push_back(second);
  return paths;
}

// Room grows as the vector sees fit: to reserve what each of many parts takes would move all there is for each of them.
template <class T>
void Append(std::vector<T>& all, const std::vector<T>& part) {
  all.insert(all.end(), part.begin(), part.end());
}

// The lists that `listOf` gives for each component, one after another.
template <class T, class ListOf>
std::vector<T> ConcatenationOf(const std::vector<PathPtr>& components, const ListOf& listOf) {
  std::vector<T> all;
  for (const PathPtr& component : components) Append(all, listOf(*component));
  all.shrink_to_fit();
  return all;
}

// Null when no component holds the entry; what an operation then gives is undefined to callers, but it does not crash.
const IPath* FirstHolderOf(const IPathEntry& entry, const std::vector<PathPtr>& components) {
  for (const PathPtr& component : components) {
    if (component->IsEntryOnPath(entry)) return component.get();
  }
  return nullptr;
}

}  // namespace

ConcatenatedPath::ConcatenatedPath(std::vector<std::shared_ptr<const IPath>>&& paths)
    : ComponentPaths(WithoutNull(std::move(paths))) {}

ConcatenatedPath::ConcatenatedPath(const std::shared_ptr<const IPath>& first,
                                   const std::shared_ptr<const IPath>& second)
    : ConcatenatedPath(PairOf(first, second)) {}

ConcatenatedPath::~ConcatenatedPath() = default;

std::shared_ptr<const std::vector<EntryPtr>> ConcatenatedPath::GetMainEntries() const {
  return detail::BuildOnce(MainEntriesOnce, MainEntriesCache, [this] {
    std::vector<EntryPtr> all;
    for (const PathPtr& component : ComponentPaths) Append(all, *component->GetMainEntries());
    all.shrink_to_fit();
    return all;
  });
}

std::vector<EntryPtr> ConcatenatedPath::GetMethodEntries() const {
  return ConcatenationOf<EntryPtr>(ComponentPaths, [](const IPath& component) { return component.GetMethodEntries(); });
}

std::vector<EntryPtr> ConcatenatedPath::GetMethodEntriesByName(SearchScope scope, const std::u16string& name,
                                                               FilenameMatchingPolicy policy) const {
  return ConcatenationOf<EntryPtr>(
      ComponentPaths, [&](const IPath& component) { return component.GetMethodEntriesByName(scope, name, policy); });
}

std::vector<EntryPtr> ConcatenatedPath::GetPartiallyMatchingEntries(SearchScope scope,
                                                                    const std::u16string& partialPathname,
                                                                    FilenameMatchingPolicy policy) const {
  return ConcatenationOf<EntryPtr>(ComponentPaths, [&](const IPath& component) {
    return component.GetPartiallyMatchingEntries(scope, partialPathname, policy);
  });
}

EntryPtr ConcatenatedPath::GetMainEntryForEntry(const IPathEntry& entry) const {
  const IPath* const holder = FirstHolderOf(entry, ComponentPaths);
  return holder == nullptr ? nullptr : holder->GetMainEntryForEntry(entry);
}

EntryPtr ConcatenatedPath::GetParentEntryForEntry(const IPathEntry& entry) const {
  const IPath* const holder = FirstHolderOf(entry, ComponentPaths);
  return holder == nullptr ? nullptr : holder->GetParentEntryForEntry(entry);
}

EntryPtr ConcatenatedPath::GetPathEntryFromAbsoluteIRI(const AbsoluteIRI& location,
                                                       FilenameMatchingPolicy policy) const {
  // Deliberately ahead of the policy: an exact match in any component comes before a match by policy in an earlier one.
  if (EntryPtr exact = GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(location, u""))) return exact;

  for (const PathPtr& component : ComponentPaths) {
    if (EntryPtr entry = component->GetPathEntryFromAbsoluteIRI(location, policy)) return entry;
  }
  return nullptr;
}

EntryPtr ConcatenatedPath::GetPathEntryFromAbsoluteIRI(const CanonicalAbsoluteIRI& location) const {
  for (const PathPtr& component : ComponentPaths) {
    if (EntryPtr entry = component->GetPathEntryFromAbsoluteIRI(location)) return entry;
  }
  return nullptr;
}

boost::optional<FoundItem> ConcatenatedPath::FindFirstInScope(SearchScope scope, const detail::SearchTarget& target,
                                                              FilenameMatchingPolicy policy) const {
  for (const PathPtr& component : ComponentPaths) {
    if (auto found = component->FindFirstInScope(scope, target, policy)) return found;
  }
  return boost::none;
}

std::vector<FoundItem> ConcatenatedPath::FindAllInScope(SearchScope scope, const detail::SearchTarget& target,
                                                        FilenameMatchingPolicy policy) const {
  return ConcatenationOf<FoundItem>(
      ComponentPaths, [&](const IPath& component) { return component.FindAllInScope(scope, target, policy); });
}

bool ConcatenatedPath::ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  for (const PathPtr& component : ComponentPaths) {
    if (component->ForEachEntry(scope, callback)) return true;
  }
  return false;
}

bool ConcatenatedPath::ConcurrentForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  for (const PathPtr& component : ComponentPaths) {
    if (component->ConcurrentForEachEntry(scope, callback)) return true;
  }
  return false;
}

bool ConcatenatedPath::FirstEntryIsBeforeSecondOnPath(const IPathEntry& first, const IPathEntry& second) const {
  for (const PathPtr& component : ComponentPaths) {
    const bool holdsFirst = component->IsEntryOnPath(first);
    const bool holdsSecond = component->IsEntryOnPath(second);

    if (holdsFirst && holdsSecond) return component->FirstEntryIsBeforeSecondOnPath(first, second);
    if (holdsFirst != holdsSecond) return holdsFirst;
  }
  return false;
}

bool ConcatenatedPath::IsEntryOnPath(const IPathEntry& entry) const {
  return FirstHolderOf(entry, ComponentPaths) != nullptr;
}

}  // namespace Quorvex::PathManagement
