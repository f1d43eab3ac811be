#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <stdexcept>
#include <utility>

#include "identifier_text.hpp"
#include "mount_table.hpp"

namespace foundation::storage::vfs {

StorageSystemReference::StorageSystemReference(std::shared_ptr<detail::MountTable> table) noexcept
    : table_(std::move(table)) {}

std::shared_ptr<IStorageProvider> StorageSystemReference::FindProvider(const std::u16string& scheme) const {
  return table_->Find(scheme);
}

std::shared_ptr<IStorageProvider> StorageSystemReference::ProviderFor(const AbsoluteIRI& iri) const {
  if (auto provider = FindProvider(iri.getScheme())) return provider;
  throw Exception("find storage for", iri, std::make_error_code(std::errc::protocol_not_supported),
                  "no storage serves its scheme");
}

StorageSystemReference VornixStorageSystem::GetStorageSystemReference() {
  return StorageSystemReference(detail::SessionMounts());
}

MountHandle VornixStorageSystem::Mount(const std::u16string& scheme, std::shared_ptr<IStorageProvider> provider) {
  if (!provider) throw std::invalid_argument("a storage provider to mount must not be null");
  return detail::SessionMounts()->Add(detail::NormalizeScheme(scheme), std::move(provider));
}

MountHandle VornixStorageSystem::MountAlias(const std::u16string& alias, const std::u16string& target) {
  return detail::SessionMounts()->Add(detail::NormalizeScheme(alias), detail::NormalizeScheme(target));
}

}  // namespace foundation::storage::vfs
