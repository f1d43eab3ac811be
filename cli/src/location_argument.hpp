#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string>

namespace vornixpath {

/// The folder that the argument `bytes` names: an identifier, or a path against the current folder. Throws UsageError
/// when it is malformed.
[[nodiscard]] foundation::storage::vfs::AbsoluteIRI LocationFromArgument(const std::string& bytes);

}  // namespace vornixpath
