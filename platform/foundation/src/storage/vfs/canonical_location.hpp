// The canonical location of a folder or a file: aliases first, then links.
#pragma once

#include <foundation/storage/vfs/canonical_absolute_iri.hpp>
#include <foundation/storage/vfs/storage_system.hpp>

namespace foundation::storage::vfs::detail {

[[nodiscard]] inline CanonicalAbsoluteIRI CanonicalLocationOf(const AbsoluteIRI& location,
                                                              const StorageSystemReference& storageSystem) {
  const AbsoluteIRI resolved = location.getResolvedIRI();
  return {storageSystem.ProviderFor(resolved)->CanonicalLocation(resolved), location.toString()};
}

}  // namespace foundation::storage::vfs::detail
