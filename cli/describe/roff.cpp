#include "roff.hpp"

#include <sstream>

namespace vornixpath {

namespace {

// Some would become typographic, and could no longer be copied into a shell.
std::string_view EscapeOf(char character) {
  switch (character) {
    case '\\':
      return "\\(rs";
    case '-':
      return "\\-";
    case '\'':
      return "\\(aq";
    case '"':
      return "\\(dq";
    case '`':
      return "\\(ga";
    case '~':
      return "\\(ti";
    case '^':
      return "\\(ha";
    default:
      return {};
  }
}

}  // namespace

std::string Roff(std::string_view text) {
  std::string escaped;
  if (text.starts_with('.')) escaped += "\\&";  // or the line would be a macro
  for (const char character : text) {
    const std::string_view escape = EscapeOf(character);
    if (escape.empty()) {
      escaped += character;
    } else {
      escaped += escape;
    }
  }
  return escaped;
}

std::string RoffLines(const std::string& text) {
  constexpr std::size_t longest = 80;
  std::string lines;
  std::string line;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    const std::string escaped = Roff(word);
    if (line.empty()) {
      line = escaped;
    } else if (line.size() + 1 + escaped.size() <= longest) {
      line += " " + escaped;
    } else {
      lines += line + "\n";
      line = escaped;
    }
  }
  return line.empty() ? lines : lines + line + "\n";
}

}  // namespace vornixpath
