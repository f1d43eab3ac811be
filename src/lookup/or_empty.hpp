#pragma once

#include <memory>
#include <search_path_interfaces/path_entry.hpp>

namespace Quorvex::PathManagement::detail {

/// What an entry compares names with. One without a comparator then fails as one with an empty comparator does: with
/// `std::bad_function_call`, when a name is compared.
inline const FilenameComparator& OrEmpty(const std::shared_ptr<const FilenameComparator>& comparator) {
  static const FilenameComparator empty;
  return comparator ? *comparator : empty;
}

}  // namespace Quorvex::PathManagement::detail
