#pragma once

#include <search_path_interfaces/path_entry_type.hpp>

namespace Quorvex::PathManagement {

/// The kinds of entries that a search or a walk visits.
///
/// A view of a contiguous array of kinds: two pointers, passed by value. The array must outlive every call that
/// receives the scope; scopes are therefore made over constant tables.
class SearchScope {
 public:
  /// The kinds from `first` up to, but not including, `last`; an empty range selects nothing.
  constexpr SearchScope(const PathEntryType* first, const PathEntryType* last) noexcept : first_(first), last_(last) {}

  /// The kinds in the order of the table; a kind that stands there twice counts once.
  [[nodiscard]] constexpr const PathEntryType* begin() const noexcept { return first_; }
  /// One past the last kind.
  [[nodiscard]] constexpr const PathEntryType* end() const noexcept { return last_; }

  /// Whether entries of `kind` are visited. O(kinds).
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
