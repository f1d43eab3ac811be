#include "extension_list.hpp"

#include <algorithm>

namespace vornixpath {

std::vector<std::u16string> ExtensionsFromText(const std::u16string& text) {
  std::vector<std::u16string> extensions;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(u',', begin), text.size());
    const std::u16string extension = text.substr(begin, end - begin);
    const bool needsDot = !extension.empty() && extension.front() != u'.';
    extensions.push_back(needsDot ? u'.' + extension : extension);
    begin = end + 1;
  }
  return extensions;
}

}  // namespace vornixpath
