// How path texts are cut: roots, separators, last components. All by text, in one pass, for either style on any
// system.
#include <algorithm>
#include <fl/filesystem/path.hpp>
#include <string_view>

namespace fl::filesystem::detail {

namespace {

/// The separators of one style.
class Separators {
 public:
  explicit Separators(path_style style) noexcept : isWindows_(style == path_style::windows) {}

  [[nodiscard]] bool Contain(char16_t unit) const noexcept { return unit == u'/' || (isWindows_ && unit == u'\\'); }

  /// Whether `text` holds a separator at `position`; past the end there is none.
  [[nodiscard]] bool IsAt(std::u16string_view text, std::size_t position) const noexcept {
    return position < text.size() && Contain(text[position]);
  }

  /// The end of the run of separators, or of other characters, that begins at `position`.
  [[nodiscard]] std::size_t EndOfRun(std::u16string_view text, std::size_t position) const noexcept {
    while (IsAt(text, position)) ++position;
    return position;
  }
  [[nodiscard]] std::size_t EndOfName(std::u16string_view text, std::size_t position) const noexcept {
    while (position < text.size() && !Contain(text[position])) ++position;
    return position;
  }

 private:
  bool isWindows_;
};

constexpr bool is_letter(char16_t unit) noexcept {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

bool has_drive_at(std::u16string_view text, std::size_t position) noexcept {
  return position + 1 < text.size() && is_letter(text[position]) && text[position + 1] == u':';
}

/// Exactly two separators, then a name: the beginning of "\\server" and of "\\?\".
bool has_server_pair(std::u16string_view text, const Separators& separators) noexcept {
  return text.size() > 2 && separators.EndOfRun(text, 0) == 2;
}

bool has_verbatim_prefix(std::u16string_view text, const Separators& separators) noexcept {
  return has_server_pair(text, separators) && text[2] == u'?' && separators.IsAt(text, 3);
}

/// Whether "UNC" and a separator stand at `position`, in any letter case.
bool has_unc_at(std::u16string_view text, std::size_t position, const Separators& separators) noexcept {
  const auto is_unit = [](char16_t unit, char16_t upper) { return (unit & ~0x20) == upper; };
  return position + 3 < text.size() && is_unit(text[position], u'U') && is_unit(text[position + 1], u'N') &&
         is_unit(text[position + 2], u'C') && separators.Contain(text[position + 3]);
}

std::size_t end_of_share(std::u16string_view text, std::size_t server, const Separators& separators) noexcept {
  const std::size_t share = separators.EndOfRun(text, separators.EndOfName(text, server));
  return separators.EndOfRun(text, separators.EndOfName(text, share));
}

std::size_t windows_root_length(std::u16string_view text) noexcept {
  const Separators separators(path_style::windows);
  if (has_verbatim_prefix(text, separators)) {
    const std::size_t rest = separators.EndOfRun(text, 3);
    if (has_unc_at(text, rest, separators)) return end_of_share(text, separators.EndOfRun(text, rest + 3), separators);
    return has_drive_at(text, rest) ? separators.EndOfRun(text, rest + 2) : rest;
  }
  if (has_server_pair(text, separators)) return end_of_share(text, 2, separators);
  return separators.EndOfRun(text, has_drive_at(text, 0) ? 2 : 0);
}

std::size_t root_length(std::u16string_view text, path_style style) noexcept {
  if (style == path_style::windows) return windows_root_length(text);
  return Separators(style).EndOfRun(text, 0);
}

std::u16string_view filename_in(std::u16string_view text, path_style style) noexcept {
  const Separators separators(style);
  std::size_t start = text.size();
  const std::size_t root = root_length(text, style);
  while (start > root && !separators.Contain(text[start - 1])) --start;
  return text.substr(start);
}

std::u16string collapse_separators(std::u16string_view text, path_style style) {
  const Separators separators(style);
  const std::size_t kept = style == path_style::windows && has_server_pair(text, separators) ? 1 : 0;

  std::u16string collapsed(text.substr(0, kept));
  for (std::size_t position = kept; position < text.size(); ++position) {
    const bool isRepeat = position > kept && separators.IsAt(text, position) && separators.IsAt(text, position - 1);
    if (!isRepeat) collapsed.push_back(text[position]);
  }
  if (collapsed.size() > root_length(collapsed, style) && separators.Contain(collapsed.back())) collapsed.pop_back();
  return collapsed;
}

}  // namespace

std::u16string make_native_form(const std::u16string& text, bool collapse, path_style style) {
  std::u16string native = text;
  if (style == path_style::windows) std::replace(native.begin(), native.end(), u'/', u'\\');
  return collapse ? collapse_separators(native, style) : native;
}

std::u16string make_native_form(const std::u16string& text, bool collapse) {
  return make_native_form(text, collapse, native_style);
}

std::u16string extract_root_path(const std::u16string& text, path_style style) {
  return text.substr(0, root_length(text, style));
}

std::u16string extract_root_path(const std::u16string& text) { return extract_root_path(text, native_style); }

std::u16string extract_filename(const std::u16string& text, path_style style) {
  return std::u16string(filename_in(text, style));
}

std::u16string extract_filename(const std::u16string& text) { return extract_filename(text, native_style); }

std::u16string extract_extension(const std::u16string& text, path_style style) {
  const std::u16string_view name = filename_in(text, style);
  const std::size_t dot = name.rfind(u'.');
  if (dot == std::u16string_view::npos || dot == 0) return {};
  return std::u16string(name.substr(dot));
}

std::u16string extract_extension(const std::u16string& text) { return extract_extension(text, native_style); }

}  // namespace fl::filesystem::detail
