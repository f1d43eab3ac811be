#pragma once

#include <string>

namespace vornixpath {

/// The absolute text of the process's current folder.
[[nodiscard]] std::u16string CurrentFolder();

}  // namespace vornixpath
