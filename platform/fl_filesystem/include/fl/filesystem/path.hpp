// A file-system path as UTF-16 text.
//
// A path is a value that keeps its text as given: nothing is normalised, made absolute or looked up on disk. Safe to
// read from many threads. The helpers in `detail` cut such texts; they follow the build's style unless a style is
// named.
#pragma once

#include <fl/filesystem/export.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <string>
#include <utility>

namespace fl::filesystem {

namespace detail {

/// Whose rules a path text follows.
enum class path_style { posix, windows };

/// The rules of the system this was built for.
#ifdef _WIN32
inline constexpr path_style native_style = path_style::windows;
#else
inline constexpr path_style native_style = path_style::posix;
#endif

/// `text` with the separators of the style: on windows each '/' becomes a backslash; on posix that is an ordinary
/// character.
///
/// With `collapse`, runs of separators shrink to one and a trailing separator goes, but never the root's (`/`, `C:\`);
/// the leading pair of `\\server` and `\\?\` survives. Idempotent.
[[nodiscard]] FL_FILESYSTEM_EXPORT std::u16string make_native_form(const std::u16string& text, bool collapse);
/// The same by the rules of `style`.
[[nodiscard]] FL_FILESYSTEM_EXPORT std::u16string make_native_form(const std::u16string& text, bool collapse,
                                                                   path_style style);

/// The root that `text` begins with, as spelled; empty when it is relative.
///
/// posix: the leading run of '/'. windows, with either separator: `C:\`, `C:`, `\`, `\\server\share\`, `\\?\C:\`,
/// `\\?\UNC\server\share\`.
[[nodiscard]] FL_FILESYSTEM_EXPORT std::u16string extract_root_path(const std::u16string& text);
/// The same by the rules of `style`.
[[nodiscard]] FL_FILESYSTEM_EXPORT std::u16string extract_root_path(const std::u16string& text, path_style style);

/// The last component of `text`; empty when it ends in a separator or is all root.
[[nodiscard]] FL_FILESYSTEM_EXPORT std::u16string extract_filename(const std::u16string& text);
/// The same by the rules of `style`.
[[nodiscard]] FL_FILESYSTEM_EXPORT std::u16string extract_filename(const std::u16string& text, path_style style);

/// The extension of the last component, from its last dot on, unless that dot is its first character: ".hidden" has
/// none, "foo." has ".".
[[nodiscard]] FL_FILESYSTEM_EXPORT std::u16string extract_extension(const std::u16string& text);
/// The same by the rules of `style`.
[[nodiscard]] FL_FILESYSTEM_EXPORT std::u16string extract_extension(const std::u16string& text, path_style style);

template <class Narrow, class Wide>
struct path_traits;

/// How `basic_path<char, char16_t>` relates its text to bytes and cuts it.
template <>
struct path_traits<char, char16_t> {
  /// See to_bytes.
  [[nodiscard]] static std::string to_narrow(const std::u16string& text) { return to_bytes(text); }
  /// See extract_filename.
  [[nodiscard]] static std::u16string filename_of(const std::u16string& text) { return extract_filename(text); }
  /// See extract_extension.
  [[nodiscard]] static std::u16string extension_of(const std::u16string& text) { return extract_extension(text); }
};

}  // namespace detail

/// A path, held as the text it was made from. Equal when the texts are.
template <class Narrow, class Wide, class Traits>
class basic_path {
 public:
  /// Text as the system keeps it.
  using narrow_string = std::basic_string<Narrow>;
  /// Text as it is held here.
  using wide_string = std::basic_string<Wide>;

  basic_path() = default;
  /// Keeps `text` as it is, whatever it holds.
  explicit basic_path(wide_string text) noexcept : text_(std::move(text)) {}

  /// The text as it was given.
  [[nodiscard]] const wide_string& u16string() const& noexcept { return text_; }
  /// The same, taken out of a path that is about to go.
  [[nodiscard]] wide_string u16string() && noexcept { return std::move(text_); }
  /// The bytes that name this path to the system. Throws encoding_error when the text stands for none.
  [[nodiscard]] narrow_string string() const { return Traits::to_narrow(text_); }
  /// See detail::extract_filename.
  [[nodiscard]] wide_string filename() const { return Traits::filename_of(text_); }
  /// See detail::extract_extension.
  [[nodiscard]] wide_string extension() const { return Traits::extension_of(text_); }
  /// Whether there is no text at all; "." is one.
  [[nodiscard]] bool empty() const noexcept { return text_.empty(); }

  friend bool operator==(const basic_path&, const basic_path&) = default;

 private:
  wide_string text_;
};

/// The path of this library: bytes outside, UTF-16 inside.
using path = basic_path<char, char16_t, detail::path_traits<char, char16_t>>;

}  // namespace fl::filesystem
