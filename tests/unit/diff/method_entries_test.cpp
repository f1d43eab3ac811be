// Comparisons that go on with the method entries of what changed.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <stdexcept>

#include "made_entry.hpp"

namespace Quorvex::PathManagement::diff_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Changes ChangesWithMethodEntries(const EntryPtrs& oldEntries, const EntryPtrs& newEntries) {
  return ChangesOf(oldEntries, newEntries, ComparisonFilter::IncludeMethodEntries);
}

/// An entry with one method entry of each kind, in the order in which they are taken.
std::shared_ptr<MadeEntry> AFullEntry(const std::string& name) {
  const auto entry = AnEntry(name);
  entry->privateEntry = AnEntry(name + "/private");
  entry->secondSingle = AnEntry(name + "/resources");
  entry->first = {AnEntry(name + "/@Cls")};
  entry->second = {AnEntry(name + "/+pkg")};
  entry->third = {AnEntry(name + "/auxiliary")};
  return entry;
}

TEST(ComparisonWithMethodEntries, AddsTheMethodEntriesOfAnAddedEntry) {
  const Changes changes = ChangesWithMethodEntries({}, {AFullEntry("a")});

  EXPECT_EQ(NamesOf(changes.added), "a a/+pkg a/@Cls a/auxiliary a/private a/resources");
  EXPECT_EQ(changes.Count(), 6U);
}

TEST(ComparisonWithMethodEntries, RemovesTheMethodEntriesOfARemovedEntry) {
  const Changes changes = ChangesWithMethodEntries({AFullEntry("a")}, {});

  EXPECT_EQ(NamesOf(changes.removed), "a a/+pkg a/@Cls a/auxiliary a/private a/resources");
  EXPECT_EQ(changes.Count(), 6U);
}

TEST(ComparisonWithMethodEntries, RefreshesThePrivateEntryOfARefreshedEntryAfterIt) {
  const auto before = AnEntry("b");
  before->privateEntry = AnEntry("b/private");
  const auto after = AnEntry("b");
  after->privateEntry = AnEntry("b/private");

  const Changes changes = ChangesWithMethodEntries({before}, {after});

  EXPECT_THAT(changes.refreshedBefore, ElementsAre(before, before->privateEntry));
  EXPECT_THAT(changes.refreshedAfter, ElementsAre(after, after->privateEntry));
  EXPECT_EQ(changes.Count(), 4U);
}

TEST(ComparisonWithMethodEntries, TellsWhichMethodEntriesARefreshedEntryGainedAndLost) {
  const auto before = AnEntry("a");
  before->first = {AnEntry("a/@Kept"), AnEntry("a/@Lost")};
  const auto after = AnEntry("a");
  after->first = {before->first[0], AnEntry("a/@Gained")};

  const Changes changes = ChangesWithMethodEntries({before}, {after});

  EXPECT_THAT(changes.removed, ElementsAre(before->first[1]));
  EXPECT_THAT(changes.added, ElementsAre(after->first[1]));
  EXPECT_THAT(changes.reordered, IsEmpty());
}

TEST(ComparisonWithMethodEntries, GoesDownToTheLastOfThem) {
  const auto entry = AnEntry("a");
  const auto package = AnEntry("a/+p");
  const auto inner = AnEntry("a/+p/+q");
  inner->first = {AnEntry("a/+p/+q/@Cls")};
  package->second = {inner};
  entry->second = {package};

  EXPECT_EQ(NamesOf(ChangesWithMethodEntries({}, {entry}).added), "a a/+p a/+p/+q a/+p/+q/@Cls");
}

// Each call tells how far down the stack it came: all of them within less than a byte for each level.
TEST(ComparisonWithMethodEntries, NeedsNoStackForEachLevel) {
  constexpr std::size_t kLevels = 3'000;
  std::set<std::uintptr_t> places;
  EntryPtr entry = AnEntry("innermost");
  for (std::size_t level = 1; level < kLevels; ++level) {
    const auto outer = AnEntry("outer");
    outer->whenAskedForMethodEntries = [&places](std::string_view) {
      places.insert(reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)));
    };
    outer->second = {entry};
    entry = outer;
  }
  EXPECT_EQ(ChangesWithMethodEntries({}, {entry}).added.size(), kLevels);
  EXPECT_LT(*places.rbegin() - *places.begin(), kLevels);
}

TEST(ComparisonWithMethodEntries, AppendsLevelByLevel) {
  const auto a = AnEntry("a");
  a->privateEntry = AnEntry("a/private");
  const auto b = AnEntry("b");
  b->privateEntry = AnEntry("b/private");

  EXPECT_EQ(NamesOf(ChangesWithMethodEntries({}, {b, a}).added), "a b a/private b/private");
}

// The five kinds of `all` on one side meet the same objects as a plain list on the other. They are in the same order
// when none is reordered.
TEST(ComparisonWithMethodEntries, TakesPrivateThenSecondSingleThenTheThreeGroupsInTheirOrder) {
  const auto all = AnEntry("a");
  const EntryPtrs expected = {AnEntry("1"), AnEntry("2"), AnEntry("3"), AnEntry("4"), AnEntry("5"), AnEntry("6")};
  all->privateEntry = expected[0];
  all->secondSingle = expected[1];
  all->first = {expected[2], expected[3]};
  all->second = {expected[4]};
  all->third = {expected[5]};
  const auto listed = AnEntry("a");
  listed->first = expected;

  EXPECT_THAT(ChangesWithMethodEntries({all}, {listed}).reordered, IsEmpty());
  EXPECT_THAT(ChangesWithMethodEntries({listed}, {all}).reordered, IsEmpty());
}

