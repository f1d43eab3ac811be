// Which entries are on the path, to which main entry they belong, and which comes first.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "recorded_components.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using support::APath;
using support::Folder;
using support::InjectedFailure;
using support::LocationOf;
using testing::Each;
using testing::ElementsAre;
using testing::Field;

using Operations = std::vector<std::string>;

class ConcatenatedPathOrder : public testing::Test {
 protected:
  bool IsBefore(std::string_view first, std::string_view second) const {
    return path_.FirstEntryIsBeforeSecondOnPath(*components_.At(first), *components_.At(second));
  }
  Operations GetOperations() const { return components_.log->GetOperations(); }

  RecordedComponents components_;
  ConcatenatedPath path_{components_.first, components_.second};
  EntryPtr stranger_ = APath().With(Folder("/a")).Build()->EntryAt("/a");
};

TEST_F(ConcatenatedPathOrder, HoldsTheEntriesOfEveryComponent) {
  for (const char* const location : {"/a", "/a/@Cls", "/b", "/c", "/c/@Cls"}) {
    EXPECT_TRUE(path_.IsEntryOnPath(*components_.At(location))) << location;
  }
  EXPECT_FALSE(path_.IsEntryOnPath(*stranger_));
}

TEST_F(ConcatenatedPathOrder, AsksForAnEntryOnlyUntilAComponentHoldsIt) {
  static_cast<void>(path_.IsEntryOnPath(*components_.At("/b")));

  EXPECT_THAT(GetOperations(), ElementsAre("first.IsEntryOnPath"));
}

TEST_F(ConcatenatedPathOrder, GivesTheMainEntryThatTheFirstHolderNames) {
  EXPECT_EQ(LocationOf(path_.GetMainEntryForEntry(*components_.At("/c/@Cls"))), "/c");
  EXPECT_THAT(GetOperations(),
              ElementsAre("first.IsEntryOnPath", "second.IsEntryOnPath", "second.GetMainEntryForEntry"));

  components_.log->Clear();
  EXPECT_EQ(path_.GetMainEntryForEntry(*components_.At("/a")), components_.At("/a"));
  EXPECT_THAT(GetOperations(), ElementsAre("first.IsEntryOnPath", "first.GetMainEntryForEntry"));
}

TEST_F(ConcatenatedPathOrder, GivesTheParentEntryThatTheFirstHolderNames) {
  EXPECT_EQ(LocationOf(path_.GetParentEntryForEntry(*components_.At("/c/@Cls"))), "/c");
  EXPECT_THAT(GetOperations(),
              ElementsAre("first.IsEntryOnPath", "second.IsEntryOnPath", "second.GetParentEntryForEntry"));

  components_.log->Clear();
  EXPECT_EQ(path_.GetParentEntryForEntry(*components_.At("/a")), nullptr);
  EXPECT_THAT(GetOperations(), ElementsAre("first.IsEntryOnPath", "first.GetParentEntryForEntry"));
}

TEST_F(ConcatenatedPathOrder, KnowsNeitherTheMainEntryNorTheParentOfAStranger) {
  EXPECT_EQ(path_.GetMainEntryForEntry(*stranger_), nullptr);
  EXPECT_EQ(path_.GetParentEntryForEntry(*stranger_), nullptr);
}

TEST_F(ConcatenatedPathOrder, PassesTheVeryEntryOn) {
  const EntryPtr entry = components_.At("/a");

  static_cast<void>(path_.IsEntryOnPath(*entry));
  static_cast<void>(path_.GetMainEntryForEntry(*entry));
  static_cast<void>(path_.GetParentEntryForEntry(*entry));

  EXPECT_THAT(components_.log->GetCalls(), Each(Field(&Call::arguments, ElementsAre(entry.get()))));
}

TEST_F(ConcatenatedPathOrder, LetsTheComponentThatHoldsBothEntriesDecide) {
  EXPECT_TRUE(IsBefore("/a", "/b"));
  EXPECT_FALSE(IsBefore("/b", "/a"));
  EXPECT_FALSE(IsBefore("/a", "/a/@Cls"));
  EXPECT_FALSE(IsBefore("/a/@Cls", "/a"));
}

TEST_F(ConcatenatedPathOrder, PutsTheEntriesOfAnEarlierComponentFirst) {
  EXPECT_TRUE(IsBefore("/b", "/c"));
  EXPECT_TRUE(IsBefore("/a/@Cls", "/c"));
  EXPECT_FALSE(IsBefore("/c", "/b"));
  EXPECT_FALSE(IsBefore("/c/@Cls", "/a"));
}

