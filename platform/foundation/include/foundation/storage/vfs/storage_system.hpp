#pragma once

#include <foundation/core/scoped_release.hpp>
#include <foundation/export.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/storage_provider.hpp>
#include <memory>
#include <string>

namespace foundation::storage::vfs {

namespace detail {
class MountTable;
}

/// When it goes, what was mounted is taken away again, and what was there before is back. Handles may go in any order.
using MountHandle = core::ScopedRelease;

/// A handle on a storage system, cheap to copy. Sees each mount as soon as it is made.
class FOUNDATION_EXPORT StorageSystemReference {
 public:
  /// The provider of `scheme`, aliases followed; null when there is none.
  [[nodiscard]] std::shared_ptr<IStorageProvider> FindProvider(const std::u16string& scheme) const;
  /// The provider of the scheme of `iri`. Throws Exception with the identifier when there is none.
  [[nodiscard]] std::shared_ptr<IStorageProvider> ProviderFor(const AbsoluteIRI& iri) const;

 private:
  friend class VornixStorageSystem;
  explicit StorageSystemReference(std::shared_ptr<detail::MountTable> table) noexcept;

  std::shared_ptr<detail::MountTable> table_;
};

/// The session's storage: which provider serves which scheme.
///
/// There is one table per process, safe from any thread; it lasts until the process ends. Mounted providers are shared
/// with it for as long as they are mounted. No storage is touched here.
class FOUNDATION_EXPORT VornixStorageSystem {
 public:
  VornixStorageSystem() = delete;

  /// The session's. `file`, the local file system, is mounted from the start.
  [[nodiscard]] static StorageSystemReference GetStorageSystemReference();
  /// Lets `provider` serve `scheme`, before whatever served it. Throws Exception when the scheme is malformed,
  /// std::invalid_argument when the provider is null.
  [[nodiscard]] static MountHandle Mount(const std::u16string& scheme, std::shared_ptr<IStorageProvider> provider);
  /// Makes `alias` another name of the scheme `target`, which need not be mounted yet. Throws Exception when a scheme
  /// is malformed, std::invalid_argument when `target` leads back to `alias`.
  [[nodiscard]] static MountHandle MountAlias(const std::u16string& alias, const std::u16string& target);
};

}  // namespace foundation::storage::vfs
