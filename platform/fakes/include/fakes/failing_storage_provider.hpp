#pragma once

#include <cstddef>
#include <fakes/export.hpp>
#include <fakes/forwarding_storage_provider.hpp>
#include <memory>
#include <optional>
#include <system_error>

namespace foundation::storage::fakes {

/// Whether storage recovers from a fault.
enum class Persistence : std::uint8_t {
  Transient,  ///< one call fails
  Persistent  ///< that call and all that follow
};

/// Which call fails, and how. What is left out matches every call.
struct Fault {
  std::optional<StorageOperation> operation = std::nullopt;  ///< of files that were opened, too
  std::optional<vfs::AbsoluteIRI> location = std::nullopt;   ///< of a Rename, where it moves from
  std::size_t call = 1;  ///< counted from 1, among the matching calls since the fault was planned
  std::error_code error = std::make_error_code(std::errc::io_error);  ///< what the Exception carries
  Persistence persistence = Persistence::Transient;                   ///< how long it lasts
};

/// A provider whose n-th call fails, so that every error path can be reached. Safe from any thread; shares the inner
/// provider.
class FAKES_EXPORT FailingStorageProvider final : public ForwardingStorageProvider {
 public:
  /// Fails nothing until something is planned; `inner` is not null.
  explicit FailingStorageProvider(std::shared_ptr<const vfs::IStorageProvider> inner);
  ~FailingStorageProvider() override;

  /// Lets the call that `fault` describes fail with a storage Exception, without reaching the inner provider. Faults
  /// are independent of each other.
  void Plan(const Fault& fault);
  /// Forgets all faults.
  void Clear();
  /// How many calls have failed for a fault.
  [[nodiscard]] std::size_t GetFailureCount() const;

 private:
  class Plans;
  FailingStorageProvider(std::shared_ptr<const vfs::IStorageProvider> inner, std::shared_ptr<Plans> plans);

  std::shared_ptr<Plans> plans_;
};

}  // namespace foundation::storage::fakes
