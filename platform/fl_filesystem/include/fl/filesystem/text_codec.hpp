// The codec between file names as bytes and file names as UTF-16.
//
// Most systems keep names as bytes that are UTF-8 by custom only. Every byte string survives the way to UTF-16 and
// back: a byte that is no part of well-formed UTF-8 becomes a lone low surrogate, U+DC80 to U+DCFF. Pure functions,
// safe from any thread; no storage is touched.
#pragma once

#include <fl/filesystem/export.hpp>
#include <stdexcept>
#include <string>
#include <string_view>

namespace fl::filesystem {

/// A UTF-16 text stands for no byte string. The message quotes the text, with everything unprintable escaped.
class FL_FILESYSTEM_EXPORT encoding_error : public std::runtime_error {
 public:
  /// About `text`, the whole of what was to be encoded.
  explicit encoding_error(std::u16string_view text);
  encoding_error(const encoding_error&) noexcept = default;
  encoding_error& operator=(const encoding_error&) noexcept = default;
  ~encoding_error() override;
};

/// The text of `bytes`: UTF-8 decoded, each stray byte b (overlong forms and encoded surrogates are stray) as U+DC00 +
/// b. Any input is accepted, and `to_bytes` gives it back unchanged. O(n).
[[nodiscard]] FL_FILESYSTEM_EXPORT std::u16string from_bytes(std::string_view bytes);

/// The bytes of `text`: UTF-8, and for each lone U+DC80 to U+DCFF the stray byte it stands for. O(n).
///
/// Throws encoding_error for any other lone surrogate. Two texts can have the same bytes: stray halves that stand side
/// by side may form a character together. `from_bytes(to_bytes(text))` is the one spelling that `from_bytes` gives.
[[nodiscard]] FL_FILESYSTEM_EXPORT std::string to_bytes(std::u16string_view text);

}  // namespace fl::filesystem
