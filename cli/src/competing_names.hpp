#pragma once

#include <search_path_interfaces/path.hpp>
#include <string>
#include <vector>

#include "entry_ptr.hpp"

namespace vornixpath {

/// A package or class folder, and what it is called: "geometry/Point".
struct NamedFolder {
  std::u16string name;
  EntryPtr entry;
};

/// Names that differ in letter case at most, and the special folders of such a name.
struct CompetingNames {
  std::vector<std::u16string> names;  ///< of files, sorted, at least one
  std::vector<NamedFolder> folders;   ///< in path order
};

/// Every name that may mean more than one thing on `path` when `extensions` are tried: what a lookup is asked about, so
/// that few names which mean only one thing do no harm. In constant order.
///
/// O(n log n) in the number of files; sixteen bytes for each, and the texts of names that compete.
[[nodiscard]] std::vector<CompetingNames> FindCompetingNames(const Quorvex::PathManagement::IPath& path,
                                                             const std::vector<std::u16string>& extensions);

}  // namespace vornixpath
