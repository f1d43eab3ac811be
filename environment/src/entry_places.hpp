// From a location to the main folders that hold an entry there.
#pragma once

#include <boost/container/small_vector.hpp>
#include <boost/unordered/unordered_flat_map.hpp>
#include <cstddef>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <optional>
#include <search_path_environment/folder_entry.hpp>
#include <vector>

namespace Quorvex::PathEnvironment {

/// Where entries stand: as they are spelled, aliases of schemes resolved, and canonically.
[[nodiscard]] std::vector<foundation::storage::vfs::AbsoluteIRI> PlacesOf(const FolderEntry& entry);

/// Where `before` or an entry below it stands, and nothing of `after` does. O(entries below).
[[nodiscard]] std::vector<foundation::storage::vfs::AbsoluteIRI> PlacesLeft(const FolderEntry& before,
                                                                            const FolderEntry& after);

/// Main entries by their numbers. Not safe from several threads.
class EntryPlaces {
 public:
  using Number = std::size_t;

  /// With all entries below it. O(entries below).
  void Add(const FolderEntry& mainEntry, Number number);
  /// No longer finds `number` at `place`. O(1).
  void Remove(const foundation::storage::vfs::AbsoluteIRI& place, Number number) noexcept;

  struct Found {
    foundation::storage::vfs::AbsoluteIRI place;
    std::vector<Number> numbers;
  };
  /// At `location`, or nearest above it.
  [[nodiscard]] std::optional<Found> FindAtOrAbove(foundation::storage::vfs::AbsoluteIRI location) const;

 private:
  using Numbers = boost::container::small_vector<Number, 1>;  // most places are in one main folder

  boost::unordered_flat_map<foundation::storage::vfs::AbsoluteIRI, Numbers> numbers_;
};

}  // namespace Quorvex::PathEnvironment
