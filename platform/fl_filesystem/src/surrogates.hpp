// The arithmetic of UTF-16, shared by the codec and by the display of text.
#pragma once

#include <cstddef>
#include <string_view>

namespace fl::filesystem {

constexpr bool is_high_surrogate(char16_t unit) noexcept { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool is_low_surrogate(char16_t unit) noexcept { return unit >= 0xDC00 && unit <= 0xDFFF; }
constexpr bool is_surrogate(char32_t code) noexcept { return code >= 0xD800 && code <= 0xDFFF; }

/// A lone surrogate that stands for a byte outside well-formed UTF-8.
constexpr bool is_stray_byte(char32_t code) noexcept { return code >= 0xDC80 && code <= 0xDCFF; }
constexpr unsigned char stray_byte(char32_t code) noexcept { return static_cast<unsigned char>(code - 0xDC00); }

/// The code point at `position`, which moves behind it; a lone surrogate is its own code point.
constexpr char32_t next_code_point(std::u16string_view text, std::size_t& position) noexcept {
  const char16_t first = text[position++];
  if (!is_high_surrogate(first) || position == text.size() || !is_low_surrogate(text[position])) return first;

  const char16_t second = text[position++];
  return 0x10000 + ((static_cast<char32_t>(first) - 0xD800) << 10) + (static_cast<char32_t>(second) - 0xDC00);
}

}  // namespace fl::filesystem
