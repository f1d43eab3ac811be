#include "loaded_path.hpp"

#include <algorithm>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>
#include <set>

#include "masked_view.hpp"

namespace vornixpath {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::FolderEntryFactory;
using Quorvex::PathEnvironment::FolderPathFactory;

LoadedPath::LoadedPath(const Folders& folders, const Folders& masks)
    : folders_(folders, VornixStorageSystem::GetStorageSystemReference()),
      leaf_(FolderPathFactory().CreateFolderPath(
          folders_, FolderEntryFactory(VornixStorageSystem::GetStorageSystemReference()))) {
  std::set<std::size_t> masked;  // in path order, each once
  for (const AbsoluteIRI& mask : masks) {
    if (const auto index = folders_.IndexOf(mask)) {
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
  const auto index = folders_.IndexOf(folder);
  return index ? (*leaf_->GetMainEntries())[*index] : nullptr;
}

}  // namespace vornixpath
