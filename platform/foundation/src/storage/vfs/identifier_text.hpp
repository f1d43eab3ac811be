// The text of identifiers: parsing, the one normal form, percent-encoding. What AbsoluteIRI, the conversion of paths
// and the URL helpers share.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace foundation::storage::vfs::detail {

/// An identifier's text in normal form, and where its parts are.
struct NormalForm {
  std::u16string text;
  std::size_t schemeLength = 0;  ///< the ':' stands here
  std::size_t pathStart = 0;     ///< the root's '/', or the first character of a rootless path
  bool isRootless = false;
};

/// Throws Exception with the whole text when it is no identifier.
[[nodiscard]] NormalForm Normalize(std::u16string_view text);

/// Two or more characters: a letter, then letters, digits, '+', '.' and '-'.
[[nodiscard]] bool IsScheme(std::u16string_view text) noexcept;

/// `scheme` in lower case; throws Exception when it is none.
[[nodiscard]] std::u16string NormalizeScheme(std::u16string_view scheme);

/// How many characters of `text` stand before its first ':' as a well-formed scheme; 0 when there is none.
[[nodiscard]] std::size_t LengthOfScheme(std::u16string_view text) noexcept;

/// The runs of `text` between separators; none is empty.
[[nodiscard]] std::vector<std::u16string> Split(std::u16string_view text, char16_t separator);

/// Appends `segment`, decoded text, with escapes where they are needed. Halves of characters are copied as they are,
/// for Normalize to refuse.
void AppendEscaped(std::u16string& text, std::u16string_view segment);

/// `name` as AbsoluteIRI::getName would give it: the one spelling of its bytes. Throws encoding_error.
[[nodiscard]] std::u16string CanonicalSpelling(std::u16string_view name);

/// `text` with each well-formed escape decoded, adjacent ones as one run of bytes; everything else is copied.
[[nodiscard]] std::u16string DecodeEscapes(std::u16string_view text);

}  // namespace foundation::storage::vfs::detail
