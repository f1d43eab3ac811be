// Small files, read and replaced as a whole. Safe from any thread as far as the storage is.
#pragma once

#include <cstddef>
#include <foundation/storage/vfs/storage_provider.hpp>
#include <initializer_list>
#include <optional>
#include <search_path_environment/export.hpp>
#include <string>
#include <string_view>

namespace Quorvex::PathEnvironment {

/// Far more than any list of folders.
inline constexpr std::size_t kLargestWholeFile = std::size_t{1} << 30U;

/// The bytes of `file`; nothing when there is no such file. Throws the storage layer's Exception, with
/// std::errc::file_too_large for one of more than `largest` bytes, before it is read if it tells its size.
[[nodiscard]] SEARCH_PATH_ENVIRONMENT_EXPORT std::optional<std::string> ReadWholeFile(
    const foundation::storage::vfs::IStorageProvider& storage, const foundation::storage::vfs::AbsoluteIRI& file,
    std::size_t largest = kLargestWholeFile);

/// Whether `file` holds just these bytes, or is not there for none.
[[nodiscard]] SEARCH_PATH_ENVIRONMENT_EXPORT bool Holds(const foundation::storage::vfs::IStorageProvider& storage,
                                                        const foundation::storage::vfs::AbsoluteIRI& file,
                                                        const std::optional<std::string>& bytes);

/// What a replacement outlives.
enum class Durability : bool {
  Whole,    ///< whoever looks sees the old bytes or the new ones, also after this process was killed
  Flushed,  ///< and the new ones are safe from a power failure before they take the place of the old
};

/// What a file is to hold, one piece after the other.
using Pieces = std::initializer_list<std::string_view>;

/// Puts `pieces` in the place of what `file` held, in one step, by way of `draft`, a file in the same folder that no
/// one else writes; what an interrupted call left there is swept. On failure the old bytes are still in place.
SEARCH_PATH_ENVIRONMENT_EXPORT void ReplaceWholeFile(const foundation::storage::vfs::IStorageProvider& storage,
                                                     const foundation::storage::vfs::AbsoluteIRI& file,
                                                     const foundation::storage::vfs::AbsoluteIRI& draft,
                                                     const Pieces& pieces, Durability durability);

/// The same by way of a draft that bears this process's number; on failure that is swept. Where `file` is a link, what
/// it leads to is replaced. Refuses what is there and no regular file, and a link that leads nowhere, with
/// std::errc::operation_not_supported.
SEARCH_PATH_ENVIRONMENT_EXPORT void ReplaceWholeFile(const foundation::storage::vfs::IStorageProvider& storage,
                                                     const foundation::storage::vfs::AbsoluteIRI& file,
                                                     const Pieces& pieces, Durability durability);

/// Whether `file` is a link to something that is not there. Throws the storage layer's Exception.
[[nodiscard]] SEARCH_PATH_ENVIRONMENT_EXPORT bool IsLinkToNowhere(
    const foundation::storage::vfs::IStorageProvider& storage, const foundation::storage::vfs::AbsoluteIRI& file);

/// Removes a file that may already be gone.
SEARCH_PATH_ENVIRONMENT_EXPORT void RemoveIfThere(const foundation::storage::vfs::IStorageProvider& storage,
                                                  const foundation::storage::vfs::AbsoluteIRI& file);

}  // namespace Quorvex::PathEnvironment
