#pragma once

#include <cstdint>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <search_path_environment/folder_path.hpp>
#include <search_path_utilities/path_entry_vector_differentiator.hpp>
#include <string>
#include <vector>

#include "entry_ptr.hpp"

namespace vornixpath {

enum class ChangeKind : std::uint8_t {
  Added,
  Removed,
  Moved,
  Refreshed  ///< it holds something else than before, in depth
};

/// What became of one folder of a path.
struct FolderChange {
  ChangeKind kind;
  foundation::storage::vfs::AbsoluteIRI folder;
  EntryPtr before;  ///< null of an added one
  EntryPtr after;   ///< null of a removed one; the same as before of a moved one
};

/// What leads from `before` to `after`, which shares the entries of folders that hold the same: the added, moved and
/// refreshed folders in their new order, then the removed ones in their old. As few folders count as moved as can, and
/// of two that changed places the one that now stands further ahead. With method entries, those of folders that changed
/// are told, too. Costs what comparing the entries does, and with method entries a walk over both paths.
[[nodiscard]] std::vector<FolderChange> ChangesBetween(const Quorvex::PathEnvironment::FolderPath& before,
                                                       const Quorvex::PathEnvironment::FolderPath& after,
                                                       Quorvex::PathManagement::ComparisonFilter filter);

/// The same of folders that nobody looked into: none is refreshed. Of a folder that stands on a path more than once,
/// its first place counts. The entries are empty.
[[nodiscard]] std::vector<FolderChange> ChangesBetween(const std::vector<foundation::storage::vfs::AbsoluteIRI>& before,
                                                       const std::vector<foundation::storage::vfs::AbsoluteIRI>& after);

/// "+ /a", "- /a", "~ /a" or "* /a", safe for a terminal.
[[nodiscard]] std::string InWords(const FolderChange& change);

/// '+', '-', '~' or '*'.
[[nodiscard]] char MarkOf(ChangeKind kind);

/// "added", "removed", "moved" or "refreshed".
[[nodiscard]] const char* NameOf(ChangeKind kind);

}  // namespace vornixpath
