// Whether a name names folders, too. Inline, for every lookup asks this, more than once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <search_path_interfaces/constants.hpp>
#include <string>
#include <string_view>

namespace Quorvex::PathManagement {

namespace detail {

/// Whether `text` holds the character `wanted`. Eight characters are compared at once where the machine can.
[[nodiscard]] inline bool HoldsCharacter(std::u16string_view text, char16_t wanted) noexcept {
  using Block [[gnu::vector_size(16)]] = std::uint16_t;
  using Halves [[gnu::vector_size(16)]] = std::uint64_t;
  constexpr std::size_t unitsInABlock = sizeof(Block) / sizeof(char16_t);

  // Loops and no algorithms, which would be unrolled: names are short.
  if (text.size() < unitsInABlock) {
    for (const char16_t unit : text) {  // NOLINT(readability-use-anyofallof)
      if (unit == wanted) return true;
    }
    return false;
  }
  const auto matchesAt = [text, wanted](std::size_t position) {
    Block block;
    std::memcpy(&block, text.data() + position, sizeof block);
    return Block(block == wanted);
  };
  // The last block overlaps the one before it, which in most names is the first one, too.
  const std::size_t last = text.size() - unitsInABlock;
  Block matches = matchesAt(0) | matchesAt(last);
  for (std::size_t i = unitsInABlock; i < last; i += unitsInABlock) matches |= matchesAt(i);
  const auto halves = Halves(matches);
  return (halves[0] | halves[1]) != 0;
}

}  // namespace detail

/// Whether `name` holds a character of `Constants::PathnameSeparatorStr`, and so names folders, too. O(n), a few
/// nanoseconds.
[[nodiscard]] inline bool IsPartialPathname(std::u16string_view name) noexcept {
  const std::u16string& separators = Constants::PathnameSeparatorStr;
  if (separators.size() == 1) return detail::HoldsCharacter(name, separators.front());
  for (const char16_t separator : separators) {  // NOLINT(readability-use-anyofallof)
    if (detail::HoldsCharacter(name, separator)) return true;
  }
  return false;
}

}  // namespace Quorvex::PathManagement
