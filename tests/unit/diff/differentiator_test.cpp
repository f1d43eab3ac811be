// What PathEntryVectorDifferentiator tells of two vectors of entries.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

#include "made_entry.hpp"

namespace Quorvex::PathManagement::diff_tests {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

TEST(ComparisonFilter, HasTwoValuesOfThirtyTwoBits) {
  EXPECT_EQ(sizeof(ComparisonFilter), 4U);
  EXPECT_EQ(static_cast<std::uint32_t>(ComparisonFilter::MainEntriesOnly), 0U);
  EXPECT_EQ(static_cast<std::uint32_t>(ComparisonFilter::IncludeMethodEntries), 1U);
}

TEST(PathEntryVectorDifferentiator, BeginsWithFiveEmptyVectors) {
  const PathEntryVectorDifferentiator differentiator;

  EXPECT_THAT(*differentiator.GetAdded(), IsEmpty());
  EXPECT_THAT(*differentiator.GetRemoved(), IsEmpty());
  EXPECT_THAT(*differentiator.GetReordered(), IsEmpty());
  EXPECT_THAT(*differentiator.GetRefreshedAfter(), IsEmpty());
  EXPECT_THAT(*differentiator.GetRefreshedBefore(), IsEmpty());
}

TEST(PathEntryVectorDifferentiator, SharesItsVectorsWithWhoAsksForThem) {
  const EntryPtr a = AnEntry("a");
  const EntryPtr b = AnEntry("b");
  const EntryPtr c = AnEntry("c");
  const EntryPtr d = AnEntry("d");
  const EntryPtr otherC = AnEntry("c");
  const EntryPtr e = AnEntry("e");
  PathEntryVectorDifferentiator differentiator;
  const auto added = differentiator.GetAdded();
  const auto removed = differentiator.GetRemoved();
  const auto reordered = differentiator.GetReordered();
  const auto refreshedAfter = differentiator.GetRefreshedAfter();
  const auto refreshedBefore = differentiator.GetRefreshedBefore();

  differentiator.Compare({a, b, c, d}, {b, a, otherC, e}, ComparisonFilter::MainEntriesOnly);

  EXPECT_THAT(*added, ElementsAre(e));
  EXPECT_THAT(*removed, ElementsAre(d));
  EXPECT_THAT(*reordered, ElementsAre(a));
  EXPECT_THAT(*refreshedAfter, ElementsAre(otherC));
  EXPECT_THAT(*refreshedBefore, ElementsAre(c));
  EXPECT_EQ(added, differentiator.GetAdded());
  EXPECT_EQ(removed, differentiator.GetRemoved());
  EXPECT_EQ(reordered, differentiator.GetReordered());
  EXPECT_EQ(refreshedAfter, differentiator.GetRefreshedAfter());
  EXPECT_EQ(refreshedBefore, differentiator.GetRefreshedBefore());
}

TEST(PathEntryVectorDifferentiator, IsOutlivedByItsVectors) {
  std::shared_ptr<const EntryPtrs> added;
  {
    PathEntryVectorDifferentiator differentiator;
    differentiator.Compare({}, {AnEntry("a")}, ComparisonFilter::MainEntriesOnly);
    added = differentiator.GetAdded();
  }
  EXPECT_EQ(NamesOf(*added), "a");
}

TEST(Comparison, OfTwoEmptyVectorsAppendsNothing) {
  EXPECT_EQ(ChangesOf({}, {}).Count(), 0U);
  EXPECT_EQ(ChangesOf({}, {}, ComparisonFilter::IncludeMethodEntries).Count(), 0U);
}

TEST(Comparison, WithNothingAddsEveryNewEntryInTheOrderOfFolders) {
  const Changes changes = ChangesOf({}, {AnEntry("c"), AnEntry("a"), AnEntry("d"), AnEntry("b")});

  EXPECT_EQ(NamesOf(changes.added), "a b c d");
  EXPECT_EQ(changes.Count(), 4U);
}

TEST(Comparison, ToNothingRemovesEveryOldEntryInTheOrderOfFolders) {
  const Changes changes = ChangesOf({AnEntry("c"), AnEntry("a"), AnEntry("d"), AnEntry("b")}, {});

  EXPECT_EQ(NamesOf(changes.removed), "a b c d");
  EXPECT_EQ(changes.Count(), 4U);
}

TEST(Comparison, OfTheSameObjectsInTheSameOrderAppendsNothing) {
  const EntryPtrs entries = {AnEntry("b"), AnEntry("a"), AnEntry("c")};
  EXPECT_EQ(ChangesOf(entries, entries).Count(), 0U);
  EXPECT_EQ(ChangesOf(entries, entries, ComparisonFilter::IncludeMethodEntries).Count(), 0U);
}

TEST(Comparison, OfTheSameObjectsInAnotherOrderReordersThoseOffTheLongestCommonSubsequence) {
  const EntryPtr x = AnEntry("x");
  const EntryPtr y = AnEntry("y");
  const EntryPtr z = AnEntry("z");

  const Changes changes = ChangesOf({x, y, z}, {z, x, y});

  EXPECT_THAT(changes.reordered, ElementsAre(z));
  EXPECT_EQ(changes.Count(), 1U);
}

TEST(Comparison, OfTwoSwappedEntriesReordersTheOneThatStoodFirst) {
  const EntryPtr x = AnEntry("x");
  const EntryPtr y = AnEntry("y");

  EXPECT_THAT(ChangesOf({x, y}, {y, x}).reordered, ElementsAre(x));
}

TEST(Comparison, ListsReorderedEntriesInTheOrderOfAddresses) {
  EntryPtrs entries;
  for (int count = 0; count < 50; ++count) entries.push_back(AnEntry("folder"));
  const EntryPtrs backwards(entries.rbegin(), entries.rend());

  const Changes changes = ChangesOf(entries, backwards);

  EntryPtrs butTheLast = entries;
  butTheLast.pop_back();
  EXPECT_THAT(changes.reordered, ElementsAreArray(ByAddress(butTheLast)));
}

TEST(Comparison, RefreshesAnEntryWhoseObjectWasReplaced) {
  const EntryPtr a = AnEntry("a");
  const EntryPtr b = AnEntry("b");
  const EntryPtr otherB = AnEntry("b");
  const EntryPtr c = AnEntry("c");

  const Changes changes = ChangesOf({a, b, c}, {a, otherB, c});

  EXPECT_THAT(changes.refreshedBefore, ElementsAre(b));
  EXPECT_THAT(changes.refreshedAfter, ElementsAre(otherB));
  EXPECT_EQ(changes.Count(), 2U);
}

TEST(Comparison, RefreshesAndDoesNotReorderAReplacedEntryThatMoved) {
  const EntryPtr a = AnEntry("a");
  const EntryPtr b = AnEntry("b");
  const EntryPtr otherA = AnEntry("a");

  const Changes changes = ChangesOf({a, b}, {b, otherA});

  EXPECT_THAT(changes.refreshedBefore, ElementsAre(a));
  EXPECT_THAT(changes.refreshedAfter, ElementsAre(otherA));
  EXPECT_EQ(changes.Count(), 2U);
}

TEST(Comparison, AlignsRefreshedEntriesInTheOrderOfFolders) {
  const EntryPtrs before = {AnEntry("b"), AnEntry("d"), AnEntry("a"), AnEntry("removed"), AnEntry("c")};
  const EntryPtrs after = {AnEntry("c"), AnEntry("a"), AnEntry("added"), AnEntry("d"), AnEntry("b")};

  const Changes changes = ChangesOf(before, after);

  EXPECT_THAT(changes.refreshedBefore, ElementsAre(before[2], before[0], before[4], before[1]));
  EXPECT_THAT(changes.refreshedAfter, ElementsAre(after[1], after[4], after[0], after[3]));
  EXPECT_THAT(changes.removed, ElementsAre(before[3]));
  EXPECT_THAT(changes.added, ElementsAre(after[2]));
}

TEST(Comparison, RemovesTheSurplusOfOldObjectsForAFolder) {
  const EntryPtrs before = {AnEntry("a"), AnEntry("a")};
  const EntryPtr after = AnEntry("a");

  const Changes changes = ChangesOf(before, {after});

  EXPECT_THAT(changes.refreshedAfter, ElementsAre(after));
  ASSERT_EQ(changes.Count(), 3U);
  EXPECT_THAT((EntryPtrs{changes.refreshedBefore.front(), changes.removed.front()}),
              UnorderedElementsAre(before[0], before[1]));
}

TEST(Comparison, AddsTheSurplusOfNewObjectsForAFolder) {
  const EntryPtr before = AnEntry("a");
  const EntryPtrs after = {AnEntry("a"), AnEntry("a")};

  const Changes changes = ChangesOf({before}, after);

  EXPECT_THAT(changes.refreshedBefore, ElementsAre(before));
  ASSERT_EQ(changes.Count(), 3U);
  EXPECT_THAT((EntryPtrs{changes.refreshedAfter.front(), changes.added.front()}),
              UnorderedElementsAre(after[0], after[1]));
}

TEST(Comparison, RemovesOneOccurrenceOfAnObjectThatTheOldVectorHoldsOnceMore) {
  const EntryPtr a = AnEntry("a");
  const EntryPtr b = AnEntry("b");

  const Changes changes = ChangesOf({a, b, a}, {a, b});

  EXPECT_THAT(changes.removed, ElementsAre(a));
  EXPECT_EQ(changes.Count(), 1U);
}

TEST(Comparison, AddsOneOccurrenceOfAnObjectThatTheNewVectorHoldsOnceMore) {
  const EntryPtr a = AnEntry("a");
  const EntryPtr b = AnEntry("b");

  const Changes changes = ChangesOf({a, b}, {a, b, a});

  EXPECT_THAT(changes.added, ElementsAre(a));
  EXPECT_EQ(changes.Count(), 1U);
}

TEST(Comparison, RemovesEachOccurrenceOfAnObjectThatIsGone) {
  const EntryPtr a = AnEntry("a");
  const EntryPtr b = AnEntry("b");

  const Changes changes = ChangesOf({a, b, a}, {b});

  EXPECT_THAT(changes.removed, ElementsAre(a, a));
  EXPECT_EQ(changes.Count(), 2U);
}

TEST(Comparison, ReordersEachCommonOccurrenceOffTheSubsequence) {
  const EntryPtr a = AnEntry("a");
  const EntryPtr b = AnEntry("b");

  const Changes changes = ChangesOf({a, a, b, b, b}, {b, b, b, a, a});

  EXPECT_THAT(changes.reordered, ElementsAre(a, a));
  EXPECT_EQ(changes.Count(), 2U);
}

TEST(Comparison, PairsAnObjectThatLostAnOccurrenceWithANewObjectForItsFolder) {
  const EntryPtr a = AnEntry("a");
  const EntryPtr otherA = AnEntry("a");

  const Changes changes = ChangesOf({a, a}, {a, otherA});

  EXPECT_THAT(changes.refreshedBefore, ElementsAre(a));
  EXPECT_THAT(changes.refreshedAfter, ElementsAre(otherA));
  EXPECT_EQ(changes.Count(), 2U);
}

TEST(Comparison, TellsPointersToOneObjectApartByNothing) {
  const EntryPtr a = AnEntry("a");
  const EntryPtr ownedOtherwise(std::make_shared<int>(), a.get());

  EXPECT_EQ(ChangesOf({a}, {ownedOtherwise}).Count(), 0U);
}

TEST(Comparison, LeavesTheCallersVectorsUntouched) {
  const EntryPtr a = AnEntry("a");
  const EntryPtr b = AnEntry("b");
  const EntryPtr c = AnEntry("c");
  const EntryPtrs oldEntries = {c, a, b};
  const EntryPtrs newEntries = {b, c, AnEntry("a")};
  const EntryPtrs newEntriesBefore = newEntries;

  EXPECT_EQ(ChangesOf(oldEntries, newEntries, ComparisonFilter::IncludeMethodEntries).Count(), 3U);

  EXPECT_THAT(oldEntries, ElementsAre(c, a, b));
  EXPECT_EQ(newEntries, newEntriesBefore);
}

TEST(Comparison, HoldsOnToNoEntryButThoseThatChanged) {
  EntryPtr kept = AnEntry("a");
  const std::weak_ptr<const IPathEntry> watched = kept;
  PathEntryVectorDifferentiator differentiator;

  differentiator.Compare({kept}, {kept, AnEntry("b")}, ComparisonFilter::IncludeMethodEntries);
  kept.reset();

  EXPECT_TRUE(watched.expired());
}

TEST(Comparison, AppendsItsResultAfterThatOfTheOneBefore) {
  const EntryPtr a = AnEntry("a");
  const EntryPtr b = AnEntry("b");
  const EntryPtr c = AnEntry("c");
  const EntryPtr otherC = AnEntry("c");
  PathEntryVectorDifferentiator differentiator;

  differentiator.Compare({a, b, c}, {b, a, otherC}, ComparisonFilter::MainEntriesOnly);
  differentiator.Compare({b, a, otherC}, {a, b, c}, ComparisonFilter::MainEntriesOnly);
  differentiator.Compare({b}, {a}, ComparisonFilter::MainEntriesOnly);
  differentiator.Compare({a}, {b}, ComparisonFilter::MainEntriesOnly);

  const Changes changes(differentiator);
  EXPECT_THAT(changes.reordered, ElementsAre(a, b));
  EXPECT_THAT(changes.refreshedBefore, ElementsAre(c, otherC));
  EXPECT_THAT(changes.refreshedAfter, ElementsAre(otherC, c));
  EXPECT_THAT(changes.removed, ElementsAre(b, a));
  EXPECT_THAT(changes.added, ElementsAre(a, b));
}

}  // namespace
}  // namespace Quorvex::PathManagement::diff_tests
