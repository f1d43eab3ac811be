#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string>

namespace Quorvex::PathManagement {

/// A file found inside an entry. Shared as `std::shared_ptr<const PathItem>` and never changed.
struct PathItem {
  std::u16string baseName;   ///< the file name without its extension
  std::u16string extension;  ///< with its dot; base name followed by extension is the full file name
  foundation::storage::vfs::AbsoluteIRI folderIRI;  ///< with the full file name, identifies the file
};

}  // namespace Quorvex::PathManagement
