#include "cached_loading.hpp"

#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/cached_path.hpp>
#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/folder_path_factory.hpp>
#include <stdexcept>

#include "location_argument.hpp"
#include "location_text.hpp"
#include "output.hpp"
#include "usage_error.hpp"
#include "usual_place.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::CachedPath;
using Quorvex::PathEnvironment::CacheRefusal;
using Quorvex::PathEnvironment::CacheTrust;
using Quorvex::PathEnvironment::DistinctFolders;
using Quorvex::PathEnvironment::FolderPathFactory;
using Quorvex::PathEnvironment::ToolboxCache;
using Quorvex::PathEnvironment::ToolboxCacheError;
using Folders = std::vector<AbsoluteIRI>;

std::optional<ToolboxCache> Opened(const CacheChoice& choice) {
  if (choice.use == CacheUse::Off || !choice.file) return std::nullopt;
  const CacheTrust trust = choice.use == CacheUse::Require ? CacheTrust::Blind : CacheTrust::Proven;
  try {
    return ToolboxCache::Open(VornixStorageSystem::GetStorageSystemReference(), *choice.file, trust);
  } catch (const ToolboxCacheError& error) {
    if (choice.use == CacheUse::Auto && error.GetRefusal() == CacheRefusal::Missing) return std::nullopt;
    throw;
  }
}

// The path of the list that the cache holds; null when it holds another one, or a folder is not the one it was.
std::shared_ptr<const CachedPath> FromCache(const FolderList& list, const ToolboxCache& cache,
                                            const CountDeciding& countDeciding) {
  if (!cache.HoldsListFrom(list.GetOrigin()) && !cache.HoldsList(list.GetFolders())) return nullptr;
  return CachedPath::Make(cache, countDeciding(cache), [list](const auto& entries) {
    const auto storage = VornixStorageSystem::GetStorageSystemReference();
    return FolderPathFactory().CreateFolderPath(DistinctFolders(list.GetFolders(), storage), entries);
  });
}

LoadedPath LoadWith(const ToolboxCache& cache, const FolderList& list, const Folders& masks,
                    const CountDeciding& countDeciding) {
  if (const auto cached = FromCache(list, cache, masks.empty() ? countDeciding : CountAll)) {
    return {list, cached, masks};
  }
  return {list, cache, masks};
}

}  // namespace

std::optional<AbsoluteIRI> UsualCacheFile() {
  if (auto file = PlaceBelow("XDG_CACHE_HOME", "/vornixpath/toolbox.cache")) return file;
  return PlaceBelow("HOME", "/.cache/vornixpath/toolbox.cache");
}

AbsoluteIRI CacheFileFor(const PathOptions& options) {
  if (options.cacheFile) return LocationFromArgument(*options.cacheFile);
  if (auto usual = UsualCacheFile()) return *std::move(usual);
  throw UsageError("there is no place for a cache: give --cache-file, or set HOME to an absolute path");
}

CacheChoice::CacheChoice(const PathOptions& options) : use(options.cache) {
  if (options.cacheFile || use == CacheUse::Require) {
    file = CacheFileFor(options);
  } else {
    file = UsualCacheFile();
  }
}

std::size_t CountAll(const ToolboxCache& cache) { return cache.CountFolders(); }

LoadedPath LoadListed(const FolderList& list, const CacheChoice& choice, const Folders& masks,
                      const CountDeciding& countDeciding) {
  try {
    if (const auto cache = Opened(choice)) return LoadWith(*cache, list, masks, countDeciding);
  } catch (const ToolboxCacheError& error) {
    const std::string file = "the cache " + Quoted(TextOf(*choice.file));
    if (choice.use == CacheUse::Require) throw std::runtime_error(file + " cannot be used: " + error.what());
    WriteWarning(file + " is not used: " + error.what());
  }
  return LoadedPath(list, masks);
}

}  // namespace vornixpath
