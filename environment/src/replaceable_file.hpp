// What may be put in the place of a file, and what a failure left behind.
#pragma once

#include <search_path_environment/whole_file.hpp>

namespace Quorvex::PathEnvironment {

/// Whether there is a file, a folder or whatever at `location`, or at the end of the link that it is. Throws the
/// storage layer's Exception.
[[nodiscard]] bool IsThere(const foundation::storage::vfs::IStorageProvider& storage,
                           const foundation::storage::vfs::AbsoluteIRI& location);

/// Throws the storage layer's Exception, with std::errc::operation_not_supported, for what is there and no regular
/// file, and for a link that leads nowhere: putting a file in its place would lose it.
void RequireReplaceable(const foundation::storage::vfs::IStorageProvider& storage,
                        const foundation::storage::vfs::AbsoluteIRI& file);

/// RemoveIfThere while another failure is under way, which is the one to be told: whether the file is gone.
bool Sweep(const foundation::storage::vfs::IStorageProvider& storage,
           const foundation::storage::vfs::AbsoluteIRI& file) noexcept;

}  // namespace Quorvex::PathEnvironment
