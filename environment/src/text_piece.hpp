// A piece of packed text, whichever way it is packed.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
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

  /// The same into `text`, whose room is used again.
  void CopyTo(std::u16string& text) const {
    if (narrow_ != nullptr) {
      text.assign(narrow_, narrow_ + size_);
    } else {
      text.assign(wide_, size_);
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
    return AreEqual(piece.narrow_, std::to_address(text.begin()), piece.size_);
  }

 private:
  // Four at a time, the last ones overlapping: this is where a lookup makes sure that it has found its name.
  static bool AreEqual(const unsigned char* narrow, const char16_t* wide, std::size_t size) noexcept {
    constexpr std::size_t step = 4;
    if (size < step) return std::equal(narrow, narrow + size, wide);
    for (std::size_t i = 0; i < size - step; i += step) {
      if (Widened(narrow + i) != WordAt(wide + i)) return false;
    }
    return Widened(narrow + size - step) == WordAt(wide + size - step);
  }

  // Four bytes as they would stand in four code units.
  static std::uint64_t Widened(const unsigned char* narrow) noexcept {
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, narrow, sizeof bytes);
    const std::uint64_t halves = (bytes | (std::uint64_t{bytes} << 16U)) & 0x0000'FFFF'0000'FFFF;
    return (halves | (halves << 8U)) & 0x00FF'00FF'00FF'00FF;
  }
  static std::uint64_t WordAt(const char16_t* wide) noexcept {
    std::uint64_t word = 0;
    std::memcpy(&word, wide, sizeof word);
    return word;
  }

  const unsigned char* narrow_;  // null for wide units
  const char16_t* wide_;
  std::size_t size_;
};

}  // namespace Quorvex::PathEnvironment
