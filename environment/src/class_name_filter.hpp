#pragma once

#include <algorithm>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Quorvex::PathEnvironment {

/// Tells most names that no class bears from those that one may bear: by length, which nearly nothing costs, then by
/// three of their characters. A class that was added is never denied.
class ClassNameFilter {
 public:
  void Add(std::u16string_view name) noexcept {
    lengths_ |= LengthBit(name);
    places_.set(PlaceOf(name));
  }

  [[nodiscard]] bool MayHold(std::u16string_view name) const noexcept {
    return (lengths_ & LengthBit(name)) != 0 && places_.test(PlaceOf(name));
  }

 private:
  static constexpr std::size_t kPlaces = 4096;

  static std::uint64_t LengthBit(std::u16string_view name) noexcept {
    return std::uint64_t{1} << std::min<std::size_t>(name.size(), 63);
  }
  static std::size_t PlaceOf(std::u16string_view name) noexcept {
    if (name.empty()) return 0;
    const std::size_t mixed =
        name.size() + 31 * (name.front() + std::size_t{31} * (name.back() + std::size_t{31} * name[name.size() / 2]));
    return mixed % kPlaces;
  }

  std::uint64_t lengths_ = 0;
  std::bitset<kPlaces> places_;
};

}  // namespace Quorvex::PathEnvironment
