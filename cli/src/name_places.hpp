#pragma once

#include <search_path_interfaces/path.hpp>
#include <string>
#include <vector>

#include "entry_ptr.hpp"
#include "folded_hash.hpp"

namespace vornixpath {

/// A folder whose files are reached by writing `folders` before their names.
struct NamePlace {
  EntryPtr entry;
  std::u16string folders;  ///< "geometry/Point/", marks left out; empty for a folder of the path
  FoldedHash hash;         ///< of these, every mark left out
  bool isUsual;            ///< what people write; otherwise a lookup may accept it, for the same of another folder
};

/// Where a path offers names: its folders, their packages and their classes, in path order, under the names of packages
/// and classes that lead there; and again under those of another such folder that a lookup may take for them, as it
/// takes a folder `geometry` of the path for the package `+geometry`. Private and resources folders offer none. O(n) in
/// the number of folders.
[[nodiscard]] std::vector<NamePlace> PlacesOfNames(const Quorvex::PathManagement::IPath& path);

/// Whether the class folder is one that answers for the name of its class alone: a class in no package.
[[nodiscard]] bool IsClassInNoPackage(const NamePlace& place);

}  // namespace vornixpath
