#pragma once

#include <search_path_interfaces/search_target.hpp>
#include <unordered_set>

#include "standpoint.hpp"

namespace vornixpath {

/// Which entries of a path a lookup of one name searches. Keeps no entry alive.
class Reach {
 public:
  Reach(const Standpoint& standpoint, const Quorvex::PathManagement::detail::SearchTarget& target);

  [[nodiscard]] bool Includes(const Quorvex::PathManagement::IPathEntry& entry) const;

  /// Whether it would, did letter case make no difference to folder names.
  [[nodiscard]] bool WouldIncludeInAnyLetterCase(const Quorvex::PathManagement::IPathEntry& entry) const;

 private:
  using Entries = std::unordered_set<const Quorvex::PathManagement::IPathEntry*>;

  Entries searched_;
  Entries searchedInAnyLetterCase_;
};

}  // namespace vornixpath
