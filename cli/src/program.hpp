#pragma once

#include <string>
#include <vector>

#include "exit_status.hpp"

namespace vornixpath {

/// Does what the arguments, without the program's name, ask for, and tells on standard error what was in the way: all
/// of the tool but what concerns its process.
[[nodiscard]] ExitStatus RunProgram(const std::vector<std::string>& arguments);

}  // namespace vornixpath
