#include "help_text.hpp"

#include <algorithm>
#include <sstream>
#include <utility>

namespace vornixpath {

namespace {

class HelpReader {
 public:
  void Read(const std::string& line) {
    const std::size_t indent = std::min(line.find_first_not_of(' '), line.size());
    const std::string text = line.substr(indent);
    if (text.empty()) {
      open_ = Open::Nothing;
    } else if (open_ == Open::Item && indent > itemIndent_) {
      GoOn(text);
    } else if (indent > 0 && text.starts_with("vornixpath ")) {
      Begin(HelpPart::Kind::Example, "", text, Open::Nothing);
    } else if (const std::size_t gap = text.find("  "); indent > 0 || gap != std::string::npos) {
      itemIndent_ = indent;
      const std::size_t said = text.find_first_not_of(' ', std::min(gap, text.size()));
      Begin(HelpPart::Kind::Item, text.substr(0, gap), said == std::string::npos ? "" : text.substr(said), Open::Item);
    } else if (open_ == Open::Paragraph && !text.starts_with("Exit status:")) {
      GoOn(text);
    } else {
      Begin(HelpPart::Kind::Paragraph, "", text, Open::Paragraph);
    }
  }

  std::vector<HelpPart> parts;

 private:
  enum class Open { Nothing, Paragraph, Item };

  void GoOn(const std::string& text) { parts.back().text += " " + text; }

  void Begin(HelpPart::Kind kind, const std::string& term, const std::string& text, Open open) {
    parts.push_back({kind, term, text});
    open_ = open;
  }

  Open open_ = Open::Nothing;
  std::size_t itemIndent_ = 0;
};

}  // namespace

std::vector<HelpPart> PartsOfHelp(std::string_view text) {
  HelpReader reader;
  std::istringstream lines{std::string(text)};
  for (std::string line; std::getline(lines, line);) reader.Read(line);
  return std::move(reader.parts);
}

}  // namespace vornixpath
