#pragma once

#include <search_path_interfaces/search_target.hpp>
#include <search_path_utilities/lookup.hpp>
#include <string>
#include <vector>

namespace vornixpath {

/// A name as it was typed, and the extensions to try.
struct Question {
  std::u16string name;
  std::vector<std::u16string> extensions;

  /// Borrows from this object.
  [[nodiscard]] Quorvex::PathManagement::detail::SearchTarget Target() const {
    return Quorvex::PathManagement::CreateSearchTargetWithExtensionInFilenamePreferred(name, extensions);
  }
};

}  // namespace vornixpath
