#pragma once

#include <foundation/storage/vfs/storage_provider.hpp>
#include <optional>

namespace vornixpath {

/// What stands at `location`, links followed; none when nothing does. Throws the storage layer's Exception for any
/// other failure.
[[nodiscard]] std::optional<foundation::storage::vfs::FileKind> KindAt(
    const foundation::storage::vfs::IStorageProvider& storage, const foundation::storage::vfs::AbsoluteIRI& location);

}  // namespace vornixpath
