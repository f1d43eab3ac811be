#include "shell_word.hpp"

#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>

#include "location_text.hpp"
#include "output.hpp"

namespace vornixpath {

std::string ShellWord(std::string_view text) {
  std::string word = "'";
  for (const char character : text) {
    if (character == '\'') {
      word += R"('\'')";
    } else {
      word += character;
    }
  }
  return word += '\'';
}

std::string ShellWord(const foundation::storage::vfs::AbsoluteIRI& location) {
  const std::u16string text = TextOf(location);
  const std::string shown = fl::filesystem::to_displayed_text(text);
  // A text that is shown as it is reads back as the same text.
  const bool isShownExactly = fl::filesystem::from_bytes(shown) == text;
  return ShellWord(isShownExactly ? shown : ExactText(location));
}

}  // namespace vornixpath
