#pragma once

#include <boost/optional/optional.hpp>
#include <search_path_environment/folder_path.hpp>
#include <search_path_interfaces/found_item.hpp>
#include <vector>

namespace vornixpath {

/// A place to ask from, and how names are compared.
struct Standpoint {
  const Quorvex::PathEnvironment::FolderPath& path;
  boost::optional<foundation::storage::vfs::AbsoluteIRI> folder;  ///< none: ask on the whole path
  Quorvex::PathManagement::FilenameMatchingPolicy policy;
};

/// The one file that `target` means.
[[nodiscard]] boost::optional<Quorvex::PathManagement::FoundItem> FindVisibleFile(
    const Standpoint& standpoint, const Quorvex::PathManagement::detail::SearchTarget& target);

/// That file, followed by those it hides, in order of precedence.
[[nodiscard]] std::vector<Quorvex::PathManagement::FoundItem> FindAllFiles(
    const Standpoint& standpoint, const Quorvex::PathManagement::detail::SearchTarget& target);

}  // namespace vornixpath
