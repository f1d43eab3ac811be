#pragma once

// What a comparison told, beside what the model tells.

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <oracle/entry_vector_changes.hpp>
#include <vector>

#include "made_entry.hpp"

namespace Quorvex::PathManagement::diff_tests {

using Locations = std::vector<foundation::storage::vfs::AbsoluteIRI>;

inline Locations LocationsOf(const EntryPtrs& entries) {
  Locations locations;
  for (const EntryPtr& entry : entries) locations.push_back(entry->GetAbsoluteIRI());
  return locations;
}

template <class List>
List Joined(List first, const List& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

/// Whether the changes are those of the model, as far as it is not open which of several objects are paired.
inline bool Agree(const Changes& changes, const oracle::EntryVectorChanges& expected) {
  return changes.reordered == expected.reordered && LocationsOf(changes.added) == expected.added &&
         LocationsOf(changes.removed) == expected.removed &&
         LocationsOf(changes.refreshedBefore) == expected.refreshed &&
         LocationsOf(changes.refreshedAfter) == expected.refreshed &&
         ByAddress(Joined(changes.removed, changes.refreshedBefore)) == ByAddress(expected.onlyOld) &&
         ByAddress(Joined(changes.added, changes.refreshedAfter)) == ByAddress(expected.onlyNew);
}

}  // namespace Quorvex::PathManagement::diff_tests
