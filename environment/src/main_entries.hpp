#pragma once

#include <memory>
#include <search_path_environment/folder_path.hpp>
#include <vector>

namespace Quorvex::PathEnvironment {

/// The main entries of `path` as what they are.
[[nodiscard]] inline std::vector<std::shared_ptr<const FolderEntry>> MainEntriesOf(const FolderPath& path) {
  std::vector<std::shared_ptr<const FolderEntry>> entries;
  const auto listed = path.GetMainEntries();
  entries.reserve(listed->size());
  for (const auto& entry : *listed) entries.push_back(std::static_pointer_cast<const FolderEntry>(entry));
  return entries;
}

}  // namespace Quorvex::PathEnvironment
