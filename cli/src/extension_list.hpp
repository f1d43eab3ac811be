#pragma once

#include <string>
#include <vector>

namespace vornixpath {

/// The extensions that `text` lists, separated by commas: "h" and ".h" both mean ".h", an empty element means none.
[[nodiscard]] std::vector<std::u16string> ExtensionsFromText(const std::u16string& text);

}  // namespace vornixpath
