#pragma once

#include <foundation/storage/vfs/exception.hpp>
#include <string>

namespace vornixpath {

/// Why storage failed, without saying where.
[[nodiscard]] std::string ReasonOf(const foundation::storage::vfs::Exception& failure);

/// What failed, where and why, with the path in place of the identifier: `cannot open "/a/f": Permission denied`. Safe
/// for a terminal.
[[nodiscard]] std::string InWords(const foundation::storage::vfs::Exception& failure);

}  // namespace vornixpath
