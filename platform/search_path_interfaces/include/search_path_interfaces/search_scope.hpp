#pragma once

#include <search_path_interfaces/path_entry_type.hpp>

namespace Quorvex::PathManagement {

/// The kinds of entries that a search or a walk visits.
///
/// A view of a contiguous array of kinds: two pointers, passed by value. The array must outlive every call that
/// receives the scope; scopes are therefore made over constant tables.
class SearchScope {
 public:
  constexpr SearchScope(const PathEntryType* first, const PathEntryType* last) noexcept : first_(first), last_(last) {}

  [[nodiscard]] constexpr const PathEntryType* begin() const noexcept { return first_; }
  [[nodiscard]] constexpr const PathEntryType* end() const noexcept { return last_; }

  [[nodiscard]] constexpr bool Contains(PathEntryType kind) const noexcept {
    for (const PathEntryType listed : *this) {
      if (listed == kind) return true;
    }
    return false;
  }

 private:
  const PathEntryType* first_;
  const PathEntryType* last_;
};

}  // namespace Quorvex::PathManagement
