#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vornixpath {

/// A part of a text of help.
struct HelpPart {
  enum class Kind {
    Paragraph,
    Item,    ///< a term, and what is said of it
    Example  ///< what may be typed
  };
  Kind kind;
  std::string term;  ///< of an item
  std::string text;  ///< on one line
};

/// What the lines of a text of help are: two spaces end the term of an item, a line that is set off further than the
/// one before it goes on with that item, and one that is set off and begins with the program's name is an example.
[[nodiscard]] std::vector<HelpPart> PartsOfHelp(std::string_view text);

}  // namespace vornixpath
