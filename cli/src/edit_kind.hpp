#pragma once

#include <search_path_environment/saved_path_file.hpp>

namespace vornixpath {

/// "addition", "removal" or "undo".
[[nodiscard]] inline const char* NameOf(Quorvex::PathEnvironment::EditKind kind) {
  using Quorvex::PathEnvironment::EditKind;
  switch (kind) {
    case EditKind::Addition:
      return "addition";
    case EditKind::Removal:
      return "removal";
    case EditKind::Undo:
      return "undo";
  }
  return "unknown";
}

}  // namespace vornixpath
