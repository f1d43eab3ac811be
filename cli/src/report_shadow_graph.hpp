#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "shadow_pairs.hpp"

namespace vornixpath {

/// As many arcs as can be told apart. The table has all.
inline constexpr std::size_t kMostArcs = 100;

/// A picture of which folder hides how many names of which: an arc for each pair, those with most names if there are
/// more than kMostArcs; and a table of the same.
[[nodiscard]] std::string ShadowsHtml(const std::vector<ShadowPair>& pairs);

}  // namespace vornixpath
