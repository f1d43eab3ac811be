// Comparisons that end where an entry fails to give its location, when others were already told by folder.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <support/call_log.hpp>

#include "made_entry.hpp"

namespace Quorvex::PathManagement::diff_tests {
namespace {

using support::InjectedFailure;
using testing::ElementsAre;

// Compares up to the failure of `failing`, which has no location any more when `appended` holds something.
Changes ChangesBeforeFailureOf(MadeEntry& failing, const EntryPtrs& oldEntries, const EntryPtrs& newEntries,
                               std::shared_ptr<const EntryPtrs> (PathEntryVectorDifferentiator::*appended)() const) {
  PathEntryVectorDifferentiator differentiator;
  failing.whenAskedForLocation = [entries = (differentiator.*appended)()] {
    if (!entries->empty()) throw InjectedFailure("asked");
  };
  EXPECT_THROW(differentiator.Compare(oldEntries, newEntries, ComparisonFilter::MainEntriesOnly), InjectedFailure);
  return Changes(differentiator);
}

TEST(FailedMerge, KeepsWhatWasAdded) {
  const auto failing = AnEntry("c");
  const EntryPtr a = AnEntry("a");

  const Changes changes =
      ChangesBeforeFailureOf(*failing, {failing}, {a, AnEntry("b")}, &PathEntryVectorDifferentiator::GetAdded);

  EXPECT_THAT(changes.added, ElementsAre(a));
  EXPECT_EQ(changes.Count(), 1U);
}

TEST(FailedMerge, KeepsWhatWasRemoved) {
  const auto failing = AnEntry("c");
  const EntryPtr a = AnEntry("a");

  const Changes changes =
      ChangesBeforeFailureOf(*failing, {a, AnEntry("b")}, {failing}, &PathEntryVectorDifferentiator::GetRemoved);

  EXPECT_THAT(changes.removed, ElementsAre(a));
  EXPECT_EQ(changes.Count(), 1U);
}

TEST(FailedMerge, KeepsWhatWasRefreshedInPairs) {
  const auto failing = AnEntry("c");
  const EntryPtr before = AnEntry("a");
  const EntryPtr after = AnEntry("a");

  for (const bool failsOnTheOldSide : {true, false}) {
    const EntryPtr other = AnEntry("b");
    const Changes changes = ChangesBeforeFailureOf(*failing, {before, failsOnTheOldSide ? failing : other},
                                                   {after, failsOnTheOldSide ? other : failing},
                                                   &PathEntryVectorDifferentiator::GetRefreshedAfter);

    EXPECT_THAT(changes.refreshedBefore, ElementsAre(before));
    EXPECT_THAT(changes.refreshedAfter, ElementsAre(after));
    EXPECT_EQ(changes.Count(), 2U);
  }
}

TEST(FailedMerge, KeepsWhatWasAddedAndReorderedWhereObjectsRepeat) {
  const auto failing = AnEntry("c");
  const EntryPtr a = AnEntry("a");
  const EntryPtr x = AnEntry("x");
  const EntryPtr y = AnEntry("y");

  const Changes changes = ChangesBeforeFailureOf(*failing, {y, x, x, failing}, {x, x, y, a, AnEntry("b")},
                                                 &PathEntryVectorDifferentiator::GetAdded);

  EXPECT_THAT(changes.reordered, ElementsAre(y));
  EXPECT_THAT(changes.added, ElementsAre(a));
  EXPECT_EQ(changes.Count(), 2U);
}

TEST(FailedMerge, KeepsTheOccurrencesThatWereRemovedWhereObjectsRepeat) {
  const auto failing = AnEntry("c");
  const EntryPtr a = AnEntry("a");
  const EntryPtr b = AnEntry("b");

  const Changes changes =
      ChangesBeforeFailureOf(*failing, {a, a, b}, {a, failing, failing}, &PathEntryVectorDifferentiator::GetRemoved);

  EXPECT_THAT(changes.removed, ElementsAre(a));
  EXPECT_EQ(changes.Count(), 1U);
}

TEST(FailedSortByFolder, KeepsReorderedEntriesWhereObjectsRepeat) {
  const auto failing = AnEntry("a");
  failing->whenAskedForLocation = [] { throw InjectedFailure("asked"); };
  const EntryPtr x = AnEntry("x");
  const EntryPtr y = AnEntry("y");
  PathEntryVectorDifferentiator differentiator;

  EXPECT_THROW(differentiator.Compare({y, x, x}, {x, x, y, failing, AnEntry("b")}, ComparisonFilter::MainEntriesOnly),
               InjectedFailure);

  const Changes changes(differentiator);
  EXPECT_THAT(changes.reordered, ElementsAre(y));
  EXPECT_EQ(changes.Count(), 1U);
}

}  // namespace
}  // namespace Quorvex::PathManagement::diff_tests
