#pragma once

#include <optional>

#include "side_by_side.hpp"

namespace vornixpath {

/// How to lay out what goes to standard output; nothing when that is no terminal. The width is that of COLUMNS, else
/// the terminal's own, else 80; there are no colours when NO_COLOR is not empty, or TERM is "dumb".
[[nodiscard]] std::optional<Layout> LayoutOfTerminal();

}  // namespace vornixpath
