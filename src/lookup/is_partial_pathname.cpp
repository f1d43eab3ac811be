#include <cstdint>
#include <cstring>
#include <memory>
#include <search_path_interfaces/constants.hpp>
#include <search_path_utilities/lookup.hpp>

namespace Quorvex::PathManagement {

namespace {

// Eight code units, compared at once on every machine that can.
using Block [[gnu::vector_size(16)]] = std::uint16_t;
using Halves [[gnu::vector_size(16)]] = std::uint64_t;
constexpr std::size_t kUnitsInABlock = sizeof(Block) / sizeof(char16_t);

// All bits set where a unit is `wanted`.
Block Matches(const char16_t* units, char16_t wanted) noexcept {
  Block block;
  std::memcpy(&block, units, sizeof block);
  return Block(block == wanted);
}

bool Holds(std::u16string_view text, char16_t wanted) noexcept {
  if (text.size() < kUnitsInABlock) {
    for (const char16_t unit : text) {  // NOLINT(readability-use-anyofallof): see below
      if (unit == wanted) return true;
    }
    return false;
  }
  // The last block overlaps the one before it, which in most names is the first one, too.
  const char16_t* const units = std::to_address(text.begin());
  const std::size_t last = text.size() - kUnitsInABlock;
  Block matches = Matches(units, wanted) | Matches(units + last, wanted);
  for (std::size_t i = kUnitsInABlock; i < last; i += kUnitsInABlock) matches |= Matches(units + i, wanted);
  const auto halves = Halves(matches);
  return (halves[0] | halves[1]) != 0;
}

}  // namespace

bool IsPartialPathname(std::u16string_view name) noexcept {
  // Loops and no algorithms, which would be unrolled: names are short, and this is asked twice in each lookup.
  if (Constants::PathnameSeparatorStr.size() == 1) return Holds(name, Constants::PathnameSeparatorStr.front());
  for (const char16_t separator : Constants::PathnameSeparatorStr) {  // NOLINT(readability-use-anyofallof)
    if (Holds(name, separator)) return true;
  }
  return false;
}

}  // namespace Quorvex::PathManagement
