#include "mount_table.hpp"

#include <algorithm>
#include <foundation/storage/vfs/file_storage_provider.hpp>
#include <mutex>
#include <stdexcept>
#include <utility>

namespace foundation::storage::vfs::detail {

namespace {

bool IsAlias(const MountTable::Target& target) { return std::holds_alternative<std::u16string>(target); }

}  // namespace

core::ScopedRelease MountTable::Add(const std::u16string& scheme, Target target) {
  const std::uint64_t id = ++lastId_;
  core::ScopedRelease release([table = shared_from_this(), scheme, id] { table->Remove(scheme, id); });

  const std::unique_lock lock(mutex_);
  const bool isAlias = IsAlias(target);
  if (isAlias && ResolveLocked(std::get<std::u16string>(target)) == scheme) {
    throw std::invalid_argument("an alias would lead back to itself");
  }
  mounts_[scheme].push_back({id, std::move(target)});
  if (isAlias) aliasCount_.fetch_add(1, std::memory_order_release);
  return release;
}

void MountTable::Remove(const std::u16string& scheme, std::uint64_t id) {
  Target removed;  // destroyed after the lock is gone: a provider's end is its own business
  const std::unique_lock lock(mutex_);
  const auto found = mounts_.find(scheme);
  if (found == mounts_.end()) return;

  std::vector<Mount>& stack = found->second;
  const auto mount = std::find_if(stack.begin(), stack.end(), [id](const Mount& one) { return one.id == id; });
  if (mount != stack.end()) {
    removed = std::move(mount->target);
    stack.erase(mount);
    if (IsAlias(removed)) aliasCount_.fetch_sub(1, std::memory_order_release);
  }
  if (stack.empty()) mounts_.erase(found);
}

std::shared_ptr<IStorageProvider> MountTable::Find(const std::u16string& scheme) const {
  const std::shared_lock lock(mutex_);
  const Target* target = CurrentTarget(ResolveLocked(scheme));
  if (target == nullptr || IsAlias(*target)) return nullptr;
  return std::get<std::shared_ptr<IStorageProvider>>(*target);
}

std::u16string MountTable::Resolve(const std::u16string& scheme) const {
  const std::shared_lock lock(mutex_);
  return ResolveLocked(scheme);
}

const MountTable::Target* MountTable::CurrentTarget(const std::u16string& scheme) const {
  const auto found = mounts_.find(scheme);
  return found == mounts_.end() ? nullptr : &found->second.back().target;
}

std::u16string MountTable::ResolveLocked(const std::u16string& scheme) const {
  std::u16string resolved = scheme;
  for (std::size_t steps = 0; steps <= mounts_.size(); ++steps) {
    const Target* target = CurrentTarget(resolved);
    if (target == nullptr || !IsAlias(*target)) return resolved;
    resolved = std::get<std::u16string>(*target);
  }
  return scheme;
}

const std::shared_ptr<MountTable>& SessionMounts() {
  struct Session {
    std::shared_ptr<MountTable> table = std::make_shared<MountTable>();
    core::ScopedRelease localFiles = table->Add(u"file", std::make_shared<FileStorageProvider>());
  };
  static const Session& session = *new Session;
  return session.table;
}

}  // namespace foundation::storage::vfs::detail
