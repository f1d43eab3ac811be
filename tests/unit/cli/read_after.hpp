#pragma once

#include <memory>
#include <string>
#include <unit/environment/memory_storage.hpp>
#include <vector>

#include "read_path.hpp"

namespace vornixpath {

/// The path over `folders` in memory as it is now, read with `before` as its predecessor.
inline std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> ReadAfter(
    const Quorvex::PathEnvironment::FolderPath& before, const std::vector<std::u16string>& folders) {
  std::vector<foundation::storage::vfs::AbsoluteIRI> locations;
  locations.reserve(folders.size());
  for (const std::u16string& folder : folders) locations.push_back(Quorvex::PathEnvironment::InMemory(folder));
  return ReadPath(Quorvex::PathEnvironment::DistinctFolders(locations), &before);
}

}  // namespace vornixpath
