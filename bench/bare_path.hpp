// Entries and paths that hold what a benchmark counts and nothing else, so that what is measured is the library's part.
#pragma once

#include <memory>
#include <search_path_interfaces/path.hpp>
#include <utility>
#include <vector>

namespace bench {

using EntryPtr = std::shared_ptr<const Quorvex::PathManagement::IPathEntry>;
using Entries = std::vector<EntryPtr>;

/// A main entry that has a location, and is otherwise empty.
[[nodiscard]] EntryPtr BareEntryAt(const foundation::storage::vfs::AbsoluteIRI& location);

/// A path that has main entries, and otherwise finds nothing.
[[nodiscard]] std::shared_ptr<const Quorvex::PathManagement::IPath> BarePathOver(Entries entries);

}  // namespace bench
