#pragma once

// Caches written and opened in a line, and their bytes changed.

#include <cstring>
#include <foundation/storage/vfs/storage_system.hpp>
#include <functional>
#include <memory>
#include <search_path_environment/cached_path.hpp>
#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>
#include <search_path_environment/toolbox_cache.hpp>
#include <search_path_environment/toolbox_cache_file.hpp>
#include <search_path_environment/whole_file.hpp>
#include <string>
#include <utility>
#include <vector>

#include "cache_layout.hpp"
#include "cache_seal.hpp"
#include "memory_storage.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::StorageSystemReference;
using foundation::storage::vfs::VornixStorageSystem;

inline StorageSystemReference Session() { return VornixStorageSystem::GetStorageSystemReference(); }

/// The locations of `paths` in memory.
inline std::vector<AbsoluteIRI> InMemory(const std::vector<std::u16string>& paths) {
  std::vector<AbsoluteIRI> locations;
  locations.reserve(paths.size());
  for (const std::u16string& path : paths) locations.push_back(InMemory(path));
  return locations;
}

/// Reads the path over `folders` and puts it into a cache, as read from "the list".
inline std::shared_ptr<const FolderPath> WriteCache(const AbsoluteIRI& file, const AbsoluteIRI& root,
                                                    const std::vector<AbsoluteIRI>& folders) {
  const FolderEntryFactory entries(Session());
  auto path = FolderPathFactory().CreateFolderPath(DistinctFolders(folders, Session()), entries);
  entries.RememberOrigin("the list");
  WriteToolboxCacheFile(file, root, entries);
  return path;
}

inline ToolboxCache OpenCache(const AbsoluteIRI& file, CacheTrust trust = CacheTrust::Proven) {
  return ToolboxCache::Open(Session(), file, trust);
}

/// The path over the first `count` folders of the cache, which stand for `folders`.
inline std::shared_ptr<const CachedPath> PathFrom(const ToolboxCache& cache, const std::vector<AbsoluteIRI>& folders,
                                                  std::size_t count) {
  return CachedPath::Make(cache, count, [folders](const PathManagement::IPathEntryFactory& entries) {
    return FolderPathFactory().CreateFolderPath(DistinctFolders(folders, Session()), entries);
  });
}
inline std::shared_ptr<const CachedPath> PathFrom(const ToolboxCache& cache, const std::vector<AbsoluteIRI>& folders) {
  return PathFrom(cache, folders, folders.size());
}

/// "/m: f.x", or "none".
inline std::string FileFor(const PathManagement::IPath& path, const std::u16string& fullName) {
  return Shown(path.FindFirstInScope(kEveryKind, Exactly(fullName).Target(), kCaseSensitive));
}

inline cache::Header HeaderOf(const std::string& bytes) {
  cache::Header header{};
  std::memcpy(&header, bytes.data(), sizeof(header));
  return header;
}

/// `bytes` with a header that `change` has been at, and nothing else; the header's own checksum fits.
inline std::string WithHeader(std::string bytes, const std::function<void(cache::Header&)>& change) {
  cache::Header header = HeaderOf(bytes);
  change(header);
  header.checksum =
      cache::ChecksumOf(std::as_bytes(std::span(&header, 1)).first(offsetof(cache::Header, checksum)), 0, 0);
  std::memcpy(bytes.data(), &header, sizeof(header));
  return bytes;
}

/// `bytes` after `change` has been at what stands between the header and the checksums, all checksums fitting.
inline std::string Resealed(std::string bytes, const std::function<void(std::string&)>& change) {
  const cache::Header header = HeaderOf(bytes);
  bytes.resize(header.sections.at(static_cast<std::size_t>(cache::Section::Sums)).offset);
  change(bytes);
  cache::Seal(bytes, header);
  return bytes;
}

/// `bytes` with one bit of that page changed.
inline std::string WithDamageIn(std::string bytes, std::size_t page) {
  bytes.at(page * cache::kPageSize) ^= 1;
  return bytes;
}

/// The pages between the header and the checksums are numbered from 1 up to, and including, this.
inline std::size_t LastPageOf(const std::string& bytes) {
  return (HeaderOf(bytes).sections.at(static_cast<std::size_t>(cache::Section::Sums)).offset - 1) / cache::kPageSize;
}

}  // namespace Quorvex::PathEnvironment
