#pragma once

#include <bitset>
#include <cstddef>
#include <string_view>

namespace Quorvex::PathEnvironment {

/// Tells most names that no class bears from those that one may bear, by length and three of their characters. A class
/// that was added is never denied.
class ClassNameFilter {
 public:
  void Add(std::u16string_view name) noexcept { held_.set(PlaceOf(name)); }

  [[nodiscard]] bool MayHold(std::u16string_view name) const noexcept { return held_.test(PlaceOf(name)); }

 private:
  static constexpr std::size_t kPlaces = 4096;

  static std::size_t PlaceOf(std::u16string_view name) noexcept {
    if (name.empty()) return 0;
    const std::size_t mixed =
        name.size() + 31 * (name.front() + std::size_t{31} * (name.back() + std::size_t{31} * name[name.size() / 2]));
    return mixed % kPlaces;
  }

  std::bitset<kPlaces> held_;
};

}  // namespace Quorvex::PathEnvironment
