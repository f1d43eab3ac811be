// A provider that counts its calls. Safe from any thread; shares the inner provider.
#pragma once

#include <cstddef>
#include <fakes/export.hpp>
#include <fakes/forwarding_storage_provider.hpp>
#include <memory>

namespace foundation::storage::fakes {

class FAKES_EXPORT CountingStorageProvider final : public ForwardingStorageProvider {
 public:
  explicit CountingStorageProvider(std::shared_ptr<const vfs::IStorageProvider> inner);
  ~CountingStorageProvider() override;

  /// Calls made, failed ones included.
  [[nodiscard]] std::size_t GetCount() const;
  [[nodiscard]] std::size_t GetCount(StorageOperation operation) const;
  [[nodiscard]] std::size_t GetCount(StorageOperation operation, const vfs::AbsoluteIRI& location) const;
  /// Starts again from zero.
  void Reset();

 private:
  class Counts;
  CountingStorageProvider(std::shared_ptr<const vfs::IStorageProvider> inner, std::shared_ptr<Counts> counts);

  std::shared_ptr<Counts> counts_;
};

}  // namespace foundation::storage::fakes
