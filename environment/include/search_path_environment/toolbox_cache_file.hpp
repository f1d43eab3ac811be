// A toolbox cache put where others read it.
#pragma once

#include <chrono>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/export.hpp>
#include <search_path_environment/folder_entry_factory.hpp>

namespace Quorvex::PathEnvironment {

/// Puts what `entries` keeps of the folders at or below `toolboxRoot` into `file`, on the session's storage system, in
/// the place of what was there: whoever looks, at whatever moment, sees the old cache or the new one, whole, also after
/// this process was killed; and when this returns the new one is safe from a power failure.
///
/// Makes the folder of `file` if need be. Beside the file stand its lock, `file` followed by ".lock", which serializes
/// writers and stays, and for as long as this takes, or until the next call if it is interrupted, its draft. Where
/// `file` is a link, what it leads to is replaced.
///
/// Throws UnableToSaveToolboxCacheException when the draft could not be written, and wherever the disk is full;
/// ToolboxCacheError should what was written not be what was meant; and the storage layer's Exception for all else,
/// std::errc::timed_out for a lock that another writer keeps among it. No draft is left then, and what was there is
/// still in place, unless it was the last step that failed: then the new cache is, but may not survive a power failure.
SEARCH_PATH_ENVIRONMENT_EXPORT void WriteToolboxCacheFile(
    const foundation::storage::vfs::AbsoluteIRI& file, const foundation::storage::vfs::AbsoluteIRI& toolboxRoot,
    const FolderEntryFactory& entries, std::chrono::milliseconds patience = std::chrono::seconds(10));

/// Removes a cache, a link to it, and what an interrupted call has left of a draft; false when there was no cache. Its
/// lock stays. Throws the storage layer's Exception, std::errc::operation_not_supported for what is no regular file
/// among it.
SEARCH_PATH_ENVIRONMENT_EXPORT bool RemoveToolboxCacheFile(
    const foundation::storage::vfs::AbsoluteIRI& file, std::chrono::milliseconds patience = std::chrono::seconds(10));

}  // namespace Quorvex::PathEnvironment
