#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <search_path_interfaces/found_item.hpp>
#include <search_path_interfaces/path_item.hpp>

namespace vornixpath {

/// Where the file stands.
[[nodiscard]] inline foundation::storage::vfs::AbsoluteIRI LocationOf(const Quorvex::PathManagement::PathItem& item) {
  return item.folderIRI.getChild(item.baseName + item.extension);
}

[[nodiscard]] inline foundation::storage::vfs::AbsoluteIRI LocationOf(const Quorvex::PathManagement::FoundItem& found) {
  return LocationOf(*found.GetPathItem());
}

}  // namespace vornixpath
