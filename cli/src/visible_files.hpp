#pragma once

#include <boost/optional/optional.hpp>
#include <search_path_interfaces/found_item.hpp>
#include <search_path_interfaces/search_target.hpp>
#include <vector>

#include "standpoint.hpp"

namespace vornixpath {

/// The one file that `target` means.
[[nodiscard]] boost::optional<Quorvex::PathManagement::FoundItem> FindVisibleFile(
    const Standpoint& standpoint, const Quorvex::PathManagement::detail::SearchTarget& target);

/// That file, followed by those it hides, each location once, in order of precedence.
[[nodiscard]] std::vector<Quorvex::PathManagement::FoundItem> FindAllFiles(
    const Standpoint& standpoint, const Quorvex::PathManagement::detail::SearchTarget& target);

}  // namespace vornixpath
