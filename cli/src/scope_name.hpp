#pragma once

#include <search_path_interfaces/search_scope.hpp>
#include <string>
#include <vector>

namespace vornixpath {

/// What --scope takes, in the order in which help lists it: "main", "visible", "all", then each kind of special folder.
[[nodiscard]] std::vector<std::string> ScopeNames();

/// The kinds of folders that `name`, one of `ScopeNames()`, stands for.
[[nodiscard]] Quorvex::PathManagement::SearchScope ScopeFromName(const std::string& name);

}  // namespace vornixpath
