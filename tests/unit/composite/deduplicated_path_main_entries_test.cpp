// The list of main entries is built once and kept.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <support/mock_path.hpp>

#include "repeated_components.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using support::APath;
using support::Folder;
using support::InjectedFailure;
using support::LocationsOf;
using support::MockPath;
using testing::ElementsAre;
using testing::NiceMock;
using testing::Return;

class Opened : public DeduplicatedPath {
 public:
  using DeduplicatedPath::DeduplicatedPath;
  using DeduplicatedPath::MainEntriesCache;
};

TEST(DeduplicatedPath, HandsOutTheSameVectorOfMainEntriesEveryTime) {
  const RepeatedComponents components;
  const Opened path(components.Both());

  const auto once = path.GetMainEntries();
  const auto again = path.GetMainEntries();

  EXPECT_EQ(once, again);
  EXPECT_EQ(path.MainEntriesCache, once);
  EXPECT_THAT(components.log->GetOperations(), ElementsAre("first.GetMainEntries", "second.GetMainEntries"));
}

TEST(DeduplicatedPath, KeepsAnEmptyListOfMainEntriesAsWell) {
  const auto log = std::make_shared<CallLog>();
  const DeduplicatedPath path(PathPtrs{APath().Recording("empty", log).Build()});

  EXPECT_EQ(path.GetMainEntries(), path.GetMainEntries());
  EXPECT_THAT(log->GetOperations(), ElementsAre("empty.GetMainEntries"));
}

TEST(DeduplicatedPath, KeepsTheOldMainEntriesWhenThoseOfAComponentChange) {
  const auto mock = std::make_shared<NiceMock<MockPath>>();
  const auto source = APath().With(Folder("/a")).With(Folder("/b")).Build();
  const DeduplicatedPath path(PathPtrs{mock});

  ON_CALL(*mock, GetMainEntries)
      .WillByDefault(Return(std::make_shared<const MockPath::Entries>(MockPath::Entries{source->EntryAt("/a")})));
  EXPECT_THAT(LocationsOf(*path.GetMainEntries()), ElementsAre("/a"));

  ON_CALL(*mock, GetMainEntries)
      .WillByDefault(Return(std::make_shared<const MockPath::Entries>(MockPath::Entries{source->EntryAt("/b")})));
  EXPECT_THAT(LocationsOf(*path.GetMainEntries()), ElementsAre("/a"));
}

TEST(DeduplicatedPath, IsOutlivedByItsListOfMainEntries) {
  std::shared_ptr<const std::vector<EntryPtr>> entries;
  {
    const RepeatedComponents components;
    entries = DeduplicatedPath(components.Both()).GetMainEntries();
  }

  EXPECT_THAT(LocationsOf(*entries), ElementsAre("/a", "/b", "/c"));
}

TEST(DeduplicatedPath, BuildsItsMainEntriesFromTheStartAfterAFailedBuild) {
  const RepeatedComponents components;
  const Opened path(components.Both());
  components.log->FailNext("second.GetMainEntries", 2);

  EXPECT_THROW(static_cast<void>(path.GetMainEntries()), InjectedFailure);
  EXPECT_THROW(static_cast<void>(path.GetMainEntries()), InjectedFailure);
  EXPECT_EQ(path.MainEntriesCache, nullptr);
  components.log->Clear();

  EXPECT_THAT(LocationsOf(*path.GetMainEntries()), ElementsAre("/a", "/b", "/c"));
  EXPECT_THAT(components.log->GetOperations(), ElementsAre("first.GetMainEntries", "second.GetMainEntries"));
}

// An entry whose location cannot be told.
class PlacelessEntry : public IPathEntry {
 public:
  PathEntryType GetEntryType() const override { return PathEntryType::Main; }
  std::shared_ptr<const std::vector<std::shared_ptr<const PathItem>>> GetItems() const override { return nullptr; }
  foundation::storage::vfs::AbsoluteIRI GetAbsoluteIRI() const override { throw InjectedFailure("GetAbsoluteIRI"); }
  EntryPtr GetPrivateEntry() const override { return nullptr; }
  EntryPtr GetSecondSingleEntry() const override { return nullptr; }
  std::shared_ptr<const std::vector<EntryPtr>> GetFirstEntryGroup() const override { return nullptr; }
  std::shared_ptr<const std::vector<EntryPtr>> GetSecondEntryGroup() const override { return nullptr; }
  std::shared_ptr<const std::vector<EntryPtr>> GetThirdEntryGroup() const override { return nullptr; }
  std::shared_ptr<const PathItem> FindFirst(const detail::SearchTarget&, FilenameMatchingPolicy) const override {
    return nullptr;
  }
  bool ForEachEntryInScope(SearchScope, const PathEntryCallback&) const override { return false; }
  std::shared_ptr<const FilenameComparator> GetFilenameComparator(FilenameMatchingPolicy) const override {
    return nullptr;
  }
};

TEST(DeduplicatedPath, LetsTheFailureOfAnEntryToTellItsLocationPass) {
  const MockPath::Entries placeless = {std::make_shared<const PlacelessEntry>()};
  const auto mock = std::make_shared<NiceMock<MockPath>>();
  ON_CALL(*mock, GetMainEntries).WillByDefault(Return(std::make_shared<const MockPath::Entries>(placeless)));
  ON_CALL(*mock, GetMethodEntries).WillByDefault(Return(placeless));
  ON_CALL(*mock, ForEachEntry).WillByDefault([&](SearchScope, const PathEntryCallback& callback) {
    return callback(placeless.front());
  });
  const Opened path(PathPtrs{mock});

  EXPECT_THROW(static_cast<void>(path.GetMainEntries()), InjectedFailure);
  EXPECT_EQ(path.MainEntriesCache, nullptr);
  EXPECT_THROW(static_cast<void>(path.GetMethodEntries()), InjectedFailure);
  EXPECT_THROW(path.ForEachEntry(kEverything, [](const EntryPtr&) { return false; }), InjectedFailure);
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
