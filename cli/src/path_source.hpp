#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <optional>
#include <search_path_interfaces/factories.hpp>
#include <string>
#include <vector>

#include "cached_loading.hpp"
#include "command_line.hpp"
#include "folder_list.hpp"
#include "loaded_path.hpp"

namespace vornixpath {

/// The folders that `options` name, else VORNIX_PATH, else the default session. Throws UsageError when nothing names
/// any, std::runtime_error with file and line for a path file that cannot be used, and SavedPathError for such a
/// session, here or when the list is asked for them. A snapshot has no part in it.
[[nodiscard]] FolderList ListFor(const PathOptions& options);

/// The same at once.
[[nodiscard]] std::vector<foundation::storage::vfs::AbsoluteIRI> FoldersFor(const PathOptions& options);

/// The saved path of the session in the file `name`, or of the default one. Warns when nothing was saved there yet.
/// Throws SavedPathError, and UsageError when the default is needed and there is none.
[[nodiscard]] std::vector<foundation::storage::vfs::AbsoluteIRI> FoldersFromSession(
    const std::optional<std::string>& name);

/// The path over the folders of FoldersFor and then `further` ones, each once, or that of the snapshot which `options`
/// name; the masks of `options` applied. Warns of masks that hide nothing. Throws as FoldersFor and ReadSnapshotFile
/// do, and UsageError for a mask that is malformed.
///
/// With the help of a cache, as `options` have it; then the path may be that of the first folders alone, as many as
/// `countDeciding` says.
[[nodiscard]] LoadedPath LoadPath(const PathOptions& options,
                                  const std::vector<foundation::storage::vfs::AbsoluteIRI>& further = {},
                                  const CountDeciding& countDeciding = CountAll);

/// The same without a snapshot or a cache: each folder is what `entries` makes of it, a FolderEntry.
[[nodiscard]] LoadedPath LoadPathThrough(const Quorvex::PathManagement::IPathEntryFactory& entries,
                                         const PathOptions& options,
                                         const std::vector<foundation::storage::vfs::AbsoluteIRI>& further);

}  // namespace vornixpath
