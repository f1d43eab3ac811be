// A piece of packed text, whichever way it is packed.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace Quorvex::PathEnvironment {

/// UTF-16 code units that somebody else holds, either as they are or, where each is below 256, a byte each. A value;
/// valid as long as what it points to.
class TextPiece {
 public:
  TextPiece(const unsigned char* narrow, std::size_t size) noexcept : narrow_(narrow), wide_(nullptr), size_(size) {}
  TextPiece(const char16_t* wide, std::size_t size) noexcept : narrow_(nullptr), wide_(wide), size_(size) {}

  [[nodiscard]] std::size_t size() const noexcept { return size_; }

  [[nodiscard]] TextPiece First(std::size_t count) const noexcept {
    return narrow_ != nullptr ? TextPiece(narrow_, count) : TextPiece(wide_, count);
  }
  [[nodiscard]] TextPiece After(std::size_t count) const noexcept {
    return narrow_ != nullptr ? TextPiece(narrow_ + count, size_ - count) : TextPiece(wide_ + count, size_ - count);
  }

  [[nodiscard]] std::u16string ToString() const {
    return narrow_ != nullptr ? std::u16string(narrow_, narrow_ + size_) : std::u16string(wide_, size_);
  }

  /// To `size()` units at `target`.
  void CopyTo(char16_t* target) const noexcept {
    if (narrow_ != nullptr) {
      std::copy_n(narrow_, size_, target);
    } else {
      std::copy_n(wide_, size_, target);
    }
  }

  /// Three-way, code unit by code unit.
  [[nodiscard]] int Compare(std::u16string_view text) const noexcept {
    const std::size_t common = std::min(size_, text.size());
    for (std::size_t i = 0; i < common; ++i) {
      const char16_t unit = narrow_ != nullptr ? narrow_[i] : wide_[i];
      if (unit != text[i]) return unit < text[i] ? -1 : 1;
    }
    return size_ == text.size() ? 0 : (size_ < text.size() ? -1 : 1);
  }

  friend bool operator==(TextPiece piece, std::u16string_view text) noexcept {
    if (piece.size_ != text.size()) return false;
    if (piece.narrow_ == nullptr) return std::u16string_view(piece.wide_, piece.size_) == text;
    return std::equal(piece.narrow_, piece.narrow_ + piece.size_, text.begin());
  }

 private:
  const unsigned char* narrow_;  // null for wide units
  const char16_t* wide_;
  std::size_t size_;
};

}  // namespace Quorvex::PathEnvironment
