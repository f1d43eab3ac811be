#pragma once

#include <search_path_interfaces/path_entry.hpp>
#include <search_path_interfaces/search_target.hpp>
#include <unordered_set>

#include "standpoint.hpp"

namespace vornixpath {

/// Which folders of a path a lookup of one name searches. Keeps no entry alive.
class Reach {
 public:
  Reach(const Standpoint& standpoint, const Quorvex::PathManagement::detail::SearchTarget& target);

  /// Whether the lookup searches `entry`.
  [[nodiscard]] bool Holds(const Quorvex::PathManagement::IPathEntry& entry) const;

  /// Whether it would, did letter case make no difference to folder names.
  [[nodiscard]] bool HoldsButForLetterCase(const Quorvex::PathManagement::IPathEntry& entry) const;

 private:
  using Entries = std::unordered_set<const Quorvex::PathManagement::IPathEntry*>;

  bool plainFolders_;  // all of them
  Entries within_;
  Entries nearly_;
};

}  // namespace vornixpath
