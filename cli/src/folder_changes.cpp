#include "folder_changes.hpp"

#include <algorithm>
#include <search_path_environment/folder_entry.hpp>
#include <unordered_map>
#include <unordered_set>

#include "all_kinds.hpp"
#include "location_text.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::FolderEntry;
using Quorvex::PathEnvironment::FolderPath;
using Quorvex::PathManagement::ComparisonFilter;
using Quorvex::PathManagement::IPathEntry;
using Quorvex::PathManagement::PathEntryType;
using Entries = std::vector<EntryPtr>;

/// Where entries stand among others, the first place counting.
class Ranks {
 public:
  explicit Ranks(const Entries& entries) {
    for (const EntryPtr& entry : entries) ranks_.emplace(entry.get(), ranks_.size());
  }

  [[nodiscard]] std::size_t Of(const EntryPtr& entry) const { return ranks_.at(entry.get()); }

 private:
  std::unordered_map<const IPathEntry*, std::size_t> ranks_;
};

// As far as they are compared, in path order.
Entries EntriesOf(const FolderPath& path, ComparisonFilter filter) {
  if (filter == ComparisonFilter::MainEntriesOnly) return *path.GetMainEntries();
  Entries entries;
  path.ForEachEntry(AllKinds(), [&entries](const EntryPtr& entry) {
    entries.push_back(entry);
    return false;
  });
  return entries;
}

void SortByPlace(std::vector<FolderChange>& changes, EntryPtr FolderChange::*entry, const Entries& places) {
  const Ranks ranks(places);
  std::sort(changes.begin(), changes.end(), [&](const FolderChange& left, const FolderChange& right) {
    return ranks.Of(left.*entry) < ranks.Of(right.*entry);
  });
}

// The main entries, and all that are compared.
struct Side {
  const Entries& mains;
  const Entries& all;
};

std::vector<FolderChange> ChangesFrom(const Side& before, const Side& after, ComparisonFilter filter) {
  // Backwards, from the new entries to the old ones: among longest common subsequences it prefers the one that lets
  // what stands further ahead move, and that is to be the new path, as when a folder was added again.
  Quorvex::PathManagement::PathEntryVectorDifferentiator backwards;
  backwards.Compare(after.mains, before.mains, filter);

  std::vector<FolderChange> standing;
  for (const EntryPtr& entry : *backwards.GetRemoved()) {
    standing.push_back({ChangeKind::Added, entry->GetAbsoluteIRI(), nullptr, entry});
  }
  for (const EntryPtr& entry : *backwards.GetReordered()) {
    standing.push_back({ChangeKind::Moved, entry->GetAbsoluteIRI(), entry, entry});
  }
  const auto formerly = backwards.GetRefreshedAfter();
  const auto now = backwards.GetRefreshedBefore();
  for (std::size_t i = 0; i < now->size(); ++i) {
    standing.push_back({ChangeKind::Refreshed, (*now)[i]->GetAbsoluteIRI(), (*formerly)[i], (*now)[i]});
  }
  std::vector<FolderChange> gone;
  for (const EntryPtr& entry : *backwards.GetAdded()) {
    gone.push_back({ChangeKind::Removed, entry->GetAbsoluteIRI(), entry, nullptr});
  }

  SortByPlace(standing, &FolderChange::after, after.all);
  SortByPlace(gone, &FolderChange::before, before.all);
  standing.insert(standing.end(), gone.begin(), gone.end());
  return standing;
}

/// Entries that say nothing but where they are: the same one for the same folder.
class BareEntries {
 public:
  // Each at its first place.
  Entries For(const std::vector<AbsoluteIRI>& folders) {
    Entries entries;
    std::unordered_set<AbsoluteIRI> placed;
    for (const AbsoluteIRI& folder : folders) {
      if (placed.insert(folder).second) entries.push_back(For(folder));
    }
    return entries;
  }

 private:
  const EntryPtr& For(const AbsoluteIRI& folder) {
    EntryPtr& entry = entries_[folder];
    if (!entry) entry = FolderEntry::Create({folder, folder, PathEntryType::Main, true, {}, {}, {}});
    return entry;
  }

  std::unordered_map<AbsoluteIRI, EntryPtr> entries_;
};

}  // namespace

std::vector<FolderChange> ChangesBetween(const FolderPath& before, const FolderPath& after, ComparisonFilter filter) {
  const auto oldMains = before.GetMainEntries();
  const auto newMains = after.GetMainEntries();
  const Entries oldEntries = EntriesOf(before, filter);
  const Entries newEntries = EntriesOf(after, filter);
  return ChangesFrom({*oldMains, oldEntries}, {*newMains, newEntries}, filter);
}

std::vector<FolderChange> ChangesBetween(const std::vector<AbsoluteIRI>& before,
                                         const std::vector<AbsoluteIRI>& after) {
  BareEntries entries;
  const Entries oldEntries = entries.For(before);
  const Entries newEntries = entries.For(after);
  return ChangesFrom({oldEntries, oldEntries}, {newEntries, newEntries}, ComparisonFilter::MainEntriesOnly);
}

std::string InWords(const FolderChange& change) {
  return std::string{MarkOf(change.kind), ' '} + ShownText(change.folder);
}

char MarkOf(ChangeKind kind) {
  switch (kind) {
    case ChangeKind::Added:
      return '+';
    case ChangeKind::Removed:
      return '-';
    case ChangeKind::Moved:
      return '~';
    case ChangeKind::Refreshed:
      return '*';
  }
  return '?';
}

const char* NameOf(ChangeKind kind) {
  switch (kind) {
    case ChangeKind::Added:
      return "added";
    case ChangeKind::Removed:
      return "removed";
    case ChangeKind::Moved:
      return "moved";
    case ChangeKind::Refreshed:
      return "refreshed";
  }
  return "unknown";
}

}  // namespace vornixpath
