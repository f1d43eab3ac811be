#include "windows_name.hpp"

#include <algorithm>
#include <array>
#include <fl/filesystem/case_folding.hpp>
#include <fl/filesystem/displayed_text.hpp>

namespace vornixpath {

namespace {

// As Windows does, not only up to the dot: what stands before it may end in blanks.
std::u16string_view WithoutExtension(std::u16string_view name) {
  const std::u16string_view base = name.substr(0, name.find(u'.'));
  return base.substr(0, base.find_last_not_of(u' ') + 1);  // npos + 1 is 0
}

bool IsDevice(std::u16string_view base) {
  constexpr std::array<std::u16string_view, 4> kNames = {u"con", u"prn", u"aux", u"nul"};
  const std::u16string folded = fl::filesystem::fold_case(base);
  if (std::find(kNames.begin(), kNames.end(), folded) != kNames.end()) return true;
  return folded.size() == 4 && (folded.starts_with(u"com") || folded.starts_with(u"lpt")) && folded[3] >= u'1' &&
         folded[3] <= u'9';
}

}  // namespace

std::string ReasonAgainst(std::u16string_view name) {
  if (name.empty()) return "";
  const std::size_t refused = name.find_first_of(u"<>:\"|?*\\/");
  if (refused != std::u16string_view::npos) {
    return std::string("it holds the character ") + static_cast<char>(name[refused]);
  }
  if (std::any_of(name.begin(), name.end(), [](char16_t unit) { return unit < 0x20; })) {
    return "it holds a control character";
  }
  if (name.back() == u'.') return "it ends in a dot";
  if (name.back() == u' ') return "it ends in a blank";
  const std::u16string_view base = WithoutExtension(name);
  if (IsDevice(base)) return fl::filesystem::to_displayed_text(base) + " is a device there";
  return "";
}

}  // namespace vornixpath
