#pragma once

#include <string>
#include <vector>

#include "shadow_pairs.hpp"

namespace vornixpath {

/// The gravest of the pair.
[[nodiscard]] ShadowGrade GravestOf(const ShadowPair& pair);

/// "3 names of folder 2" or "3 names of its own", from the one that hides.
[[nodiscard]] std::string HiddenInWords(const ShadowPair& pair);

/// An SVG picture of `pairs`: the folders that have a part in them below one another, an arc from each that hides to
/// the one that is hidden. As tall as there are folders, always as wide.
[[nodiscard]] std::string ArcsSvg(const std::vector<ShadowPair>& pairs);

}  // namespace vornixpath
