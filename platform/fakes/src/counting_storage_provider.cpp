#include <fakes/counting_storage_provider.hpp>
#include <map>
#include <mutex>
#include <utility>

namespace foundation::storage::fakes {

class CountingStorageProvider::Counts final : public IStorageObserver {
 public:
  void BeforeCall(StorageOperation operation, const vfs::AbsoluteIRI& location) override {
    const std::lock_guard lock(mutex_);
    ++total_;
    ++byOperation_[operation];
    ++byPlace_[{operation, location}];
  }

  [[nodiscard]] std::size_t Get() const {
    const std::lock_guard lock(mutex_);
    return total_;
  }

  [[nodiscard]] std::size_t Get(StorageOperation operation) const {
    const std::lock_guard lock(mutex_);
    const auto found = byOperation_.find(operation);
    return found == byOperation_.end() ? 0 : found->second;
  }

  [[nodiscard]] std::size_t Get(StorageOperation operation, const vfs::AbsoluteIRI& location) const {
    const std::lock_guard lock(mutex_);
    const auto found = byPlace_.find({operation, location});
    return found == byPlace_.end() ? 0 : found->second;
  }

  void Reset() {
    const std::lock_guard lock(mutex_);
    total_ = 0;
    byOperation_.clear();
    byPlace_.clear();
  }

 private:
  mutable std::mutex mutex_;
  std::size_t total_ = 0;
  std::map<StorageOperation, std::size_t> byOperation_;
  std::map<std::pair<StorageOperation, vfs::AbsoluteIRI>, std::size_t> byPlace_;
};

CountingStorageProvider::CountingStorageProvider(std::shared_ptr<const vfs::IStorageProvider> inner)
    : CountingStorageProvider(std::move(inner), std::make_shared<Counts>()) {}

CountingStorageProvider::CountingStorageProvider(std::shared_ptr<const vfs::IStorageProvider> inner,
                                                 std::shared_ptr<Counts> counts)
    : ForwardingStorageProvider(std::move(inner), counts), counts_(std::move(counts)) {}

CountingStorageProvider::~CountingStorageProvider() = default;

std::size_t CountingStorageProvider::GetCount() const { return counts_->Get(); }
std::size_t CountingStorageProvider::GetCount(StorageOperation operation) const { return counts_->Get(operation); }
std::size_t CountingStorageProvider::GetCount(StorageOperation operation, const vfs::AbsoluteIRI& location) const {
  return counts_->Get(operation, location);
}
void CountingStorageProvider::Reset() { counts_->Reset(); }

}  // namespace foundation::storage::fakes
