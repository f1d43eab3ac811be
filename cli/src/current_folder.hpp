#pragma once

#include <optional>
#include <string>

namespace vornixpath {

/// The absolute text of the process's current folder. Throws std::filesystem::filesystem_error when it has been
/// removed.
[[nodiscard]] std::u16string CurrentFolder();

/// The same, or nothing.
[[nodiscard]] std::optional<std::u16string> CurrentFolderIfAny();

}  // namespace vornixpath
