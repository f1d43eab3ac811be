#pragma once

#include <cstddef>
#include <fakes/export.hpp>
#include <fakes/forwarding_storage_provider.hpp>
#include <memory>

namespace foundation::storage::fakes {

/// A provider that counts its calls. Safe from any thread; shares the inner provider.
class FAKES_EXPORT CountingStorageProvider final : public ForwardingStorageProvider {
 public:
  /// Counts from zero what is asked of `inner`, which is not null.
  explicit CountingStorageProvider(std::shared_ptr<const vfs::IStorageProvider> inner);
  ~CountingStorageProvider() override;

  /// Calls made, failed ones included.
  [[nodiscard]] std::size_t GetCount() const;
  /// Of one operation, wherever.
  [[nodiscard]] std::size_t GetCount(StorageOperation operation) const;
  /// Of one operation at just this location; a Rename counts where it moves from.
  [[nodiscard]] std::size_t GetCount(StorageOperation operation, const vfs::AbsoluteIRI& location) const;
  /// Starts again from zero.
  void Reset();

 private:
  class Counts;
  CountingStorageProvider(std::shared_ptr<const vfs::IStorageProvider> inner, std::shared_ptr<Counts> counts);

  std::shared_ptr<Counts> counts_;
};

}  // namespace foundation::storage::fakes
