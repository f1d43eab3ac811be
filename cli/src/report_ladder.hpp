#pragma once

#include <cstddef>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string>
#include <vector>

#include "folder_state.hpp"
#include "path_findings.hpp"

namespace vornixpath {

/// A folder of the path as it was given, and what it contributes.
struct Rung {
  std::size_t number;  ///< from 1
  foundation::storage::vfs::AbsoluteIRI location;
  FolderState state;                 ///< "masked", too
  std::vector<std::string> remarks;  ///< what in it could not be read; safe for a terminal
  std::size_t files = 0;             ///< that offer a name: in it, its packages and its classes
  std::size_t packages = 0;
  std::size_t classes = 0;
  std::size_t hidden = 0;  ///< its names that are hidden, as `shadows` counts them
  std::size_t hides = 0;   ///< names of other folders that it hides
};

/// All folders of the path, repeats and masked ones included, in order.
[[nodiscard]] std::vector<Rung> LadderOf(const KnownPath& known);

[[nodiscard]] std::string LadderHtml(const std::vector<Rung>& ladder);

/// A number that leads to the folder's place on the ladder.
[[nodiscard]] std::string RungLink(std::size_t number);

}  // namespace vornixpath
