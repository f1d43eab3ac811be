#pragma once

#include <cstdint>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string>
#include <vector>

namespace vornixpath {

enum class ChangeKind : std::uint8_t { Added, Removed, Moved };

/// What became of one folder of a path.
struct FolderChange {
  ChangeKind kind;
  foundation::storage::vfs::AbsoluteIRI folder;
};

/// What leads from the folders `before` to those `after`: the added and the moved ones in their new order, then the
/// removed ones in their old. As few folders count as moved as can; of a folder that stands on a path more than once,
/// its first place counts. O(n log n).
[[nodiscard]] std::vector<FolderChange> ChangesBetween(const std::vector<foundation::storage::vfs::AbsoluteIRI>& before,
                                                       const std::vector<foundation::storage::vfs::AbsoluteIRI>& after);

/// "+ /a", "- /a" or "~ /a", safe for a terminal.
[[nodiscard]] std::string InWords(const FolderChange& change);

/// "added", "removed" or "moved".
[[nodiscard]] const char* NameOf(ChangeKind kind);

}  // namespace vornixpath
