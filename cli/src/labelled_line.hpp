// Lines that tell one thing each behind a label, one below another.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vornixpath {

/// "1 folder", "2 folders".
[[nodiscard]] std::string Counted(std::size_t count, std::string_view thing);

/// Writes one such line to standard output; `text` must be safe for a terminal already.
void WriteLabelled(std::string_view label, std::string_view text);

}  // namespace vornixpath
