#pragma once

#include <cstdint>
#include <fl/filesystem/case_folding.hpp>
#include <string_view>

namespace vornixpath {

/// A hash of text put in piece by piece, in which letter case makes no difference. The same in every run. A value.
class FoldedHash {
 public:
  void Add(std::u16string_view text) {
    // Most names are ASCII, which folds unit by unit and without room for the result.
    for (const char16_t unit : text) {
      if (unit >= 0x80) return AddFolded(fl::filesystem::fold_case(text));
    }
    AddFolded(text);
  }

  [[nodiscard]] std::uint64_t Value() const noexcept { return value_; }

 private:
  void AddFolded(std::u16string_view folded) noexcept {
    constexpr std::uint64_t kPrime = 0x9E3779B97F4A7C15ULL;
    for (const char16_t unit : folded) {
      const bool isUpper = unit >= u'A' && unit <= u'Z';
      value_ = (value_ ^ (isUpper ? unit + 0x20U : unit)) * kPrime;
      value_ ^= value_ >> 32U;
    }
  }

  std::uint64_t value_ = 0x243F6A8885A308D3ULL;
};

}  // namespace vornixpath
