// Deduplicated and masked paths asked by many threads at once.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <latch>
#include <set>
#include <support/mock_path.hpp>
#include <support/run_together.hpp>
#include <thread>
#include <vector>

#include "counting_component.hpp"
#include "questions.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using support::APath;
using support::Folder;
using support::InjectedFailure;
using support::LocationsOf;
using support::MockPath;
using support::RunTogether;
using testing::ElementsAre;
using testing::NiceMock;

using SharedEntries = std::shared_ptr<const std::vector<EntryPtr>>;

constexpr std::size_t kThreads = 8;
constexpr int kRounds = 50;

// What is said of both kinds of path, each over a component that lists /a and /b.
struct Kind {
  const char* name;
  PathPtr (*over)(const PathPtr& component);
};

class ListOnManyThreads : public testing::TestWithParam<Kind> {};

TEST_P(ListOnManyThreads, IsBuiltOnce) {
  for (int round = 0; round < kRounds; ++round) {
    const auto component = std::make_shared<const CountingComponent>(0);
    const PathPtr path = GetParam().over(component);
    std::vector<SharedEntries> seen(kThreads);

    RunTogether(kThreads, [&](std::size_t index) { seen[index] = path->GetMainEntries(); });

    ASSERT_EQ(component->GetBuilds(), 1);
    ASSERT_EQ(std::set<SharedEntries>(seen.begin(), seen.end()).size(), 1U);
    ASSERT_THAT(LocationsOf(*seen.front()), ElementsAre("/a", "/b"));
  }
}

TEST_P(ListOnManyThreads, IsTakenOverByAnotherWhenTheBuilderFails) {
  constexpr int kFailures = 3;
  for (int round = 0; round < kRounds; ++round) {
    const auto component = std::make_shared<const CountingComponent>(kFailures);
    const PathPtr path = GetParam().over(component);
    std::vector<SharedEntries> seen(kThreads);
    std::atomic<int> failed = 0;

    RunTogether(kThreads, [&](std::size_t index) {
      while (!seen[index]) {
        try {
          seen[index] = path->GetMainEntries();
        } catch (const InjectedFailure&) {
          ++failed;
        }
      }
    });

    ASSERT_EQ(failed, kFailures);
    ASSERT_EQ(component->GetBuilds(), kFailures + 1);
    ASSERT_EQ(std::set<SharedEntries>(seen.begin(), seen.end()).size(), 1U);
  }
}

TEST_P(ListOnManyThreads, MayBeBuiltWhileOthersWalkAndFail) {
  for (int round = 0; round < kRounds; ++round) {
    const PathPtr path = GetParam().over(std::make_shared<const CountingComponent>(2));
    std::atomic<int> wrong = 0;
    std::atomic<int> failed = 0;

    RunTogether(kThreads, [&](std::size_t index) {
      if (index % 2 == 0) {
        try {
          if (path->GetMainEntries()->size() != 2) ++wrong;
        } catch (const InjectedFailure&) {
          ++failed;
        }
      }
      if (LocationsOf(Visited(*path, kEverything)) != std::vector<std::string>{"/a", "/a/@Cls", "/b"}) ++wrong;
      if (LocationsOf(VisitedConcurrently(*path, MainScope)) != std::vector<std::string>{"/a", "/b"}) ++wrong;
      if (path->FindAllInScope(kEverything, WantedTarget(), kPolicy).size() != 2) ++wrong;
      if (path->GetMethodEntries().size() != 1) ++wrong;
    });

    ASSERT_EQ(wrong, 0);
    ASSERT_EQ(failed, 2);
  }
}

PathPtr Deduplicated(const PathPtr& component) { return std::make_shared<const DeduplicatedPath>(PathPtrs{component}); }

PathPtr MaskedWithNothing(const PathPtr& component) {
  return std::make_shared<const MultiMaskedPath>(component, std::vector<EntryPtr>{});
}

INSTANTIATE_TEST_SUITE_P(EachKind, ListOnManyThreads,
                         testing::Values(Kind{"DeduplicatedPath", Deduplicated},
                                         Kind{"MultiMaskedPath", MaskedWithNothing}),
                         [](const auto& instance) { return std::string(instance.param.name); });

// A component that takes its time over its main entries.
class SlowComponent : public NiceMock<MockPath> {
 public:
  explicit SlowComponent(std::shared_ptr<const FakePath> entries) : entries_(std::move(entries)) {}

  std::shared_ptr<const Entries> GetMainEntries() const override {
    isAsked.count_down();
    mayAnswer.wait();
    return entries_->GetMainEntries();
  }
  bool ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const override {
    return entries_->ForEachEntry(scope, callback);
  }

  mutable std::latch isAsked{1};
  mutable std::latch mayAnswer{1};

 private:
  std::shared_ptr<const FakePath> entries_;
};

TEST(DeduplicatedPath, WalksAlongItsComponentsWithoutWaitingForAListThatIsBeingBuilt) {
  // Along the components, /a/+p is visited once; along the main entries, twice.
  const auto component = std::make_shared<const SlowComponent>(
      APath().With(Folder("/a").WithPackage(Folder("p"))).With(Folder("/a/+p")).Build());
  const DeduplicatedPath path(PathPtrs{component});

  auto list = std::async(std::launch::async, [&] { return path.GetMainEntries(); });
  component->isAsked.wait();
  const auto meanwhile = LocationsOf(Visited(path, kEverything));
  component->mayAnswer.count_down();
  list.wait();

  EXPECT_THAT(meanwhile, ElementsAre("/a", "/a/+p"));
  EXPECT_THAT(LocationsOf(Visited(path, kEverything)), ElementsAre("/a", "/a/+p", "/a/+p"));
}

// A component that offers every entry to two threads at once.
class TwofoldComponent : public NiceMock<MockPath> {
 public:
  bool ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const override {
    return entries->ForEachEntry(scope, callback);
  }
  bool ConcurrentForEachEntry(SearchScope scope, const PathEntryCallback& callback) const override {
    RunTogether(2, [&](std::size_t) { entries->ForEachEntry(scope, callback); });
    return false;
  }
  EntryPtr GetMainEntryForEntry(const IPathEntry& entry) const override { return entries->GetMainEntryForEntry(entry); }
  bool IsEntryOnPath(const IPathEntry& entry) const override { return entries->IsEntryOnPath(entry); }

  std::shared_ptr<const FakePath> entries =
      APath().With(Folder("/a").WithClass(Folder("Cls"))).With(Folder("/b")).Build();
};

TEST(DeduplicatedPath, CallsBackOnTheCallersThreadAlone) {
  const auto component = std::make_shared<const TwofoldComponent>();
  const DeduplicatedPath path(PathPtrs{component});
  int visits = 0;

  path.ConcurrentForEachEntry(kEverything, [&, caller = std::this_thread::get_id()](const EntryPtr&) {
    EXPECT_EQ(std::this_thread::get_id(), caller);
    ++visits;
    return false;
  });

  EXPECT_EQ(visits, 3);
}

TEST(MultiMaskedPath, CallsBackOnTheThreadsOfThePathAndPassesMaskedEntriesByOnEach) {
  const auto component = std::make_shared<const TwofoldComponent>();
  const MultiMaskedPath path(component, {component->entries->EntryAt("/a")});
  std::atomic<int> visits = 0;
  std::atomic<int> wrong = 0;

  path.ConcurrentForEachEntry(kEverything, [&](const EntryPtr& entry) {
    ++visits;
    if (entry != component->entries->EntryAt("/b")) ++wrong;
    return false;
  });

  EXPECT_EQ(visits, 2) << "/b, once on each thread";
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
