#pragma once

#include <optional>
#include <string>

namespace vornixpath {

/// The bytes of the environment variable `name`; nothing for one that is missing or empty.
[[nodiscard]] std::optional<std::string> Variable(const char* name);

}  // namespace vornixpath
