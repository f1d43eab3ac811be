#pragma once

#include <string>
#include <vector>

namespace bench {

/// Runs a program, its output thrown away, until it ends. Throws std::runtime_error unless it ends well.
void Run(std::vector<std::string> words);

}  // namespace bench
