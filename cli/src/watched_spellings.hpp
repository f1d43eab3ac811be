// A path that is watched under every spelling of its folders, as it is seen under one.
#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <memory>
#include <search_path_environment/folder_path.hpp>
#include <vector>

namespace vornixpath {

/// The path over every identifier among `folders`, read now, though several may mean one folder.
[[nodiscard]] std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> ReadEverySpelling(
    const std::vector<foundation::storage::vfs::AbsoluteIRI>& folders);

/// The path that a query of `folders` would ask: each folder once, under the first of its spellings, as storage now
/// tells what is the same. `path` is a version of what ReadEverySpelling gave of them; it is the answer where no folder
/// has two spellings, and else its entries are used.
[[nodiscard]] std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> UnderFirstSpellings(
    const std::shared_ptr<const Quorvex::PathEnvironment::FolderPath>& path,
    const std::vector<foundation::storage::vfs::AbsoluteIRI>& folders);

}  // namespace vornixpath
