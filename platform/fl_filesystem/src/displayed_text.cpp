// Escapes whatever could act on a terminal instead of being shown by it. One pass.
#include <fl/filesystem/displayed_text.hpp>

#include "surrogates.hpp"
#include "utf8.hpp"

namespace fl::filesystem {

namespace {

constexpr bool is_control(char32_t code) noexcept { return code < 0x20 || (code >= 0x7F && code <= 0x9F); }

constexpr bool is_bidirectional_control(char32_t code) noexcept {
  return code == 0x061C || code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E) ||
         (code >= 0x2066 && code <= 0x2069);
}

constexpr bool breaks_a_line(char32_t code) noexcept { return code == 0x2028 || code == 0x2029; }

constexpr bool is_shown_raw(char32_t code) noexcept {
  return !is_control(code) && !is_bidirectional_control(code) && !breaks_a_line(code) && !is_surrogate(code) &&
         code != 0xFEFF;
}

std::string hexadecimal(char32_t code) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string text;
  for (; code != 0 || text.empty(); code >>= 4) text.insert(text.begin(), digits[code & 0xF]);
  return text;
}

void append_escaped(std::string& shown, char32_t code) {
  if (is_stray_byte(code)) {
    shown += "\\x" + hexadecimal(stray_byte(code));
  } else {
    shown += "\\u{" + hexadecimal(code) + "}";
  }
}

}  // namespace

std::string to_displayed_text(std::u16string_view text) {
  std::string shown;
  shown.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const char32_t code = next_code_point(text, position);
    if (code == U'\\') {
      shown += "\\\\";
    } else if (is_shown_raw(code)) {
      append_utf8(shown, code);
    } else {
      append_escaped(shown, code);
    }
  }
  return shown;
}

}  // namespace fl::filesystem
