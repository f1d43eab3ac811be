// The underlying path is asked, and what is masked is taken out of its answer.

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

PathPtr NotNull(PathPtr path) {
  if (!path) throw std::invalid_argument("the path of a masked path is null");
  return path;
}

std::vector<EntryPtr> WithoutNull(std::vector<EntryPtr> entries) {
  const auto null = std::find(entries.begin(), entries.end(), nullptr);
  if (null == entries.end()) return entries;
  throw std::invalid_argument("masked entry " + std::to_string(null - entries.begin()) + " is null");
}

const IPathEntry& EntryOf(const EntryPtr& entry) { return *entry; }
const IPathEntry& EntryOf(const FoundItem& found) { return *found.GetPathEntry(); }

// Where, in a list of entries, or of items by their entries, that stands in the order of `path`, those at the position
// of `entry` begin and end.
template <class List>
class Stretch {
 public:
  Stretch(const IPath& path, const IPathEntry& entry) : path_(path), entry_(entry) {}

  [[nodiscard]] auto Begin(const List& list) const {
    return std::partition_point(list.begin(), list.end(), [this](const auto& element) {
      return path_.FirstEntryIsBeforeSecondOnPath(EntryOf(element), entry_);
    });
  }
  [[nodiscard]] auto End(typename List::const_iterator from, const List& list) const {
    return std::partition_point(from, list.end(), [this](const auto& element) {
      return !path_.FirstEntryIsBeforeSecondOnPath(entry_, EntryOf(element));
    });
  }

 private:
  const IPath& path_;
  const IPathEntry& entry_;
};

template <class List>
List WithoutPositionsOf(const std::vector<EntryPtr>& masked, const IPath& path, List list) {
  for (const EntryPtr& entry : masked) {
    const Stretch<List> stretch(path, *entry);
    const auto begin = stretch.Begin(list);
    list.erase(begin, stretch.End(begin, list));
  }
  return list;
}

}  // namespace

MultiMaskedPath::MultiMaskedPath(std::shared_ptr<const IPath> path,
                                 std::vector<std::shared_ptr<const IPathEntry>> maskedEntries)
    : UnderlyingPath(NotNull(std::move(path))), MaskedEntries(WithoutNull(std::move(maskedEntries))) {
  for (const EntryPtr& entry : MaskedEntries) MaskedEntrySet.insert(entry.get());
}

MultiMaskedPath::~MultiMaskedPath() = default;

bool MultiMaskedPath::IsMasked(const IPathEntry& entry) const {
  if (!UnderlyingPath->IsEntryOnPath(entry)) return false;
  return MaskedEntrySet.contains(UnderlyingPath->GetMainEntryForEntry(entry).get());
}

std::vector<EntryPtr> MultiMaskedPath::RemoveMaskedEntries(std::vector<EntryPtr> entries) const {
  return WithoutPositionsOf(MaskedEntries, *UnderlyingPath, std::move(entries));
}

std::shared_ptr<const std::vector<EntryPtr>> MultiMaskedPath::GetMainEntries() const {
  return detail::BuildOnce(MainEntriesOnce, MainEntriesCache, [this] {
    const auto all = UnderlyingPath->GetMainEntries();
    std::vector<EntryPtr> visible;
    // Unsigned on purpose: with more masks than entries this is a length error.
    visible.reserve(all->size() - MaskedEntries.size());
    std::copy_if(all->begin(), all->end(), std::back_inserter(visible),
                 [this](const EntryPtr& entry) { return !MaskedEntrySet.contains(entry.get()); });
    return visible;
  });
}

std::vector<EntryPtr> MultiMaskedPath::GetMethodEntries() const {
  return RemoveMaskedEntries(UnderlyingPath->GetMethodEntries());
}

std::vector<EntryPtr> MultiMaskedPath::GetMethodEntriesByName(SearchScope scope, const std::u16string& name,
                                                              FilenameMatchingPolicy policy) const {
  return RemoveMaskedEntries(UnderlyingPath->GetMethodEntriesByName(scope, name, policy));
}

std::vector<EntryPtr> MultiMaskedPath::GetPartiallyMatchingEntries(SearchScope scope,
                                                                   const std::u16string& partialPathname,
                                                                   FilenameMatchingPolicy policy) const {
  return RemoveMaskedEntries(UnderlyingPath->GetPartiallyMatchingEntries(scope, partialPathname, policy));
}

EntryPtr MultiMaskedPath::GetMainEntryForEntry(const IPathEntry& entry) const {
  return UnderlyingPath->GetMainEntryForEntry(entry);
}

EntryPtr MultiMaskedPath::GetParentEntryForEntry(const IPathEntry& entry) const {
  return UnderlyingPath->GetParentEntryForEntry(entry);
}

EntryPtr MultiMaskedPath::GetPathEntryFromAbsoluteIRI(const AbsoluteIRI& location,
                                                      FilenameMatchingPolicy policy) const {
  EntryPtr entry = UnderlyingPath->GetPathEntryFromAbsoluteIRI(location, policy);
  return entry && IsMasked(*entry) ? nullptr : entry;
}

EntryPtr MultiMaskedPath::GetPathEntryFromAbsoluteIRI(const CanonicalAbsoluteIRI& location) const {
  EntryPtr entry = UnderlyingPath->GetPathEntryFromAbsoluteIRI(location);
  return entry && IsMasked(*entry) ? nullptr : entry;
}

boost::optional<FoundItem> MultiMaskedPath::FindFirstInScope(SearchScope scope, const detail::SearchTarget& target,
                                                             FilenameMatchingPolicy policy) const {
  auto first = UnderlyingPath->FindFirstInScope(scope, target, policy);
  if (!first || !IsMasked(*first->GetPathEntry())) return first;

  // Deliberately in the order in which the masks were given, and only the first item after each.
  const std::vector<FoundItem> all = UnderlyingPath->FindAllInScope(scope, target, policy);
  for (const EntryPtr& masked : MaskedEntries) {
    const auto next = Stretch<std::vector<FoundItem>>(*UnderlyingPath, *masked).End(all.begin(), all);
    if (next != all.end() && !IsMasked(*next->GetPathEntry())) return *next;
  }
  return boost::none;
}

std::vector<FoundItem> MultiMaskedPath::FindAllInScope(SearchScope scope, const detail::SearchTarget& target,
                                                       FilenameMatchingPolicy policy) const {
  return WithoutPositionsOf(MaskedEntries, *UnderlyingPath, UnderlyingPath->FindAllInScope(scope, target, policy));
}

bool MultiMaskedPath::ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  return UnderlyingPath->ForEachEntry(scope,
                                      [&](const EntryPtr& entry) { return !IsMasked(*entry) && callback(entry); });
}

bool MultiMaskedPath::ConcurrentForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  return UnderlyingPath->ConcurrentForEachEntry(
      scope, [&](const EntryPtr& entry) { return !IsMasked(*entry) && callback(entry); });
}

bool MultiMaskedPath::FirstEntryIsBeforeSecondOnPath(const IPathEntry& first, const IPathEntry& second) const {
  return UnderlyingPath->FirstEntryIsBeforeSecondOnPath(first, second);
}

bool MultiMaskedPath::IsEntryOnPath(const IPathEntry& entry) const {
  return !IsMasked(entry) && UnderlyingPath->IsEntryOnPath(entry);
}

}  // namespace Quorvex::PathManagement
