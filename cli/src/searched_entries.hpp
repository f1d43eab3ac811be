// Which entries of a path a lookup looks into.
#pragma once

#include <search_path_interfaces/search_scope.hpp>
#include <search_path_interfaces/search_target.hpp>
#include <vector>

#include "entry_ptr.hpp"
#include "standpoint.hpp"

namespace vornixpath {

/// The entries of `scope` in which `target` may be found, in path order: all, or those that the folders written in
/// front of its base name match.
[[nodiscard]] std::vector<EntryPtr> EntriesSearchedInScope(const Quorvex::PathManagement::IPath& path,
                                                           Quorvex::PathManagement::SearchScope scope,
                                                           const Quorvex::PathManagement::detail::SearchTarget& target,
                                                           Quorvex::PathManagement::FilenameMatchingPolicy policy);

/// The class folders that answer for the plain name of `target`. A lookup selects them natively.
[[nodiscard]] std::vector<EntryPtr> ClassFoldersFor(
    const Quorvex::PathManagement::IPath& path, const Quorvex::PathManagement::detail::SearchTarget& target,
    Quorvex::PathManagement::FilenameMatchingPolicy policy = Quorvex::PathManagement::FilenameMatchingPolicy::Native);

/// The private folder that a plain name asked from `standpoint` is looked for in first, or null.
[[nodiscard]] EntryPtr PrivateFolderSeenFrom(const Standpoint& standpoint);

}  // namespace vornixpath
