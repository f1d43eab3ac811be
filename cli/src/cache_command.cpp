#include <foundation/storage/vfs/storage_system.hpp>
#include <optional>
#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>
#include <search_path_environment/toolbox_cache.hpp>
#include <search_path_environment/toolbox_cache_file.hpp>
#include <search_path_utilities/services.hpp>
#include <stdexcept>

#include "cache_report.hpp"
#include "cached_loading.hpp"
#include "commands.hpp"
#include "labelled_line.hpp"
#include "location_argument.hpp"
#include "location_text.hpp"
#include "output.hpp"
#include "path_source.hpp"
#include "path_troubles.hpp"
#include "usage_error.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::CacheTrust;
using Quorvex::PathEnvironment::DistinctFolders;
using Quorvex::PathEnvironment::FolderEntryFactory;
using Quorvex::PathEnvironment::FolderPathFactory;
using Quorvex::PathEnvironment::KeptFolder;
using Quorvex::PathEnvironment::ToolboxCache;
using Quorvex::PathEnvironment::ToolboxCacheError;

bool IsAtOrBelow(const AbsoluteIRI& root, const AbsoluteIRI& folder) {
  AbsoluteIRI place = folder;
  while (!(place == root)) {
    const AbsoluteIRI parent = place.getParent();
    if (parent == place) return false;
    place = parent;
  }
  return true;
}

// The deepest folder around all that stay on the list.
AbsoluteIRI RootAround(const DistinctFolders& folders) {
  const auto& kept = folders.GetKept();
  if (kept.empty()) throw std::runtime_error("the path has no folder whose contents could be kept");
  AbsoluteIRI root = kept.front().location;
  for (const KeptFolder& folder : kept) {
    while (!IsAtOrBelow(root, folder.location)) {
      const AbsoluteIRI parent = root.getParent();
      if (parent == root) {
        throw std::runtime_error("no folder is around both " + Quoted(TextOf(kept.front().location)) + " and " +
                                 Quoted(TextOf(folder.location)) + ": name one with --root");
      }
      root = parent;
    }
  }
  return root;
}

ExitStatus Write(const CacheOptions& options) {
  const AbsoluteIRI file = CacheFileFor(options.path);
  const FolderList list = ListFor(options.path);
  const auto storage = VornixStorageSystem::GetStorageSystemReference();
  const DistinctFolders folders(list.GetFolders(), storage);
  const AbsoluteIRI root = options.root ? LocationFromArgument(*options.root) : RootAround(folders);

  const FolderEntryFactory entries(storage);
  const auto path = FolderPathFactory().CreateFolderPath(folders, entries);
  Warn(TroublesOf(*path));
  entries.RememberOrigin(list.GetOrigin());
  try {
    Quorvex::PathEnvironment::WriteToolboxCacheFile(file, root, entries);
  } catch (const Quorvex::PathManagement::UnableToSaveToolboxCacheException&) {
    throw std::runtime_error("the cache " + Quoted(TextOf(file)) +
                             " could not be written; what was there is still there");
  }
  const auto cache = ToolboxCache::Open(storage, file, CacheTrust::Proven);
  const std::size_t outside = path->GetMainEntries()->size() - cache.CountFolders();
  if (outside > 0) WriteWarning(Counted(outside, "folder") + " of the path not kept: outside " + Quoted(TextOf(root)));
  ReportWritten(file, cache, options.json);
  return ExitStatus::Yes;
}

// Nothing, and the reason told, when the file cannot be used.
std::optional<ToolboxCache> OpenedOrTold(const AbsoluteIRI& file, CacheTrust trust, bool json) {
  try {
    return ToolboxCache::Open(VornixStorageSystem::GetStorageSystemReference(), file, trust);
  } catch (const ToolboxCacheError& error) {
    ReportRefused(file, error, json);
    return std::nullopt;
  }
}

ExitStatus TellStatus(const CacheOptions& options) {
  const AbsoluteIRI file = CacheFileFor(options.path);
  const auto cache = OpenedOrTold(file, CacheTrust::Proven, options.json);
  if (!cache) return ExitStatus::No;
  try {
    const CacheStanding standing = StandingOf(ListFor(options.path), *cache);
    ReportStatus(file, *cache, standing, options.json);
    return standing.isIndexUsed ? ExitStatus::Yes : ExitStatus::No;
  } catch (const ToolboxCacheError& error) {
    ReportRefused(file, error, options.json);
    return ExitStatus::No;
  }
}

ExitStatus Verify(const CacheOptions& options) {
  const AbsoluteIRI file = CacheFileFor(options.path);
  const auto cache = OpenedOrTold(file, CacheTrust::Blind, options.json);
  if (!cache) return ExitStatus::No;
  try {
    cache->Check();
    const auto findings = CompareWithDisk(*cache);
    ReportVerified(file, *cache, findings, options.json);
    return IsAnyWrong(findings) ? ExitStatus::No : ExitStatus::Yes;
  } catch (const ToolboxCacheError& error) {
    ReportRefused(file, error, options.json);
    return ExitStatus::No;
  }
}

ExitStatus Clear(const CacheOptions& options) {
  const AbsoluteIRI file = CacheFileFor(options.path);
  if (Quorvex::PathEnvironment::RemoveToolboxCacheFile(file)) return ExitStatus::Yes;
  WriteMessage("there is no cache " + Quoted(TextOf(file)));
  return ExitStatus::No;
}

}  // namespace

ExitStatus RunCache(const CacheOptions& options) {
  switch (options.deed) {
    case CacheDeed::Write:
      return Write(options);
    case CacheDeed::Status:
      return TellStatus(options);
    case CacheDeed::Verify:
      return Verify(options);
    case CacheDeed::Clear:
      return Clear(options);
  }
  return ExitStatus::WrongUsage;
}

}  // namespace vornixpath
