// What is listed comes from the components in order, and each location, or each file, is kept where it appears first.

#include <atomic>
#include <boost/container_hash/hash.hpp>
#include <boost/unordered_set.hpp>
#include <foundation/log/diagnostic_logger.hpp>
#include <search_path_utilities/composite_paths.hpp>
#include <unordered_set>
#include <utility>

#include "build_once.hpp"

namespace Quorvex::PathManagement {

namespace {

using EntryPtr = std::shared_ptr<const IPathEntry>;
using PathPtr = std::shared_ptr<const IPath>;
using foundation::storage::vfs::AbsoluteIRI;

// There for whoever maintains the system to look up; what is dropped is not reported.
const foundation::log::basic_diagnostic_logger<char> logger("searchpath::utilities::deduplicatedpath");

class SeenLocations {
 public:
  bool IsNew(const EntryPtr& entry) { return locations_.insert(entry->GetAbsoluteIRI()).second; }

 private:
  std::unordered_set<AbsoluteIRI> locations_;
};

class SeenFiles {
 public:
  bool IsNew(const FoundItem& found) {
    const auto item = found.GetPathItem();
    return files_.emplace(item->folderIRI, item->baseName + item->extension).second;
  }

 private:
  boost::unordered_set<std::pair<AbsoluteIRI, std::u16string>> files_;  // folder and full file name
};

// Of the lists that `listOf` gives for each component, one after another, what `Seen` holds to be new.
template <class Seen, class T, class ListOf>
std::vector<T> FirstAppearances(const std::vector<PathPtr>& components, const ListOf& listOf) {
  Seen seen;
  std::vector<T> firsts;
  for (const PathPtr& component : components) {
    for (const T& element : listOf(*component)) {
      if (seen.IsNew(element)) firsts.push_back(element);
    }
  }
  firsts.shrink_to_fit();
  return firsts;
}

template <class ListOf>
std::vector<EntryPtr> FirstEntries(const std::vector<PathPtr>& components, const ListOf& listOf) {
  return FirstAppearances<SeenLocations, EntryPtr>(components, listOf);
}

// A shared list as a range of its own.
class SharedList {
 public:
  explicit SharedList(std::shared_ptr<const std::vector<EntryPtr>> entries) : entries_(std::move(entries)) {}
  [[nodiscard]] auto begin() const { return entries_->begin(); }
  [[nodiscard]] auto end() const { return entries_->end(); }

 private:
  std::shared_ptr<const std::vector<EntryPtr>> entries_;
};

}  // namespace

DeduplicatedPath::DeduplicatedPath(std::vector<std::shared_ptr<const IPath>>&& paths)
    : ConcatenatedPath(std::move(paths)) {}

DeduplicatedPath::~DeduplicatedPath() = default;

std::shared_ptr<const std::vector<EntryPtr>> DeduplicatedPath::GetMainEntries() const {
  return detail::BuildOnce(MainEntriesOnce, MainEntriesCache, [this] {
    return FirstEntries(ComponentPaths, [](const IPath& component) { return SharedList(component.GetMainEntries()); });
  });
}

std::vector<EntryPtr> DeduplicatedPath::GetMethodEntries() const {
  return FirstEntries(ComponentPaths, [](const IPath& component) { return component.GetMethodEntries(); });
}

std::vector<EntryPtr> DeduplicatedPath::GetMethodEntriesByName(SearchScope scope, const std::u16string& name,
                                                               FilenameMatchingPolicy policy) const {
  return FirstEntries(ComponentPaths,
                      [&](const IPath& component) { return component.GetMethodEntriesByName(scope, name, policy); });
}

std::vector<EntryPtr> DeduplicatedPath::GetPartiallyMatchingEntries(SearchScope scope,
                                                                    const std::u16string& partialPathname,
                                                                    FilenameMatchingPolicy policy) const {
  return FirstEntries(ComponentPaths, [&](const IPath& component) {
    return component.GetPartiallyMatchingEntries(scope, partialPathname, policy);
  });
}

std::vector<FoundItem> DeduplicatedPath::FindAllInScope(SearchScope scope, const detail::SearchTarget& target,
                                                        FilenameMatchingPolicy policy) const {
  return FirstAppearances<SeenFiles, FoundItem>(
      ComponentPaths, [&](const IPath& component) { return component.FindAllInScope(scope, target, policy); });
}

bool DeduplicatedPath::ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  // Not through the once region: a walk does not wait for a list that another thread is building.
  const auto mainEntries = std::atomic_load(&MainEntriesCache);
  if (mainEntries && !mainEntries->empty()) {
    for (const EntryPtr& entry : *mainEntries) {
      if (entry->ForEachEntryInScope(scope, callback)) return true;
    }
    return false;
  }

  SeenLocations seen;
  const PathEntryCallback visitNew = [&](const EntryPtr& entry) { return seen.IsNew(entry) && callback(entry); };
  for (const PathPtr& component : ComponentPaths) {
    if (component->ForEachEntry(scope, visitNew)) return true;
  }
  return false;
}

bool DeduplicatedPath::ConcurrentForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  return ForEachEntry(scope, callback);
}

}  // namespace Quorvex::PathManagement
