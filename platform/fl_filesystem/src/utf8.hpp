// The encoding of one code point.
#pragma once

#include <string>

namespace fl::filesystem {

/// Appends `code`, which is no surrogate, as UTF-8.
inline void append_utf8(std::string& bytes, char32_t code) {
  const auto append = [&bytes](char32_t byte) { bytes.push_back(static_cast<char>(byte)); };
  const auto append_tail = [&append](char32_t bits) { append(0x80 | (bits & 0x3F)); };

  if (code < 0x80) {
    append(code);
  } else if (code < 0x800) {
    append(0xC0 | (code >> 6));
    append_tail(code);
  } else if (code < 0x10000) {
    append(0xE0 | (code >> 12));
    append_tail(code >> 6);
    append_tail(code);
  } else {
    append(0xF0 | (code >> 18));
    append_tail(code >> 12);
    append_tail(code >> 6);
    append_tail(code);
  }
}

}  // namespace fl::filesystem
