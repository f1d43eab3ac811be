#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string>
#include <vector>

#include "loaded_path.hpp"

namespace vornixpath {

/// A folder that could not be read, or not as a whole, so that whatever is looked for may stand in it.
struct UnreadFolder {
  foundation::storage::vfs::AbsoluteIRI location;
  std::size_t number;   ///< of its folder of the path, from 1
  bool isFolderOfPath;  ///< else it stands within one
  std::string reason;
};

/// Those of `path` that are not masked, in path order.
[[nodiscard]] std::vector<UnreadFolder> UnreadFoldersOf(const LoadedPath& path);

}  // namespace vornixpath
