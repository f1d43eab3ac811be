// Which provider serves which scheme: for each scheme a stack of mounts, the last one counting. Safe from any thread.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <foundation/core/scoped_release.hpp>
#include <foundation/storage/vfs/storage_provider.hpp>
#include <memory>
#include <shared_mutex>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

namespace foundation::storage::vfs::detail {

class MountTable : public std::enable_shared_from_this<MountTable> {
 public:
  /// What a scheme is mounted to: a provider, or the scheme it is an alias of.
  using Target = std::variant<std::shared_ptr<IStorageProvider>, std::u16string>;

  /// Mounts `target` until the result goes. Throws std::invalid_argument when an alias would lead back to `scheme`.
  [[nodiscard]] core::ScopedRelease Add(const std::u16string& scheme, Target target);

  /// The provider at the end of the aliases of `scheme`; null when there is none.
  [[nodiscard]] std::shared_ptr<IStorageProvider> Find(const std::u16string& scheme) const;

  /// The scheme at the end of the aliases of `scheme`. Mounts that go in another order than they came may close a ring
  /// of aliases; a scheme on it is its own end.
  [[nodiscard]] std::u16string Resolve(const std::u16string& scheme) const;

  /// Whether Resolve can answer anything but its argument.
  [[nodiscard]] bool HasAliases() const noexcept { return aliasCount_.load(std::memory_order_acquire) > 0; }

 private:
  struct Mount {
    std::uint64_t id;
    Target target;
  };

  void Remove(const std::u16string& scheme, std::uint64_t id);
  [[nodiscard]] const Target* CurrentTarget(const std::u16string& scheme) const;
  [[nodiscard]] std::u16string ResolveLocked(const std::u16string& scheme) const;

  mutable std::shared_mutex mutex_;
  std::unordered_map<std::u16string, std::vector<Mount>> mounts_;
  std::atomic<std::uint64_t> lastId_ = 0;
  std::atomic<std::size_t> aliasCount_ = 0;
};

/// The one table of the process. Never destroyed: identifiers are resolved until the very end.
[[nodiscard]] const std::shared_ptr<MountTable>& SessionMounts();

}  // namespace foundation::storage::vfs::detail
