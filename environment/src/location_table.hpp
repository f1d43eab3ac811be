// Where the entries of a path stand: the one table behind order, membership, parents and locations.
#pragma once

#include <boost/unordered/unordered_flat_map.hpp>
#include <compare>
#include <cstdint>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <memory>
#include <optional>
#include <search_path_environment/folder_entry.hpp>
#include <span>
#include <string>
#include <vector>

#include "folder_names.hpp"
#include "lazy.hpp"

namespace Quorvex::PathEnvironment {

/// An entry's place in walk order, which is path order.
using Ordinal = std::uint32_t;
inline constexpr Ordinal kNoOrdinal = 0xFFFFFFFF;

/// The place of a main entry on the path, from 0.
using Position = std::uint32_t;

/// Immutable, safe from any thread.
class LocationTable {
 public:
  /// An entry and where it stands. All that a lookup by name needs, in one cache line.
  struct alignas(64) Slot {
    std::shared_ptr<const FolderEntry> entry;
    foundation::storage::vfs::AbsoluteIRI location;  ///< of the entry
    FolderNames::View names;                         ///< of the entry's files
    Ordinal parent;                                  ///< kNoOrdinal for a main entry
    Ordinal main;                                    ///< itself for a main entry
    Position position;                               ///< of its main entry on the path
    PathManagement::PathEntryType kind;
  };

  static_assert(sizeof(Slot) == 64);

  /// A place that was found: entries are compared by how well they fit, main entries first, then by position.
  struct Match {
    bool isCanonical;  ///< found where it really is, not as it is spelled
    bool isMethodEntry;
    Position position;
    Ordinal ordinal;

    friend auto operator<=>(const Match&, const Match&) = default;
  };

  /// `positions` are those of the main entries on the path, in rising order; without them they stand one after another.
  explicit LocationTable(const std::vector<std::shared_ptr<const FolderEntry>>& mainEntries,
                         const std::vector<Position>& positions = {});

  [[nodiscard]] const std::vector<Slot>& GetSlots() const noexcept { return slots_; }

  /// The place of this very entry. O(1).
  [[nodiscard]] std::optional<Ordinal> Find(const PathManagement::IPathEntry& entry) const;

  /// The best among the entries spelled like this, else canonically there, that `isAlive(slot)` admits. O(1) but for
  /// entries that share the place.
  template <class IsAlive>
  [[nodiscard]] std::optional<Match> FindLocation(const foundation::storage::vfs::AbsoluteIRI& location,
                                                  const IsAlive& isAlive) const {
    if (const auto spelled = FirstAlive(spelled_.At(location), isAlive, false)) return spelled;
    return FirstAlive(canonical_.At(location), isAlive, true);
  }

  /// The best among the entries whose location differs in letter case at most, where `policy` lets it. O(1) on average,
  /// but O(entries) for the first call.
  template <class IsAlive>
  [[nodiscard]] std::optional<Match> FindLocationUnder(PathManagement::FilenameMatchingPolicy policy,
                                                       const foundation::storage::vfs::AbsoluteIRI& location,
                                                       const IsAlive& isAlive) const {
    return FirstAlive(
        OrdinalsUnder(policy, location),
        [&](const Slot& slot) { return !slot.entry->ComparesExactly(policy) && isAlive(slot); }, false);
  }

 private:
  using Ordinals = std::vector<Ordinal>;
  using ByFoldedLocation = boost::unordered_flat_map<std::u16string, Ordinals>;

  // The entries at each location. Most have theirs for themselves; the few that share one, such as a folder that is
  // listed and stands inside another one, too, are kept in a list.
  class Places {
   public:
    void Reserve(std::size_t count) { first_.reserve(count); }
    void Add(const foundation::storage::vfs::AbsoluteIRI& location, Ordinal ordinal);
    [[nodiscard]] std::span<const Ordinal> At(const foundation::storage::vfs::AbsoluteIRI& location) const;

   private:
    boost::unordered_flat_map<foundation::storage::vfs::AbsoluteIRI, Ordinal> first_;
    boost::unordered_flat_map<foundation::storage::vfs::AbsoluteIRI, Ordinals> shared_;
  };

  template <class IsAlive>
  [[nodiscard]] std::optional<Match> FirstAlive(std::span<const Ordinal> ordinals, const IsAlive& isAlive,
                                                bool isCanonical) const {
    for (const Ordinal ordinal : ordinals) {
      const Slot& slot = slots_[ordinal];
      if (isAlive(slot)) return Match{isCanonical, slot.parent != kNoOrdinal, slot.position, ordinal};
    }
    return std::nullopt;
  }

  void Add(const std::shared_ptr<const FolderEntry>& entry, Ordinal parent, Ordinal main, Position position);
  [[nodiscard]] Ordinals MainEntriesFirst() const;
  [[nodiscard]] std::span<const Ordinal> OrdinalsUnder(PathManagement::FilenameMatchingPolicy policy,
                                                       const foundation::storage::vfs::AbsoluteIRI& location) const;
  [[nodiscard]] ByFoldedLocation FoldLocations() const;

  std::vector<Slot> slots_;
  Places spelled_;
  Places canonical_;  // of those that are spelled otherwise
  bool comparesExactlyEverywhere_ = true;
  Lazy<ByFoldedLocation> byFoldedLocation_;
};

}  // namespace Quorvex::PathEnvironment
