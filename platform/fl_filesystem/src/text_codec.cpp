// Bytes to UTF-16 and back, losing nothing: one pass each way. Well-formed UTF-8 is what the Unicode standard's table
// 3-7 says it is.
#include <algorithm>
#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>

#include "surrogates.hpp"
#include "utf8.hpp"

namespace fl::filesystem {

namespace {

/// What the first byte of a sequence tells: how long it is, its own bits, and which second bytes rule out overlong
/// forms, surrogates and codes beyond Unicode.
struct Lead {
  std::size_t length;
  char32_t bits;
  unsigned char second_min;
  unsigned char second_max;
};

constexpr Lead lead_of(unsigned char byte) noexcept {
  if (byte < 0x80) return {1, byte, 0, 0};
  if (byte < 0xC2) return {0, 0, 0, 0};
  if (byte < 0xE0) return {2, byte & 0x1FU, 0x80, 0xBF};
  if (byte == 0xE0) return {3, 0x0, 0xA0, 0xBF};
  if (byte == 0xED) return {3, 0xD, 0x80, 0x9F};
  if (byte < 0xF0) return {3, byte & 0x0FU, 0x80, 0xBF};
  if (byte == 0xF0) return {4, 0x0, 0x90, 0xBF};
  if (byte < 0xF4) return {4, byte & 0x07U, 0x80, 0xBF};
  if (byte == 0xF4) return {4, 0x4, 0x80, 0x8F};
  return {0, 0, 0, 0};
}

constexpr bool is_within(unsigned char byte, unsigned char low, unsigned char high) noexcept {
  return byte >= low && byte <= high;
}

struct Decoded {
  char32_t code;
  std::size_t length;
};

/// The code point that `bytes` begins with, or its first byte alone as a stray one.
constexpr Decoded decode_first(std::string_view bytes) noexcept {
  const auto at = [bytes](std::size_t index) { return static_cast<unsigned char>(bytes[index]); };
  const Decoded stray{static_cast<char32_t>(0xDC00 + at(0)), 1};
  const Lead lead = lead_of(at(0));
  if (lead.length == 0 || lead.length > bytes.size()) return stray;
  if (lead.length > 1 && !is_within(at(1), lead.second_min, lead.second_max)) return stray;

  char32_t code = lead.bits;
  for (std::size_t index = 1; index < lead.length; ++index) {
    if (!is_within(at(index), 0x80, 0xBF)) return stray;
    code = (code << 6) | (at(index) & 0x3FU);
  }
  return {code, lead.length};
}

void append_utf16(std::u16string& text, char32_t code) {
  if (code < 0x10000) {
    text.push_back(static_cast<char16_t>(code));
    return;
  }
  text.push_back(static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10)));
  text.push_back(static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF)));
}

}  // namespace

encoding_error::encoding_error(std::u16string_view text)
    : std::runtime_error("no bytes stand for \"" + to_displayed_text(text) + "\": it holds half a character") {}

encoding_error::~encoding_error() = default;

std::u16string from_bytes(std::string_view bytes) {
  // Most names are ASCII throughout, and those are copied at once.
  const auto is_other = [](char byte) { return (static_cast<unsigned char>(byte) & 0x80U) != 0; };
  const auto others = std::find_if(bytes.begin(), bytes.end(), is_other);
  std::u16string text(bytes.begin(), others);
  bytes.remove_prefix(text.size());
  if (bytes.empty()) return text;

  text.reserve(text.size() + bytes.size());
  while (!bytes.empty()) {
    const Decoded decoded = decode_first(bytes);
    append_utf16(text, decoded.code);
    bytes.remove_prefix(decoded.length);
  }
  return text;
}

std::string to_bytes(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const char32_t code = next_code_point(text, position);
    if (is_stray_byte(code)) {
      bytes.push_back(static_cast<char>(stray_byte(code)));
    } else if (is_surrogate(code)) {
      throw encoding_error(text);
    } else {
      append_utf8(bytes, code);
    }
  }
  return bytes;
}

}  // namespace fl::filesystem
