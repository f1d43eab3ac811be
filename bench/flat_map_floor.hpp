// The least that any lookup by name has to do: one find in a flat map.
#pragma once

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <boost/unordered/unordered_flat_map.hpp>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

struct NameHash {
  using is_avalanching = void;
  std::size_t operator()(const std::u16string& name) const noexcept {
    return static_cast<std::size_t>(XXH3_64bits(name.data(), name.size() * sizeof(char16_t)));
  }
};

using FlatMap = boost::unordered_flat_map<std::u16string, std::uint32_t, NameHash>;

[[nodiscard]] inline FlatMap FlatMapOf(const std::vector<std::u16string>& names) {
  FlatMap map;
  for (std::size_t i = 0; i < names.size(); ++i) map.emplace(names[i], static_cast<std::uint32_t>(i));
  return map;
}

}  // namespace bench
