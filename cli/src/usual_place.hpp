#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <optional>
#include <string>

namespace vornixpath {

/// The location of `place`, such as "/vornixpath/path", below the folder that the environment variable `variable`
/// names; nothing when that is no absolute path.
[[nodiscard]] std::optional<foundation::storage::vfs::AbsoluteIRI> PlaceBelow(const char* variable,
                                                                              const std::string& place);

}  // namespace vornixpath
