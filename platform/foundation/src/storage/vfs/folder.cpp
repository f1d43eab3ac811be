#include <foundation/storage/vfs/folder.hpp>
#include <utility>

#include "canonical_location.hpp"

namespace foundation::storage::vfs {

Folder::Folder(const AbsoluteIRI& location, StorageSystemReference storageSystem)
    : location_(location), storageSystem_(std::move(storageSystem)) {}

CanonicalAbsoluteIRI Folder::getCanonicalLocation() const {
  return detail::CanonicalLocationOf(location_, storageSystem_);
}

}  // namespace foundation::storage::vfs
