#include <fakes/forbidding_storage_provider.hpp>
#include <fl/filesystem/displayed_text.hpp>
#include <mutex>
#include <stdexcept>
#include <string>
#include <unordered_set>
#include <utility>

namespace foundation::storage::fakes {

namespace {

[[noreturn]] void Refuse(const std::string& why, StorageOperation operation, const vfs::AbsoluteIRI& location) {
  throw std::logic_error(why + ": " + NameOf(operation) + " " + fl::filesystem::to_displayed_text(location.toString()));
}

}  // namespace

class ForbiddingStorageProvider::Rules final : public IStorageObserver {
 public:
  void SetForbidden(bool isForbidden) {
    const std::lock_guard lock(mutex_);
    isForbidden_ = isForbidden;
    listed_.clear();
  }

  void BeforeCall(StorageOperation operation, const vfs::AbsoluteIRI& location) override {
    const std::lock_guard lock(mutex_);
    if (isForbidden_) Refuse("storage is forbidden", operation, location);
    const bool isRepeat = operation == StorageOperation::List && !listed_.insert(location).second;
    if (isRepeat) Refuse("a folder is listed twice", operation, location);
  }

 private:
  std::mutex mutex_;
  bool isForbidden_ = false;
  std::unordered_set<vfs::AbsoluteIRI> listed_;
};

ForbiddingStorageProvider::ForbiddingStorageProvider(std::shared_ptr<const vfs::IStorageProvider> inner)
    : ForbiddingStorageProvider(std::move(inner), std::make_shared<Rules>()) {}

ForbiddingStorageProvider::ForbiddingStorageProvider(std::shared_ptr<const vfs::IStorageProvider> inner,
                                                     std::shared_ptr<Rules> rules)
    : ForwardingStorageProvider(std::move(inner), rules), rules_(std::move(rules)) {}

ForbiddingStorageProvider::~ForbiddingStorageProvider() = default;

void ForbiddingStorageProvider::Forbid() { rules_->SetForbidden(true); }
void ForbiddingStorageProvider::Permit() { rules_->SetForbidden(false); }

}  // namespace foundation::storage::fakes
