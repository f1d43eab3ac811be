#include <algorithm>
#include <fl/filesystem/displayed_text.hpp>
#include <mutex>
#include <optional>
#include <ostream>
#include <search_path_environment/folder_entry_factory.hpp>
#include <utility>

#include "alive_entries.hpp"
#include "cache_records.hpp"
#include "cache_writer.hpp"
#include "folder_reader.hpp"
#include "main_entries.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::StorageSystemReference;

namespace {

using FolderEntryPtr = std::shared_ptr<const FolderEntry>;

bool IsEarlierByLocation(const FolderEntryPtr& left, const FolderEntryPtr& right) {
  return left->GetLocation() < right->GetLocation();
}

// Null when the folder must be read.
FolderEntryPtr Recorded(const AbsoluteIRI& folder, const CacheRecords& records) {
  const auto main = records.FindMain(folder);
  if (!main) return nullptr;
  const bool holds = records.GetTrust() == CacheTrust::Blind || records.StandingOfMain(*main) == Standing::Proven;
  return holds ? records.MainEntry(*main) : nullptr;
}

}  // namespace

struct FolderEntryFactory::Memory {
  std::optional<ToolboxCache> cache;

  std::mutex mutex;  // of what follows
  std::weak_ptr<const FolderPath> path;
  std::optional<CacheContents::List> list;  // of the path
};

FolderEntryFactory::FolderEntryFactory(StorageSystemReference storage)
    : storage_(std::move(storage)), alive_(std::make_shared<AliveEntries>()), memory_(std::make_shared<Memory>()) {}

FolderEntryFactory::FolderEntryFactory(StorageSystemReference storage, const FolderPath& predecessor)
    : FolderEntryFactory(std::move(storage), MainEntriesOf(predecessor)) {}

FolderEntryFactory::FolderEntryFactory(StorageSystemReference storage, const std::vector<FolderEntryPtr>& entries)
    : FolderEntryFactory(std::move(storage)) {
  for (const FolderEntryPtr& entry : entries) alive_->Settle(entry);
}

FolderEntryFactory::FolderEntryFactory(StorageSystemReference storage, const ToolboxCache& cache)
    : FolderEntryFactory(std::move(storage)) {
  memory_->cache = cache;
}

FolderEntryFactory::~FolderEntryFactory() = default;

std::shared_ptr<const PathManagement::IPathEntry> FolderEntryFactory::CreateMainEntry(const AbsoluteIRI& folder) const {
  const auto& cache = memory_->cache;
  const bool isBlind = cache && cache->GetTrust() == CacheTrust::Blind;
  try {
    const FolderEntryPtr recorded = cache ? Recorded(folder, cache->GetRecords()) : nullptr;
    if (recorded) return alive_->Settle(recorded);
  } catch (const ToolboxCacheError&) {
    if (isBlind) throw;  // else the folder tells itself
  }
  if (isBlind) {
    throw ToolboxCacheError(
        CacheRefusal::OtherFolders,
        "it does not hold the folder \"" + fl::filesystem::to_displayed_text(folder.toString()) + "\"");
  }
  return alive_->Settle(ReadMainFolder(folder, storage_, alive_->Find(folder).get()));
}

void FolderEntryFactory::RememberPath(const std::shared_ptr<const FolderPath>& path,
                                      const DistinctFolders& folders) const {
  const std::scoped_lock lock(memory_->mutex);
  memory_->path = path;
  memory_->list = CacheContents::List{folders, {}};
}

void FolderEntryFactory::RememberOrigin(std::string origin) const {
  const std::scoped_lock lock(memory_->mutex);
  std::optional<CacheContents::List>& list = memory_->list;
  if (list) list->origin = std::move(origin);
}

void FolderEntryFactory::WriteToolboxCache(std::ostream& out, const AbsoluteIRI& toolboxRoot) const {
  CacheContents contents{toolboxRoot, {}, std::nullopt};
  {
    const std::scoped_lock lock(memory_->mutex);
    if (const auto path = memory_->path.lock()) {
      contents.mainEntries = MainEntriesOf(*path);
      contents.list = memory_->list;
    }
  }
  if (!contents.list) {
    contents.mainEntries = alive_->GetAll();
    std::sort(contents.mainEntries.begin(), contents.mainEntries.end(), IsEarlierByLocation);
  }
  const std::size_t left = std::erase_if(contents.mainEntries, [&](const FolderEntryPtr& entry) {
    return !RelativeTo(toolboxRoot, entry->GetLocation());
  });
  if (left != 0) contents.list.reset();

  const std::string file = MakeCacheFile(contents);
  out.write(file.data(), static_cast<std::streamsize>(file.size()));
  // Nobody looks at what closing the file will say.
  out.flush();
}

}  // namespace Quorvex::PathEnvironment
