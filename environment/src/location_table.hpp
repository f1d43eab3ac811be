// Where the entries of a path stand: the one table behind order, membership, parents and locations.
#pragma once

#include <boost/unordered/unordered_flat_map.hpp>
#include <cstdint>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <memory>
#include <optional>
#include <search_path_environment/folder_entry.hpp>
#include <string>
#include <vector>

#include "lazy.hpp"

namespace Quorvex::PathEnvironment {

/// An entry's place in walk order, which is path order.
using Ordinal = std::uint32_t;
inline constexpr Ordinal kNoOrdinal = 0xFFFFFFFF;

/// Immutable, safe from any thread.
class LocationTable {
 public:
  struct Slot {
    std::shared_ptr<const FolderEntry> entry;
    Ordinal parent;  ///< kNoOrdinal for a main entry
    Ordinal main;    ///< itself for a main entry
  };

  explicit LocationTable(const std::vector<std::shared_ptr<const FolderEntry>>& mainEntries);

  [[nodiscard]] const std::vector<Slot>& GetSlots() const noexcept { return slots_; }

  /// The place of this very entry. O(1).
  [[nodiscard]] std::optional<Ordinal> Find(const PathManagement::IPathEntry& entry) const;

  /// The entry spelled like this, else the one that is canonically there; main entries before method entries. O(1).
  [[nodiscard]] std::optional<Ordinal> FindLocation(const foundation::storage::vfs::AbsoluteIRI& location) const;

  /// The entry whose location differs in letter case at most, where `policy` lets it; main entries before method
  /// entries. O(1) on average, but O(entries) for the first call.
  [[nodiscard]] std::optional<Ordinal> FindLocationUnder(PathManagement::FilenameMatchingPolicy policy,
                                                         const foundation::storage::vfs::AbsoluteIRI& location) const;

 private:
  using Ordinals = std::vector<Ordinal>;
  using ByFoldedLocation = boost::unordered_flat_map<std::u16string, Ordinals>;

  void Add(const std::shared_ptr<const FolderEntry>& entry, Ordinal parent, Ordinal main);
  [[nodiscard]] Ordinals MainEntriesFirst() const;
  void IndexLocations(const Ordinals& mainEntriesFirst);
  [[nodiscard]] ByFoldedLocation FoldLocations() const;

  std::vector<Slot> slots_;
  // The few entries that share a location with another, a folder listed on the path and found inside another one, are
  // chained.
  std::vector<Ordinal> nextAtSameLocation_;
  boost::unordered_flat_map<foundation::storage::vfs::AbsoluteIRI, Ordinal> byLocation_;
  boost::unordered_flat_map<foundation::storage::vfs::AbsoluteIRI, Ordinal> byCanonicalLocation_;
  Lazy<ByFoldedLocation> byFoldedLocation_;
};

}  // namespace Quorvex::PathEnvironment
