#include "folder_numbers.hpp"

namespace vornixpath {

FolderNumbers::FolderNumbers(const Quorvex::PathEnvironment::FolderPath& path) : path_(path) {
  const auto folders = path.GetMainEntries();
  const auto& positions = path.GetPositions();
  for (std::size_t i = 0; i < folders->size(); ++i) numbers_.emplace((*folders)[i].get(), positions[i] + 1);
}

std::size_t FolderNumbers::NumberOf(const Quorvex::PathManagement::IPathEntry& entry) const {
  return numbers_.at(path_.GetMainEntryForEntry(entry).get());
}

}  // namespace vornixpath
