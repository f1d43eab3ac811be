#include "each_location_once.hpp"

#include <unordered_set>

#include "file_location.hpp"

namespace vornixpath {

using Quorvex::PathManagement::FoundItem;

void KeepEachLocationOnce(std::vector<FoundItem>& files) {
  std::unordered_set<foundation::storage::vfs::AbsoluteIRI> known;
  std::erase_if(files, [&known](const FoundItem& file) { return !known.insert(LocationOf(file)).second; });
}

}  // namespace vornixpath
