#pragma once

#include <search_path_interfaces/search_target.hpp>
#include <string>
#include <vector>

namespace vornixpath {

/// The folders written in front of a base name, last separator included; empty for a plain name.
[[nodiscard]] std::u16string FolderPartOf(const std::u16string& baseName);

/// The names in a text of folder names.
[[nodiscard]] std::vector<std::u16string> FolderNamesIn(const std::u16string& folders);

/// Whether `target` has a base name of its own: without one it means no file on any path.
[[nodiscard]] bool NamesAFile(const Quorvex::PathManagement::detail::SearchTarget& target);

/// The names that `target` looks for, in order.
[[nodiscard]] std::vector<std::u16string> NamesLookedFor(const Quorvex::PathManagement::detail::SearchTarget& target);

/// The same as a list for people: "greet.vnx, greet.h".
[[nodiscard]] std::string ListLookedFor(const Quorvex::PathManagement::detail::SearchTarget& target);

}  // namespace vornixpath