TEST(ComparisonWithMethodEntries, TakesThemEntryByEntryInTheOrderOfFolders) {
  const EntryPtr x = AnEntry("x");
  const EntryPtr y = AnEntry("y");
  const auto a = AnEntry("a");
  const auto b = AnEntry("b");
  a->privateEntry = x;
  b->privateEntry = y;
  const auto otherA = AnEntry("a");
  otherA->first = {x, y};

  EXPECT_THAT(ChangesWithMethodEntries({b, a}, {otherA}).reordered, IsEmpty());
  EXPECT_THAT(ChangesWithMethodEntries({otherA}, {b, a}).reordered, IsEmpty());
}

// The main entry has the higher address, so that sorting all that was appended would show.
TEST(ComparisonWithMethodEntries, ReordersMethodEntriesAfterMainEntries) {
  const EntryPtrs moved = ByAddress({AnEntry("x"), AnEntry("y")});
  const EntryPtr other = AnEntry("other");
  const EntryPtr method = AnEntry("method");
  const auto before = AnEntry("a");
  before->first = {moved[0], method};
  const auto after = AnEntry("a");
  after->first = {method, moved[0]};

  const Changes changes = ChangesWithMethodEntries({moved[1], other, before}, {other, moved[1], after});

  EXPECT_THAT(changes.reordered, ElementsAre(moved[1], moved[0]));
  EXPECT_EQ(changes.Count(), 4U);
}

TEST(ComparisonWithMethodEntries, RemovesThoseOfAnEntryThatLostAnOccurrence) {
  const EntryPtr a = AFullEntry("a");

  const Changes changes = ChangesWithMethodEntries({a, a}, {a});

  EXPECT_EQ(NamesOf(changes.removed), "a a/+pkg a/@Cls a/auxiliary a/private a/resources");
  EXPECT_EQ(changes.Count(), 6U);
}

TEST(ComparisonWithMethodEntries, AddsThoseOfAnEntryThatGainedAnOccurrence) {
  const EntryPtr a = AFullEntry("a");

  const Changes changes = ChangesWithMethodEntries({a}, {a, a});

  EXPECT_EQ(NamesOf(changes.added), "a a/+pkg a/@Cls a/auxiliary a/private a/resources");
  EXPECT_EQ(changes.Count(), 6U);
}

TEST(ComparisonWithMethodEntries, AddsACommonMainEntryThatIsAMethodEntryOfAnAddedOne) {
  const EntryPtr common = AFullEntry("b");
  const auto added = AnEntry("a");
  added->privateEntry = common;

  const Changes changes = ChangesWithMethodEntries({common}, {common, added});

  EXPECT_EQ(NamesOf(changes.added), "a b b/+pkg b/@Cls b/auxiliary b/private b/resources");
  EXPECT_EQ(changes.Count(), 7U);
}

TEST(ComparisonWithMethodEntries, RemovesACommonMainEntryThatIsAMethodEntryOfARemovedOne) {
  const EntryPtr common = AFullEntry("b");
  const auto removed = AnEntry("a");
  removed->privateEntry = common;

  const Changes changes = ChangesWithMethodEntries({removed, common}, {common});

  EXPECT_EQ(NamesOf(changes.removed), "a b b/+pkg b/@Cls b/auxiliary b/private b/resources");
  EXPECT_EQ(changes.Count(), 7U);
}

TEST(ComparisonWithMethodEntries, MeetsAMethodEntryThatChangedItsMainEntry) {
  const EntryPtr shared = AnEntry("shared");
  const auto removed = AnEntry("a");
  removed->privateEntry = shared;
  const auto added = AnEntry("b");
  added->third = {shared};

  const Changes changes = ChangesWithMethodEntries({removed}, {added});

  EXPECT_THAT(changes.removed, ElementsAre(removed));
  EXPECT_THAT(changes.added, ElementsAre(added));
  EXPECT_EQ(changes.Count(), 2U);
}

void Refuse(std::string_view operation) { throw std::logic_error(std::string(operation)); }

TEST(ComparisonWithMethodEntries, NeverAsksCommonEntriesForTheirs) {
  const auto kept = AnEntry("a");
  const auto moved = AnEntry("b");
  kept->whenAskedForMethodEntries = moved->whenAskedForMethodEntries = Refuse;

  const Changes changes = ChangesWithMethodEntries({moved, kept, AnEntry("c")}, {kept, moved, AnEntry("d")});

  EXPECT_THAT(changes.reordered, ElementsAre(moved));
  EXPECT_EQ(changes.Count(), 3U);
}

class ComparisonWithAnotherFilter : public testing::TestWithParam<std::uint32_t> {};

TEST_P(ComparisonWithAnotherFilter, LeavesMethodEntriesAlone) {
  const auto before = AFullEntry("a");
  const auto after = AFullEntry("a");
  before->whenAskedForMethodEntries = after->whenAskedForMethodEntries = Refuse;

  const Changes changes = ChangesOf({before}, {after}, static_cast<ComparisonFilter>(GetParam()));

  EXPECT_THAT(changes.refreshedAfter, ElementsAre(after));
  EXPECT_EQ(changes.Count(), 2U);
}

INSTANTIATE_TEST_SUITE_P(EveryValueButOne, ComparisonWithAnotherFilter, testing::Values(0U, 2U, 3U, 0xFFFFFFFFU));

}  // namespace
}  // namespace Quorvex::PathManagement::diff_tests
