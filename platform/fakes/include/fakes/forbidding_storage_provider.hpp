// A provider that fails a test which asks storage for too much. Safe from any thread; shares the inner provider.
#pragma once

#include <fakes/export.hpp>
#include <fakes/forwarding_storage_provider.hpp>
#include <memory>

namespace foundation::storage::fakes {

/// Throws std::logic_error, which no code that handles storage errors catches, when a folder is listed twice, and upon
/// any call while calls are forbidden. The message names the call.
class FAKES_EXPORT ForbiddingStorageProvider final : public ForwardingStorageProvider {
 public:
  /// Permits, at first, one listing of each folder and all other calls; `inner` is not null.
  explicit ForbiddingStorageProvider(std::shared_ptr<const vfs::IStorageProvider> inner);
  ~ForbiddingStorageProvider() override;

  /// From now on, no call at all.
  void Forbid();
  /// Calls are allowed again, and each folder may be listed once more.
  void Permit();

 private:
  class Rules;
  ForbiddingStorageProvider(std::shared_ptr<const vfs::IStorageProvider> inner, std::shared_ptr<Rules> rules);

  std::shared_ptr<Rules> rules_;
};

}  // namespace foundation::storage::fakes
