#pragma once

#include <vector>

#include "finding.hpp"
#include "shadow_pairs.hpp"

namespace vornixpath {

/// One finding for each of the shadows of `pairs`, in their order, but for the grade letter-case: such names are told
/// as letter-case twins. `pairs` are those of the path.
[[nodiscard]] std::vector<Finding> ShadowedNames(const std::vector<ShadowPair>& pairs);

}  // namespace vornixpath
