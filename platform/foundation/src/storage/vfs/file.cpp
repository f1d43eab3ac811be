#include <foundation/storage/vfs/file.hpp>
#include <utility>

#include "canonical_location.hpp"

namespace foundation::storage::vfs {

File::File(const AbsoluteIRI& location, StorageSystemReference storageSystem)
    : location_(location), storageSystem_(std::move(storageSystem)) {}

CanonicalAbsoluteIRI File::getCanonicalLocation() const {
  return detail::CanonicalLocationOf(location_, storageSystem_);
}

void File::removeFile() const {
  const AbsoluteIRI resolved = location_.getResolvedIRI();
  storageSystem_.ProviderFor(resolved)->Remove(resolved);
}

}  // namespace foundation::storage::vfs
