#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <search_path_interfaces/found_item.hpp>
#include <search_path_interfaces/path.hpp>
#include <string>
#include <vector>

#include "entry_ptr.hpp"

namespace vornixpath {

/// What two things have in common that share a name.
enum class Likeness {
  SameName,         ///< two files in folders of one kind
  OtherLetterCase,  ///< the names differ in letter case, and the storage tells them apart: each is found on its own
  OtherKind,        ///< a file and a special folder, or files in folders of different kinds
};

/// A file that a name means, and one thing that the name might mean were it not for that file.
struct Shadow {
  std::u16string name;
  Quorvex::PathManagement::FoundItem winner;
  EntryPtr hiddenEntry;  ///< the folder of the hidden file, or the hidden folder
  foundation::storage::vfs::AbsoluteIRI hidden;
  Likeness likeness;
};

/// Everything on `path` that is hidden from those who try `extensions`, in constant order, and in order of precedence
/// under each name. The winner is the file that a lookup on the path gives; nothing is told of a single folder whose
/// files of one name differ in their extensions only.
[[nodiscard]] std::vector<Shadow> FindShadows(const Quorvex::PathManagement::IPath& path,
                                              const std::vector<std::u16string>& extensions);

}  // namespace vornixpath
