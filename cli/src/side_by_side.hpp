// Two paths beside each other, for people at a terminal.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "path_comparison.hpp"

namespace vornixpath {

/// One of the folders of a path, or a remark.
struct ComparedCell {
  std::optional<ChangeKind> change;
  std::string text;  ///< safe for a terminal

  friend bool operator==(const ComparedCell&, const ComparedCell&) = default;
};

/// What stands on either side. A folder that stands on both at the same place has one row.
struct ComparedRow {
  std::optional<ComparedCell> before;
  std::optional<ComparedCell> after;

  friend bool operator==(const ComparedRow&, const ComparedRow&) = default;
};

/// The folders of both paths in their order. Of more than three in a row that are unchanged only the number is told.
[[nodiscard]] std::vector<ComparedRow> RowsOf(const PathComparison& comparison);

struct Layout {
  std::size_t width;  ///< of the terminal, in columns; 20 at least are taken
  bool isColoured;
};

/// Each row as a line without its end, no wider than the terminal: marks and texts, ` | ` between the two columns. A
/// text that is too long loses its beginning. Pure.
[[nodiscard]] std::vector<std::string> LayOut(const std::vector<ComparedRow>& rows, const Layout& layout);

/// `text` in the colour of a change of that kind, for a terminal.
[[nodiscard]] std::string Coloured(ChangeKind kind, const std::string& text);

}  // namespace vornixpath
