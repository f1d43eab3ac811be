#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <optional>
#include <search_path_environment/folder_path.hpp>
#include <string>
#include <vector>

#include "folder_changes.hpp"

namespace vornixpath {

/// A name that means another file, or none, once the path has changed.
struct ChangedName {
  std::u16string name;
  std::optional<foundation::storage::vfs::AbsoluteIRI> before;
  std::optional<foundation::storage::vfs::AbsoluteIRI> after;
};

/// What `changes`, which lead from the path `before` to the path `after`, do to the names of files with one of
/// `extensions`, called as people type them: plain ones `greet`, those of classes `Shape` and `Shape/area`, in packages
/// `pkg/name` and `pkg/Cls/Cls`. Sorted by name.
///
/// Walks over all folders of both paths; looks up, twice, each name in the folders that changed, and what else a lookup
/// may take these names for.
[[nodiscard]] std::vector<ChangedName> ChangedNames(const Quorvex::PathEnvironment::FolderPath& before,
                                                    const Quorvex::PathEnvironment::FolderPath& after,
                                                    const std::vector<FolderChange>& changes,
                                                    const std::vector<std::u16string>& extensions);

/// `greet: /old/greet.vnx -> nothing`, safe for a terminal.
[[nodiscard]] std::string InWords(const ChangedName& change);

}  // namespace vornixpath
