#pragma once

#include <vector>

#include "shadow_pairs.hpp"

namespace vornixpath {

/// Whether a file could not be compared with the one that hides it.
[[nodiscard]] bool IsAnyUnread(const std::vector<ShadowPair>& pairs);

/// The same, and warns of each such file: once, however many it was to be compared with.
[[nodiscard]] bool WarnOfUnreadFiles(const std::vector<ShadowPair>& pairs);

}  // namespace vornixpath
