#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <search_path_environment/folder_path.hpp>
#include <vector>

#include "wanted_name.hpp"

namespace vornixpath {

struct SubfolderFile {
  foundation::storage::vfs::AbsoluteIRI location;
  NameMatch match;
};

/// The files that match `wanted` in the plain subfolders directly below `folder` that are no folders of `path`, in
/// order of their locations. Asks storage; what cannot be listed holds nothing.
[[nodiscard]] std::vector<SubfolderFile> FilesInPlainSubfolders(const foundation::storage::vfs::AbsoluteIRI& folder,
                                                                const WantedName& wanted,
                                                                const Quorvex::PathEnvironment::FolderPath& path);

}  // namespace vornixpath
