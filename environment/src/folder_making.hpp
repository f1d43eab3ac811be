// Folders that may already be there, for several processes at once.
#pragma once

#include <foundation/storage/vfs/storage_provider.hpp>

namespace Quorvex::PathEnvironment {

/// Makes `folder` unless it is there; its parent must be.
void MakeFolder(const foundation::storage::vfs::IStorageProvider& storage,
                const foundation::storage::vfs::AbsoluteIRI& folder);

/// Makes `folder` and all folders above it that are missing, safe from a power failure.
void MakeFolderWithParents(const foundation::storage::vfs::IStorageProvider& storage,
                           const foundation::storage::vfs::AbsoluteIRI& folder);

}  // namespace Quorvex::PathEnvironment
