#include "labelled_line.hpp"

#include <algorithm>

#include "output.hpp"

namespace vornixpath {

std::string Counted(std::size_t count, std::string_view thing) {
  return std::to_string(count) + ' ' + std::string(thing) + (count == 1 ? "" : "s");
}

void WriteLabelled(std::string_view label, std::string_view text) {
  constexpr std::size_t kWidth = 11;
  const std::string blanks(kWidth - std::min(label.size(), kWidth - 1), ' ');
  WriteSafeResult(std::string(label).append(blanks).append(text), OutputForm::Lines);
}

}  // namespace vornixpath
