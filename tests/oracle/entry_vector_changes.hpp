#pragma once

// What changed between two vectors of entries, told by counting: slow, obvious, and written apart from the library.

#include <algorithm>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <functional>
#include <map>
#include <memory>
#include <oracle/longest_common_subsequence.hpp>
#include <search_path_interfaces/path_entry.hpp>
#include <vector>

namespace Quorvex::PathManagement::oracle {

using Entries = std::vector<std::shared_ptr<const IPathEntry>>;

/// Where several objects of one side are for one folder, which of them is paired is open; the folders are not.
struct EntryVectorChanges {
  Entries reordered;
  Entries onlyOld;  ///< by folder
  Entries onlyNew;  ///< by folder
  std::vector<foundation::storage::vfs::AbsoluteIRI> added;
  std::vector<foundation::storage::vfs::AbsoluteIRI> removed;
  std::vector<foundation::storage::vfs::AbsoluteIRI> refreshed;
};

inline std::size_t CountOf(const std::shared_ptr<const IPathEntry>& entry, const Entries& entries) {
  return static_cast<std::size_t>(std::count(entries.begin(), entries.end(), entry));
}

inline Entries InOrderOfFolders(Entries entries) {
  std::stable_sort(entries.begin(), entries.end(), [](const auto& left, const auto& right) {
    return left->GetAbsoluteIRI() < right->GetAbsoluteIRI();
  });
  return entries;
}

inline EntryVectorChanges ChangesBetween(const Entries& oldEntries, const Entries& newEntries) {
  const Entries subsequence = LongestCommonSubsequence(oldEntries, newEntries);
  Entries objects = oldEntries;
  objects.insert(objects.end(), newEntries.begin(), newEntries.end());
  std::sort(objects.begin(), objects.end(),
            [](const auto& left, const auto& right) { return std::less<>()(left.get(), right.get()); });
  objects.erase(std::unique(objects.begin(), objects.end()), objects.end());

  EntryVectorChanges changes;
  for (const auto& object : objects) {
    const std::size_t before = CountOf(object, oldEntries);
    const std::size_t after = CountOf(object, newEntries);
    const std::size_t common = std::min(before, after);
    changes.reordered.insert(changes.reordered.end(), common - CountOf(object, subsequence), object);
    changes.onlyOld.insert(changes.onlyOld.end(), before - common, object);
    changes.onlyNew.insert(changes.onlyNew.end(), after - common, object);
  }
  changes.onlyOld = InOrderOfFolders(changes.onlyOld);
  changes.onlyNew = InOrderOfFolders(changes.onlyNew);

  struct Count {
    std::size_t before = 0;
    std::size_t after = 0;
  };
  std::map<foundation::storage::vfs::AbsoluteIRI, Count> folders;
  for (const auto& entry : changes.onlyOld) ++folders[entry->GetAbsoluteIRI()].before;
  for (const auto& entry : changes.onlyNew) ++folders[entry->GetAbsoluteIRI()].after;
  for (const auto& [folder, count] : folders) {
    const std::size_t pairs = std::min(count.before, count.after);
    changes.refreshed.insert(changes.refreshed.end(), pairs, folder);
    changes.removed.insert(changes.removed.end(), count.before - pairs, folder);
    changes.added.insert(changes.added.end(), count.after - pairs, folder);
  }
  return changes;
}

}  // namespace Quorvex::PathManagement::oracle
