// From the name of a folder to the entries of that name.
#pragma once

#include <boost/container/small_vector.hpp>
#include <boost/unordered/unordered_flat_map.hpp>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "location_table.hpp"

namespace Quorvex::PathEnvironment {

/// Under each folder name without its marks and in folded letter case, so that one table serves every policy: the
/// entries whose folder bears it, in path order. Immutable, safe from any thread.
class FolderNameIndex {
 public:
  explicit FolderNameIndex(const std::vector<LocationTable::Slot>& slots);

  /// All entries that a partial pathname that ends in `name` can mean, and perhaps some more. O(1).
  [[nodiscard]] std::span<const Ordinal> Find(const std::u16string& name) const;

 private:
  using Ordinals = boost::container::small_vector<Ordinal, 2>;  // most names are one folder's
  struct AsItIs {
    using is_avalanching = void;
    std::size_t operator()(std::uint64_t hash) const noexcept { return static_cast<std::size_t>(hash); }
  };

  // By the name's hash alone: two names that share one give some entries more, and a look-up touches no text.
  boost::unordered_flat_map<std::uint64_t, Ordinals, AsItIs> entries_;
};

}  // namespace Quorvex::PathEnvironment
