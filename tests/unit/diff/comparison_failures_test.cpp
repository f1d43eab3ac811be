// Comparisons that do not reach their end.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <support/allocations.hpp>
#include <support/call_log.hpp>

#include "made_entry.hpp"

namespace Quorvex::PathManagement::diff_tests {
namespace {

using support::Allocations;
using support::InjectedFailure;
using testing::ElementsAre;
using testing::IsEmpty;

void Fail() { throw InjectedFailure("asked"); }

std::shared_ptr<MadeEntry> AnEntryWithoutLocation(std::string_view name) {
  const auto entry = AnEntry(name);
  entry->whenAskedForLocation = Fail;
  return entry;
}

TEST(FailedComparison, PassesTheExceptionOfALocationToTheCaller) {
  PathEntryVectorDifferentiator differentiator;

  EXPECT_THROW(
      differentiator.Compare({AnEntryWithoutLocation("a"), AnEntry("b")}, {}, ComparisonFilter::MainEntriesOnly),
      InjectedFailure);
  EXPECT_EQ(Changes(differentiator).Count(), 0U);
}

TEST(FailedComparison, PassesTheExceptionOfALocationInALargeVectorToTheCaller) {
  EntryPtrs entries;
  for (int number = 0; number < 5'000; ++number) entries.push_back(AnEntry(std::to_string(number)));
  entries[3'000] = AnEntryWithoutLocation("a");
  PathEntryVectorDifferentiator differentiator;

  EXPECT_THROW(differentiator.Compare({}, entries, ComparisonFilter::MainEntriesOnly), InjectedFailure);
  EXPECT_EQ(Changes(differentiator).Count(), 0U);
}

TEST(FailedComparison, KeepsReorderedEntriesWhenTheSortByFolderFails) {
  const EntryPtr x = AnEntry("x");
  const EntryPtr y = AnEntry("y");
  PathEntryVectorDifferentiator differentiator;

  EXPECT_THROW(differentiator.Compare({x, y}, {y, x, AnEntryWithoutLocation("a"), AnEntryWithoutLocation("b")},
                                      ComparisonFilter::MainEntriesOnly),
               InjectedFailure);

  const Changes changes(differentiator);
  EXPECT_THAT(changes.reordered, ElementsAre(x));
  EXPECT_EQ(changes.Count(), 1U);
}

// Alone in its vector, an entry is not asked before the merge.
TEST(FailedComparison, KeepsWhatItAppendedBeforeTheMergeFailed) {
  const EntryPtrs before = {AnEntry("a"), AnEntry("b")};
  const auto after = AnEntry("c");
  int questions = 0;
  after->whenAskedForLocation = [&] {
    if (++questions > 1) Fail();
  };
  PathEntryVectorDifferentiator differentiator;

  EXPECT_THROW(differentiator.Compare(before, {after}, ComparisonFilter::MainEntriesOnly), InjectedFailure);

  const Changes changes(differentiator);
  EXPECT_THAT(changes.removed, ElementsAre(before[0]));
  EXPECT_EQ(changes.Count(), 1U);
}

TEST(FailedComparison, KeepsTheMainEntriesWhenMethodEntriesFail) {
  const auto before = AnEntry("a");
  const auto after = AnEntry("a");
  after->whenAskedForMethodEntries = [](std::string_view) { Fail(); };
  const EntryPtr added = AnEntry("b");
  PathEntryVectorDifferentiator differentiator;

  EXPECT_THROW(differentiator.Compare({before}, {after, added}, ComparisonFilter::IncludeMethodEntries),
               InjectedFailure);

  const Changes changes(differentiator);
  EXPECT_THAT(changes.refreshedBefore, ElementsAre(before));
  EXPECT_THAT(changes.refreshedAfter, ElementsAre(after));
  EXPECT_THAT(changes.added, ElementsAre(added));
}

TEST(FailedComparison, KeepsWhatEarlierOnesAppendedAndLetsLaterOnesAppend) {
  const EntryPtr a = AnEntry("a");
  const EntryPtr b = AnEntry("b");
  PathEntryVectorDifferentiator differentiator;

  differentiator.Compare({}, {a}, ComparisonFilter::MainEntriesOnly);
  EXPECT_THROW(differentiator.Compare({}, {b, AnEntryWithoutLocation("c")}, ComparisonFilter::MainEntriesOnly),
               InjectedFailure);
  differentiator.Compare({}, {b}, ComparisonFilter::MainEntriesOnly);

  EXPECT_THAT(Changes(differentiator).added, ElementsAre(a, b));
}

TEST(Comparison, DoesNotAskAnEntryForItsLocationThatHasNoOtherToBeComparedWith) {
  const EntryPtr only = AnEntryWithoutLocation("a");
  const EntryPtr kept = AnEntryWithoutLocation("b");

  EXPECT_THAT(ChangesOf({kept}, {kept, only}).added, ElementsAre(only));
  EXPECT_THAT(ChangesOf({only, kept}, {kept}).removed, ElementsAre(only));
}

bool IsBeginningOf(const EntryPtrs& part, const EntryPtrs& whole) {
  return part.size() <= whole.size() && std::equal(part.begin(), part.end(), whole.begin());
}

// Lets each allocation of the comparison fail in turn. What is there then is the beginning of what would have come.
std::size_t ExpectBeginningsWhereverMemoryEnds(const EntryPtrs& oldEntries, const EntryPtrs& newEntries) {
  const Changes whole = ChangesOf(oldEntries, newEntries, ComparisonFilter::IncludeMethodEntries);
  for (std::size_t successes = 0;; ++successes) {
    PathEntryVectorDifferentiator differentiator;
    EntryPtrs left = oldEntries;
    EntryPtrs right = newEntries;
    try {
      const Allocations allocations(successes);
      differentiator.Compare(std::move(left), std::move(right), ComparisonFilter::IncludeMethodEntries);
      return successes;
    } catch (const std::bad_alloc&) {
      const Changes changes(differentiator);
      EXPECT_TRUE(IsBeginningOf(changes.added, whole.added)) << successes;
      EXPECT_TRUE(IsBeginningOf(changes.removed, whole.removed)) << successes;
      EXPECT_TRUE(IsBeginningOf(changes.reordered, whole.reordered)) << successes;
      EXPECT_TRUE(IsBeginningOf(changes.refreshedBefore, whole.refreshedBefore)) << successes;
      EXPECT_TRUE(IsBeginningOf(changes.refreshedAfter, whole.refreshedAfter)) << successes;
      EXPECT_EQ(changes.refreshedBefore.size(), changes.refreshedAfter.size()) << successes;
    }
  }
}

TEST(FailedComparison, KeepsRefreshedEntriesAlignedWhereverMemoryEnds) {
  EntryPtrs before = {AnEntry("x"), AnEntry("y"), AnEntry("old")};
  EntryPtrs after = {before[1], before[0], AnEntry("new")};
  for (const auto* name : {"a", "b", "c", "d", "e", "f", "g", "h", "i"}) {
    const auto left = AnEntry(name);
    const auto right = AnEntry(name);
    left->first = {AnEntry(name), before[0]};
    right->first = {before[0], AnEntry(name), AnEntry("more")};
    before.push_back(left);
    after.push_back(right);
  }
  EXPECT_GT(ExpectBeginningsWhereverMemoryEnds(before, after), 20U);

  after.push_back(before[0]);
  EXPECT_GT(ExpectBeginningsWhereverMemoryEnds(before, after), 20U);
}

}  // namespace
}  // namespace Quorvex::PathManagement::diff_tests
