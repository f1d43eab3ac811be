// From the name of a class to its folders.
#pragma once

#include <boost/unordered/unordered_flat_map.hpp>
#include <span>
#include <string>
#include <vector>

#include "class_name_filter.hpp"
#include "location_table.hpp"

namespace Quorvex::PathEnvironment {

/// Under each name without '@', in path order, the class folders that bear it. Apart from the files: most names are of
/// no class, and where one is, the files of that name, however many, must not be walked. Immutable, safe from any
/// thread.
class ClassFolderIndex {
 public:
  enum class Keys {
    Exact,
    Folded,  ///< names that differ in letter case only share a place
  };

  ClassFolderIndex(const std::vector<LocationTable::Slot>& slots, Keys keys);

  /// False for most names that no class bears, and without as much as a hash. O(1).
  [[nodiscard, gnu::always_inline]] bool MayHold(const std::u16string& name) const noexcept {
    return keys_ == Keys::Folded || filter_.MayHold(name);
  }

  /// Valid as long as the index. O(1).
  [[nodiscard]] std::span<const Ordinal> Find(const std::u16string& name) const {
    if (!MayHold(name)) return {};
    return FindByHash(name);
  }

 private:
  [[nodiscard]] std::u16string KeyOf(const std::u16string& name) const;
  [[nodiscard]] std::span<const Ordinal> FindByHash(const std::u16string& name) const;

  Keys keys_;
  ClassNameFilter filter_;
  boost::unordered_flat_map<std::u16string, std::vector<Ordinal>> folders_;
};

}  // namespace Quorvex::PathEnvironment
