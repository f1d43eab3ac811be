#pragma once

#include <atomic>
#include <support/mock_path.hpp>

#include "recorded_components.hpp"

namespace Quorvex::PathManagement::composite_tests {

/// A path of /a, which holds a foo.vnx and the class Cls, and /b, which holds another. It counts how often it is asked
/// for its main entries, and fails as often as it was told to, without a lock that would order its callers.
class CountingComponent : public testing::NiceMock<support::MockPath> {
 public:
  explicit CountingComponent(int failures) : failuresLeft_(failures) {}

  std::shared_ptr<const Entries> GetMainEntries() const override {
    builds_.fetch_add(1, std::memory_order_relaxed);
    if (failuresLeft_.fetch_sub(1, std::memory_order_relaxed) > 0) throw support::InjectedFailure("GetMainEntries");
    return path_->GetMainEntries();
  }
  Entries GetMethodEntries() const override { return path_->GetMethodEntries(); }
  EntryPtr GetMainEntryForEntry(const IPathEntry& entry) const override { return path_->GetMainEntryForEntry(entry); }
  std::vector<FoundItem> FindAllInScope(SearchScope scope, const detail::SearchTarget& target,
                                        FilenameMatchingPolicy policy) const override {
    return path_->FindAllInScope(scope, target, policy);
  }
  bool ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const override {
    return path_->ForEachEntry(scope, callback);
  }
  bool ConcurrentForEachEntry(SearchScope scope, const PathEntryCallback& callback) const override {
    return path_->ConcurrentForEachEntry(scope, callback);
  }
  bool IsEntryOnPath(const IPathEntry& entry) const override { return path_->IsEntryOnPath(entry); }

  int GetBuilds() const { return builds_.load(); }

 private:
  mutable std::atomic<int> builds_ = 0;
  mutable std::atomic<int> failuresLeft_;
  std::shared_ptr<const FakePath> path_ =
      support::APath()
          .With(support::Folder("/a").WithFile("foo.vnx").WithClass(support::Folder("Cls")))
          .With(support::Folder("/b").WithFile("foo.vnx"))
          .Build();
};

}  // namespace Quorvex::PathManagement::composite_tests
