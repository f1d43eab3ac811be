#pragma once

// What changed between two vectors of entries and, level by level, between the method entries of what changed: slow,
// obvious, and written apart from the library.

#include <memory>
#include <oracle/entry_vector_changes.hpp>
#include <search_path_interfaces/path_entry.hpp>
#include <vector>

namespace Quorvex::PathManagement::oracle {

inline Entries MethodEntriesBelow(const Entries& entries) {
  Entries below;
  for (const auto& entry : entries) {
    for (const auto& single : {entry->GetPrivateEntry(), entry->GetSecondSingleEntry()}) {
      if (single != nullptr) below.push_back(single);
    }
    for (const auto& group : {entry->GetFirstEntryGroup(), entry->GetSecondEntryGroup(), entry->GetThirdEntryGroup()}) {
      for (const auto& member : *group) below.push_back(member);
    }
  }
  return below;
}

/// Of each level, the given vectors first. Neither vector of any level may hold two objects for one folder: the order
/// of their method entries would be open.
inline std::vector<EntryVectorChanges> ChangesLevelByLevel(const Entries& oldEntries, const Entries& newEntries) {
  if (oldEntries.empty() && newEntries.empty()) return {};

  std::vector<EntryVectorChanges> levels = {ChangesBetween(oldEntries, newEntries)};
  const auto deeper = ChangesLevelByLevel(MethodEntriesBelow(levels[0].onlyOld), MethodEntriesBelow(levels[0].onlyNew));
  levels.insert(levels.end(), deeper.begin(), deeper.end());
  return levels;
}

/// All levels, one after the other.
inline EntryVectorChanges Joined(const std::vector<EntryVectorChanges>& levels) {
  EntryVectorChanges all;
  const auto append = [](auto& list, const auto& part) { list.insert(list.end(), part.begin(), part.end()); };
  for (const EntryVectorChanges& level : levels) {
    append(all.reordered, level.reordered);
    append(all.onlyOld, level.onlyOld);
    append(all.onlyNew, level.onlyNew);
    append(all.added, level.added);
    append(all.removed, level.removed);
    append(all.refreshed, level.refreshed);
  }
  return all;
}

}  // namespace Quorvex::PathManagement::oracle
