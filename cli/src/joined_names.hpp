#pragma once

#include <cstddef>
#include <ranges>
#include <string>
#include <string_view>

namespace vornixpath {

/// "a, b or c" of the three names, for `between` = ", " and `last` = " or ".
template <std::ranges::forward_range Names>
[[nodiscard]] std::string JoinedNames(const Names& names, std::string_view between, std::string_view last) {
  std::string joined;
  auto left = std::ranges::distance(names);
  const auto all = left;
  for (const auto& name : names) {
    if (left < all) joined += left == 1 ? last : between;
    joined += name;
    --left;
  }
  return joined;
}

/// The label of an argument that is one of `names`: "a|b|c".
template <std::ranges::forward_range Names>
[[nodiscard]] std::string OneOf(const Names& names) {
  return JoinedNames(names, "|", "|");
}

}  // namespace vornixpath
