#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <vector>

#include "loaded_path.hpp"
#include "wanted_name.hpp"

namespace vornixpath {

struct SubfolderFile {
  foundation::storage::vfs::AbsoluteIRI location;
  NameMatch match;
};

/// The files that match `wanted` in the plain subfolders directly below `folder` that are no folders of `path`, masked
/// or not, in order of their locations. Asks storage; what cannot be listed holds nothing.
[[nodiscard]] std::vector<SubfolderFile> FilesInPlainSubfolders(const foundation::storage::vfs::AbsoluteIRI& folder,
                                                                const WantedName& wanted, const LoadedPath& path);

}  // namespace vornixpath
