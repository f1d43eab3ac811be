// Open files of a tree in memory. Each keeps the tree alive.
#pragma once

#include <memory>

#include "memory_tree.hpp"

namespace foundation::storage::vfs::detail {

[[nodiscard]] std::unique_ptr<IReadableFile> OpenMemoryForReading(const std::shared_ptr<MemoryTree>& tree,
                                                                  const AbsoluteIRI& location);
[[nodiscard]] std::unique_ptr<IWritableFile> OpenMemoryForWriting(const std::shared_ptr<MemoryTree>& tree,
                                                                  const AbsoluteIRI& location, WriteMode mode);
[[nodiscard]] std::shared_ptr<const MappedBytes> MapMemory(const std::shared_ptr<MemoryTree>& tree,
                                                           const AbsoluteIRI& location);
[[nodiscard]] std::unique_ptr<IFileLock> LockMemory(const std::shared_ptr<MemoryTree>& tree,
                                                    const AbsoluteIRI& location, std::chrono::milliseconds timeout);

}  // namespace foundation::storage::vfs::detail
