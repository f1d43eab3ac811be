#include "loaded_path.hpp"

#include <algorithm>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/folder_entry.hpp>
#include <set>
#include <utility>

#include "masked_view.hpp"
#include "read_path.hpp"

namespace vornixpath {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::DistinctFolders;
using Quorvex::PathEnvironment::FolderEntry;
using Quorvex::PathEnvironment::FolderPath;

namespace {

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

LoadedPath::LoadedPath(const Folders& folders, const Folders& masks)
    : LoadedPath(DistinctFolders(folders, VornixStorageSystem::GetStorageSystemReference()), nullptr, masks) {}

LoadedPath::LoadedPath(const Quorvex::PathEnvironment::PathSnapshot& snapshot, const Folders& masks)
    : LoadedPath(std::nullopt, snapshot.path, masks) {}

LoadedPath::LoadedPath(std::optional<DistinctFolders> folders, std::shared_ptr<const FolderPath> leaf,
                       const Folders& masks)
    : folders_(std::move(folders)), leaf_(folders_ ? ReadPath(*folders_) : std::move(leaf)) {
  std::set<std::size_t> masked;  // in path order, each once
  for (const AbsoluteIRI& mask : masks) {
    if (const auto index = IndexOf(mask)) {
      masked.insert(*index);
    } else {
      idleMasks_.push_back(mask);
    }
  }
  for (const std::size_t index : masked) {
    maskedFolders_.push_back((*leaf_->GetMainEntries())[index]);
    maskedPositions_.push_back(leaf_->GetPositions()[index]);
  }
  view_ = leaf_;
  if (!maskedFolders_.empty()) view_ = std::make_shared<const MaskedView>(leaf_, maskedFolders_);
}

bool LoadedPath::IsMasked(std::size_t position) const {
  return std::binary_search(maskedPositions_.begin(), maskedPositions_.end(), position);
}

EntryPtr LoadedPath::FindFolder(const AbsoluteIRI& folder) const {
  const auto index = IndexOf(folder);
  return index ? (*leaf_->GetMainEntries())[*index] : nullptr;
}

std::optional<std::size_t> LoadedPath::IndexOf(const AbsoluteIRI& folder) const {
  if (folders_) return folders_->IndexOf(folder);
  const auto spelled = FindIndex(*leaf_, [&](const FolderEntry& entry) { return entry.GetLocation() == folder; });
  if (spelled) return spelled;
  return FindIndex(*leaf_, [&](const FolderEntry& entry) { return entry.GetCanonicalLocation() == folder; });
}

}  // namespace vornixpath
