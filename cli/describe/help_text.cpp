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
    } else if (GoesOn(indent, text)) {
      parts.back().text += " " + text;
    } else if (indent > 0 && text.starts_with("vornixpath ")) {
      Begin(HelpPart::Kind::Example, "", text, Open::Nothing);
    } else if (const std::size_t gap = text.find("  "); indent > 0 || gap != std::string::npos) {
      itemIndent_ = indent;
      const std::size_t said = text.find_first_not_of(' ', std::min(gap, text.size()));
      Begin(HelpPart::Kind::Item, text.substr(0, gap), said == std::string::npos ? "" : text.substr(said), Open::Item);
    } else {
      Begin(HelpPart::Kind::Paragraph, "", text, Open::Paragraph);
    }
  }

  std::vector<HelpPart> parts;

 private:
  enum class Open { Nothing, Paragraph, Item };

  bool GoesOn(std::size_t indent, const std::string& text) const {
    if (open_ == Open::Item) return indent > itemIndent_;
    const bool isSentence = indent == 0 && text.find("  ") == std::string::npos;
    return open_ == Open::Paragraph && isSentence && !text.starts_with("Exit status:");
  }

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
