#include "loaded_path.hpp"

#include <algorithm>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/folder_entry.hpp>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>
#include <set>
#include <stdexcept>
#include <utility>

#include "masked_view.hpp"

namespace vornixpath {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::CachedPath;
using Quorvex::PathEnvironment::CacheTrust;
using Quorvex::PathEnvironment::DistinctFolders;
using Quorvex::PathEnvironment::FolderEntry;
using Quorvex::PathEnvironment::FolderEntryFactory;
using Quorvex::PathEnvironment::FolderPath;
using Quorvex::PathEnvironment::FolderPathFactory;
using Quorvex::PathEnvironment::ToolboxCache;
using Quorvex::PathManagement::IPathEntryFactory;

namespace {

foundation::storage::vfs::StorageSystemReference Storage() { return VornixStorageSystem::GetStorageSystemReference(); }

// A cache that is trusted blindly is asked so that storage need not be.
DistinctFolders DistinctAsFarAs(CacheTrust trust, const FolderList& list) {
  if (trust == CacheTrust::Blind) return DistinctFolders(list.GetFolders());
  return {list.GetFolders(), Storage()};
}

// The main entry whose folder `isIt`, as an index.
template <class Predicate>
std::optional<std::size_t> FindIndex(const FolderPath& path, const Predicate& isIt) {
  const auto entries = path.GetMainEntries();
  for (std::size_t i = 0; i < entries->size(); ++i) {
    if (isIt(static_cast<const FolderEntry&>(*(*entries)[i]))) return i;
  }
  return std::nullopt;
}

}  // namespace

LoadedPath::LoadedPath(const FolderList& folders, const Folders& masks)
    : LoadedPath(folders, FolderEntryFactory(Storage()), masks) {}

LoadedPath::LoadedPath(const Folders& folders, const Folders& masks)
    : LoadedPath(FolderList("", [folders](std::string_view /*origin*/) { return folders; }), masks) {}

LoadedPath::LoadedPath(const FolderList& folders, const IPathEntryFactory& entries, const Folders& masks)
    : LoadedPath(folders, DistinctFolders(folders.GetFolders(), Storage()), entries, masks) {}

LoadedPath::LoadedPath(const FolderList& folders, const ToolboxCache& cache, const Folders& masks)
    : LoadedPath(folders, DistinctAsFarAs(cache.GetTrust(), folders), FolderEntryFactory(Storage(), cache), masks) {}

LoadedPath::LoadedPath(const FolderList& folders, std::shared_ptr<const CachedPath> cached, const Folders& masks)
    : LoadedPath(folders, std::nullopt, nullptr, std::move(cached), masks) {}

LoadedPath::LoadedPath(const Quorvex::PathEnvironment::PathSnapshot& snapshot, const Folders& masks)
    : LoadedPath(std::nullopt, std::nullopt, snapshot.path, nullptr, masks) {}

LoadedPath::LoadedPath(const FolderList& list, const DistinctFolders& folders, const IPathEntryFactory& entries,
                       const Folders& masks)
    : LoadedPath(list, folders, FolderPathFactory().CreateFolderPath(folders, entries), nullptr, masks) {}

LoadedPath::LoadedPath(std::optional<FolderList> list, std::optional<DistinctFolders> folders,
                       std::shared_ptr<const FolderPath> leaf, std::shared_ptr<const CachedPath> cached,
                       const Folders& masks)
    : list_(std::move(list)), folders_(std::move(folders)), leaf_(std::move(leaf)), cached_(std::move(cached)) {
  std::set<std::size_t> masked;  // in path order, each once
  for (const AbsoluteIRI& mask : masks) {
    if (const auto index = IndexOf(mask)) {
      masked.insert(*index);
    } else {
      idleMasks_.push_back(mask);
    }
  }
  for (const std::size_t index : masked) {
    maskedFolders_.push_back((*GetLeaf().GetMainEntries())[index]);
    maskedPositions_.push_back(GetLeaf().GetPositions()[index]);
  }
  if (!maskedFolders_.empty()) {
    view_ = std::make_shared<const MaskedView>(GetSharedLeaf(), maskedFolders_);
  } else if (cached_) {
    view_ = cached_;
  } else {
    view_ = leaf_;
  }
}

bool LoadedPath::IsMasked(std::size_t position) const {
  return std::binary_search(maskedPositions_.begin(), maskedPositions_.end(), position);
}

const DistinctFolders& LoadedPath::GetDistinctFolders() const {
  if (!list_) throw std::logic_error("a snapshot has no list of folders");
  if (!folders_) folders_.emplace(list_->GetFolders(), Storage());
  return *folders_;
}

EntryPtr LoadedPath::FindFolder(const AbsoluteIRI& folder) const {
  const auto index = IndexOf(folder);
  return index ? (*GetLeaf().GetMainEntries())[*index] : nullptr;
}

std::optional<std::size_t> LoadedPath::IndexOf(const AbsoluteIRI& folder) const {
  if (list_) return GetDistinctFolders().IndexOf(folder);
  const auto spelled = FindIndex(GetLeaf(), [&](const FolderEntry& entry) { return entry.GetLocation() == folder; });
  if (spelled) return spelled;
  return FindIndex(GetLeaf(), [&](const FolderEntry& entry) { return entry.GetCanonicalLocation() == folder; });
}

}  // namespace vornixpath
