// What is made of the description of vornixpath: each a whole file.
#pragma once

#include <string>

#include "described_program.hpp"

namespace vornixpath {

[[nodiscard]] std::string ManPage(const DescribedProgram& program);
[[nodiscard]] std::string BashCompletion(const DescribedProgram& program);
[[nodiscard]] std::string ZshCompletion(const DescribedProgram& program);
[[nodiscard]] std::string FishCompletion(const DescribedProgram& program);

}  // namespace vornixpath
