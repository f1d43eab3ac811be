#include <fakes/failing_storage_provider.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <mutex>
#include <utility>
#include <vector>

namespace foundation::storage::fakes {

namespace {

bool Matches(const Fault& fault, StorageOperation operation, const vfs::AbsoluteIRI& location) {
  return fault.operation.value_or(operation) == operation && fault.location.value_or(location) == location;
}

}  // namespace

class FailingStorageProvider::Plans final : public IStorageObserver {
 public:
  void Add(const Fault& fault) {
    const std::lock_guard lock(mutex_);
    plans_.push_back({fault, 0});
  }

  void Clear() {
    const std::lock_guard lock(mutex_);
    plans_.clear();
  }

  [[nodiscard]] std::size_t GetFailureCount() const {
    const std::lock_guard lock(mutex_);
    return failureCount_;
  }

  void BeforeCall(StorageOperation operation, const vfs::AbsoluteIRI& location) override {
    const std::lock_guard lock(mutex_);
    std::optional<std::error_code> error;
    for (Plan& plan : plans_) {
      if (!Matches(plan.fault, operation, location)) continue;
      ++plan.matchingCalls;
      if (IsDue(plan) && !error) error = plan.fault.error;
    }
    if (!error) return;
    ++failureCount_;
    throw vfs::Exception(NameOf(operation), location, *error);
  }

 private:
  struct Plan {
    Fault fault;
    std::size_t matchingCalls;
  };

  static bool IsDue(const Plan& plan) {
    const bool isPersistent = plan.fault.persistence == Persistence::Persistent;
    return isPersistent ? plan.matchingCalls >= plan.fault.call : plan.matchingCalls == plan.fault.call;
  }

  mutable std::mutex mutex_;
  std::vector<Plan> plans_;
  std::size_t failureCount_ = 0;
};

FailingStorageProvider::FailingStorageProvider(std::shared_ptr<const vfs::IStorageProvider> inner)
    : FailingStorageProvider(std::move(inner), std::make_shared<Plans>()) {}

FailingStorageProvider::FailingStorageProvider(std::shared_ptr<const vfs::IStorageProvider> inner,
                                               std::shared_ptr<Plans> plans)
    : ForwardingStorageProvider(std::move(inner), plans), plans_(std::move(plans)) {}

FailingStorageProvider::~FailingStorageProvider() = default;

void FailingStorageProvider::Plan(const Fault& fault) { plans_->Add(fault); }
void FailingStorageProvider::Clear() { plans_->Clear(); }
std::size_t FailingStorageProvider::GetFailureCount() const { return plans_->GetFailureCount(); }

}  // namespace foundation::storage::fakes
