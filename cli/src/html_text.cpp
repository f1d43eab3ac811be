#include "html_text.hpp"

#include <fl/filesystem/displayed_text.hpp>

#include "location_text.hpp"

namespace vornixpath {

namespace {

std::string_view ReferenceFor(char character) {
  switch (character) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&#39;";
    default:
      return {};
  }
}

}  // namespace

std::string HtmlText(std::string_view text) {
  std::string html;
  html.reserve(text.size());
  for (const char character : text) {
    const std::string_view reference = ReferenceFor(character);
    if (reference.empty()) {
      html += character;
    } else {
      html += reference;
    }
  }
  return html;
}

std::string HtmlText(std::u16string_view text) { return HtmlText(fl::filesystem::to_displayed_text(text)); }

std::string HtmlPath(const foundation::storage::vfs::AbsoluteIRI& location) {
  const std::string text = HtmlText(ShownText(location));
  std::string html;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool beginsName = text[i] == '/' && i > 0 && text[i - 1] != '/' && text[i - 1] != ':';
    if (beginsName) html += "<wbr>";
    html += text[i];
  }
  return html;
}

}  // namespace vornixpath
