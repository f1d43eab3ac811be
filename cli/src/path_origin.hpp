#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <optional>
#include <string>

#include "command_line.hpp"

namespace vornixpath {

/// Where the folders of a path come from.
struct PathOrigin {
  std::string words;                                             ///< "VORNIX_PATH", safe for a terminal
  std::optional<foundation::storage::vfs::AbsoluteIRI> session;  ///< the file of the session, if it is one
};

/// What ListFor asks under the same options. Throws UsageError when the default session is needed and there is none.
[[nodiscard]] PathOrigin OriginOf(const PathOptions& options);

}  // namespace vornixpath