TEST_F(ConcatenatedPathOrder, PutsNoEntryBeforeItself) {
  for (const char* const location : {"/a", "/a/@Cls", "/b", "/c", "/c/@Cls"}) {
    EXPECT_FALSE(IsBefore(location, location)) << location;
  }
}

TEST_F(ConcatenatedPathOrder, PutsAnEntryOnThePathBeforeAStranger) {
  const EntryPtr entry = components_.At("/c");

  EXPECT_TRUE(path_.FirstEntryIsBeforeSecondOnPath(*entry, *stranger_));
  EXPECT_FALSE(path_.FirstEntryIsBeforeSecondOnPath(*stranger_, *entry));
  EXPECT_FALSE(path_.FirstEntryIsBeforeSecondOnPath(*stranger_, *stranger_));
}

TEST_F(ConcatenatedPathOrder, AsksEachComponentForTheFirstEntryThenForTheSecond) {
  const EntryPtr first = components_.At("/c");
  const EntryPtr second = components_.At("/c/@Cls");

  static_cast<void>(path_.FirstEntryIsBeforeSecondOnPath(*first, *second));

  const auto calls = components_.log->GetCalls();
  EXPECT_THAT(GetOperations(), ElementsAre("first.IsEntryOnPath", "first.IsEntryOnPath", "second.IsEntryOnPath",
                                           "second.IsEntryOnPath", "second.FirstEntryIsBeforeSecondOnPath"));
  EXPECT_THAT(calls[0].arguments, ElementsAre(first.get()));
  EXPECT_THAT(calls[1].arguments, ElementsAre(second.get()));
  EXPECT_THAT(calls[2].arguments, ElementsAre(first.get()));
  EXPECT_THAT(calls[3].arguments, ElementsAre(second.get()));
  EXPECT_THAT(calls[4].arguments, ElementsAre(first.get(), second.get()));
}

TEST_F(ConcatenatedPathOrder, AsksLaterComponentsNothingOnceAnEntryIsPlaced) {
  EXPECT_TRUE(IsBefore("/a", "/c"));
  EXPECT_THAT(GetOperations(), ElementsAre("first.IsEntryOnPath", "first.IsEntryOnPath"));

  components_.log->Clear();
  EXPECT_FALSE(IsBefore("/c", "/a"));
  EXPECT_THAT(GetOperations(), ElementsAre("first.IsEntryOnPath", "first.IsEntryOnPath"));
}

TEST_F(ConcatenatedPathOrder, LetsTheFailureOfAComponentPass) {
  components_.log->FailNext("first.IsEntryOnPath");
  EXPECT_THROW(static_cast<void>(IsBefore("/a", "/b")), InjectedFailure);

  components_.log->FailNext("first.FirstEntryIsBeforeSecondOnPath");
  EXPECT_THROW(static_cast<void>(IsBefore("/a", "/b")), InjectedFailure);

  components_.log->FailNext("first.GetMainEntryForEntry");
  EXPECT_THROW(static_cast<void>(path_.GetMainEntryForEntry(*components_.At("/a"))), InjectedFailure);
}

// `shared` is an entry of both components.
class ConcatenatedPathWithASharedEntry : public testing::Test {
 protected:
  std::shared_ptr<const FakePath> source_ = APath().With(Folder("/shared").WithClass(Folder("Cls"))).Build();
  EntryPtr shared_ = source_->EntryAt("/shared");
  EntryPtr sharedClass_ = source_->EntryAt("/shared/@Cls");
};

TEST_F(ConcatenatedPathWithASharedEntry, PlacesItByTheFirstComponentThatHoldsIt) {
  const auto earlier = APath().With(source_->EntryAt("/shared")).Build();
  const auto later = APath().With(Folder("/x")).With(source_->EntryAt("/shared")).Build();

  const ConcatenatedPath path(earlier, later);

  EXPECT_TRUE(path.FirstEntryIsBeforeSecondOnPath(*shared_, *later->EntryAt("/x")));
  EXPECT_FALSE(path.FirstEntryIsBeforeSecondOnPath(*later->EntryAt("/x"), *shared_));
  EXPECT_TRUE(path.FirstEntryIsBeforeSecondOnPath(*sharedClass_, *later->EntryAt("/x")));
}

TEST_F(ConcatenatedPathWithASharedEntry, ForgetsItsPlaceOnLaterComponents) {
  const auto earlier = APath().With(source_->EntryAt("/shared")).Build();
  const auto later = APath().With(Folder("/x")).With(source_->EntryAt("/shared")).Build();

  const ConcatenatedPath path(earlier, later);

  ASSERT_TRUE(later->FirstEntryIsBeforeSecondOnPath(*later->EntryAt("/x"), *shared_));
  EXPECT_FALSE(path.FirstEntryIsBeforeSecondOnPath(*later->EntryAt("/x"), *shared_));
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
