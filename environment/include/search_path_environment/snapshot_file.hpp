// Snapshots of paths, in files. Safe from any thread as far as the storage is.
#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/export.hpp>
#include <search_path_environment/path_snapshot.hpp>

namespace Quorvex::PathEnvironment {

/// The snapshot that `file` holds; with `predecessor`, as `PathSnapshot::Parse` says. Nothing but `file` is read.
/// Throws SnapshotError, which names the file, for one that is no snapshot or damaged, and the storage layer's
/// Exception. O(n).
[[nodiscard]] SEARCH_PATH_ENVIRONMENT_EXPORT PathSnapshot
ReadSnapshotFile(const foundation::storage::vfs::StorageSystemReference& storage,
                 const foundation::storage::vfs::AbsoluteIRI& file, const FolderPath* predecessor = nullptr);

/// Puts `snapshot` in the place of what `file` held, in one step and flushed: on failure, and to whoever looks
/// meanwhile, the old file is whole. Where `file` is a link, what it leads to is replaced. Refuses what is there and
/// neither a snapshot nor empty. Throws the storage layer's Exception. O(n).
SEARCH_PATH_ENVIRONMENT_EXPORT void WriteSnapshotFile(const foundation::storage::vfs::StorageSystemReference& storage,
                                                      const foundation::storage::vfs::AbsoluteIRI& file,
                                                      const PathSnapshot& snapshot);

}  // namespace Quorvex::PathEnvironment
