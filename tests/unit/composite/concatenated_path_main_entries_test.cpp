// The one list that is built once and kept.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <support/mock_path.hpp>
#include <support/run_together.hpp>

#include "counting_component.hpp"
#include "recorded_components.hpp"

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
using testing::Return;

using SharedEntries = std::shared_ptr<const std::vector<EntryPtr>>;

constexpr std::size_t kThreads = 8;

TEST(ConcatenatedPath, ListsTheMainEntriesOfEachComponentInOrder) {
  const RecordedComponents components;
  const ConcatenatedPath path(components.first, components.second);

  EXPECT_THAT(LocationsOf(*path.GetMainEntries()), ElementsAre("/a", "/b", "/c"));
  EXPECT_THAT(components.log->GetOperations(), ElementsAre("first.GetMainEntries", "second.GetMainEntries"));
}

TEST(ConcatenatedPath, HandsOutTheSameVectorOfMainEntriesEveryTime) {
  const RecordedComponents components;
  const ConcatenatedPath path(components.first, components.second);

  const auto once = path.GetMainEntries();
  const auto again = path.GetMainEntries();

  EXPECT_EQ(once, again);
  EXPECT_THAT(components.log->GetOperations(), ElementsAre("first.GetMainEntries", "second.GetMainEntries"));
}

TEST(ConcatenatedPath, HandsOutTheEntryObjectsOfTheComponents) {
  const RecordedComponents components;
  const ConcatenatedPath path(components.first, components.second);

  EXPECT_THAT(*path.GetMainEntries(), ElementsAre(components.At("/a"), components.At("/b"), components.At("/c")));
}

TEST(ConcatenatedPath, KeepsTheOldMainEntriesWhenThoseOfAComponentChange) {
  const auto mock = std::make_shared<NiceMock<MockPath>>();
  const auto entry = APath().With(Folder("/a")).Build()->EntryAt("/a");
  const auto one = std::make_shared<const MockPath::Entries>(MockPath::Entries{entry});
  const auto two = std::make_shared<const MockPath::Entries>(MockPath::Entries{entry, entry});
  const ConcatenatedPath path(PathPtrs{mock});

  ON_CALL(*mock, GetMainEntries).WillByDefault(Return(one));
  EXPECT_THAT(*path.GetMainEntries(), ElementsAre(entry));

  ON_CALL(*mock, GetMainEntries).WillByDefault(Return(two));
  EXPECT_THAT(*path.GetMainEntries(), ElementsAre(entry));
}

TEST(ConcatenatedPath, IsOutlivedByItsListOfMainEntries) {
  SharedEntries entries;
  {
    const RecordedComponents components;
    entries = ConcatenatedPath(components.first, components.second).GetMainEntries();
  }

  EXPECT_THAT(LocationsOf(*entries), ElementsAre("/a", "/b", "/c"));
}

TEST(ConcatenatedPath, BuildsItsMainEntriesFromTheStartAfterAFailedBuild) {
  const RecordedComponents components;
  const ConcatenatedPath path(components.first, components.second);
  components.log->FailNext("second.GetMainEntries", 2);

  EXPECT_THROW(static_cast<void>(path.GetMainEntries()), InjectedFailure);
  EXPECT_THROW(static_cast<void>(path.GetMainEntries()), InjectedFailure);
  components.log->Clear();

  EXPECT_THAT(LocationsOf(*path.GetMainEntries()), ElementsAre("/a", "/b", "/c"));
  EXPECT_THAT(components.log->GetOperations(), ElementsAre("first.GetMainEntries", "second.GetMainEntries"));
}

TEST(ConcatenatedPath, LeavesTheCacheEmptyAfterAFailedBuild) {
  class Opened : public ConcatenatedPath {
   public:
    using ConcatenatedPath::ConcatenatedPath;
    using ConcatenatedPath::MainEntriesCache;
  };
  const RecordedComponents components;
  const Opened path(components.first, components.second);
  components.log->FailNext("second.GetMainEntries");

  EXPECT_THROW(static_cast<void>(path.GetMainEntries()), InjectedFailure);
  EXPECT_EQ(path.MainEntriesCache, nullptr);

  const auto entries = path.GetMainEntries();
  EXPECT_EQ(path.MainEntriesCache, entries);
}

TEST(ConcatenatedPath, BuildsItsMainEntriesOnceWhenManyThreadsAskFirst) {
  for (int round = 0; round < 50; ++round) {
    const auto component = std::make_shared<const CountingComponent>(0);
    const ConcatenatedPath path(PathPtrs{component});
    std::vector<SharedEntries> seen(kThreads);

    RunTogether(kThreads, [&](std::size_t index) { seen[index] = path.GetMainEntries(); });

    ASSERT_EQ(component->GetBuilds(), 1);
    ASSERT_EQ(std::set<SharedEntries>(seen.begin(), seen.end()).size(), 1U);
    ASSERT_THAT(LocationsOf(*seen.front()), ElementsAre("/a", "/b"));
  }
}

TEST(ConcatenatedPath, LetsAnotherThreadTakeOverWhenTheBuilderFails) {
  constexpr int kFailures = 3;
  for (int round = 0; round < 50; ++round) {
    const auto component = std::make_shared<const CountingComponent>(kFailures);
    const ConcatenatedPath path(PathPtrs{component});
    std::vector<SharedEntries> seen(kThreads);
    std::atomic<int> failed = 0;

    RunTogether(kThreads, [&](std::size_t index) {
      while (!seen[index]) {
        try {
          seen[index] = path.GetMainEntries();
        } catch (const InjectedFailure&) {
          ++failed;
        }
      }
    });

    ASSERT_EQ(failed, kFailures);
    ASSERT_EQ(component->GetBuilds(), kFailures + 1);
    ASSERT_EQ(std::set<SharedEntries>(seen.begin(), seen.end()).size(), 1U);
    ASSERT_THAT(LocationsOf(*seen.front()), ElementsAre("/a", "/b"));
  }
}

TEST(ConcatenatedPath, AnswersEverythingFromManyThreadsWhileTheMainEntriesAreBuilt) {
  const auto first = APath().With(Folder("/a").WithFile("foo.vnx")).Build();
  const auto second = APath().With(Folder("/b").WithFile("foo.vnx")).Build();
  const ConcatenatedPath path(first, second);
  const auto target = detail::SearchTarget::Owning(u"foo", u".vnx");
  std::atomic<int> wrong = 0;

  RunTogether(kThreads, [&](std::size_t) {
    if (path.GetMainEntries()->size() != 2) ++wrong;
    if (path.FindAllInScope(kEverything, target, kPolicy).size() != 2) ++wrong;
    if (!path.IsEntryOnPath(*second->EntryAt("/b"))) ++wrong;
    if (!path.FirstEntryIsBeforeSecondOnPath(*first->EntryAt("/a"), *second->EntryAt("/b"))) ++wrong;
    if (path.ForEachEntry(kEverything, [](const EntryPtr&) { return false; })) ++wrong;
  });

  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
