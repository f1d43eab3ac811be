#pragma once

#include <boost/optional/optional.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <optional>
#include <search_path_interfaces/path.hpp>
#include <string>

#include "entry_ptr.hpp"
#include "loaded_path.hpp"

namespace vornixpath {

/// A place to ask from, and how names are compared. The path is the caller's.
struct Standpoint {
  const Quorvex::PathManagement::IPath& path;
  boost::optional<foundation::storage::vfs::AbsoluteIRI> folder;  ///< none: ask on the whole path
  Quorvex::PathManagement::FilenameMatchingPolicy policy;
};

/// How file names are compared with or without --ignore-case.
[[nodiscard]] Quorvex::PathManagement::FilenameMatchingPolicy PolicyFor(bool ignoreCase);

/// The entry of `folder`, in any spelling, masked or not, or null. Asks storage about a spelling that the path does not
/// know, unless the path is a snapshot's, and lets its Exception pass.
[[nodiscard]] EntryPtr EntryUnderAnySpelling(const LoadedPath& path,
                                             const foundation::storage::vfs::AbsoluteIRI& folder);

/// The standpoint of code in the folder `from`, in any spelling, or of the whole path, on the view of `path`. Warns of
/// a folder that is masked or not on the path. Throws UsageError when `from` is malformed.
[[nodiscard]] Standpoint StandpointOn(const LoadedPath& path, const std::optional<std::string>& from, bool ignoreCase);

}  // namespace vornixpath
