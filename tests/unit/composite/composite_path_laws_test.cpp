// How the ways to make paths from paths fit together.

#include <gtest/gtest.h>

#include <support/random_source.hpp>

#include "questions.hpp"
#include "random_components.hpp"
#include "small_paths.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using foundation::storage::vfs::CanonicalAbsoluteIRI;
using support::RandomSource;

template <class Path>
PathPtr Over(PathPtrs components) {
  return std::make_shared<const Path>(std::move(components));
}

/// The answers of the operations that give lists.
struct Lists {
  std::vector<EntryPtr> mainEntries;
  std::vector<EntryPtr> methodEntries;
  std::vector<std::vector<EntryPtr>> selected;
  std::vector<std::vector<FoundItem>> found;

  friend bool operator==(const Lists&, const Lists&) = default;
};

Lists ListsOf(const IPath& path) {
  Lists lists;
  lists.mainEntries = *path.GetMainEntries();
  lists.methodEntries = path.GetMethodEntries();
  for (const auto& [scope, policy] : Questions()) {
    lists.selected.push_back(path.GetMethodEntriesByName(scope, kClassName, policy));
    lists.selected.push_back(path.GetPartiallyMatchingEntries(scope, kPartialPathname, policy));
    lists.found.push_back(path.FindAllInScope(scope, WantedTarget(), policy));
  }
  return lists;
}

/// What both kinds of walk visit.
std::vector<std::vector<EntryPtr>> WalksOf(const IPath& path) {
  std::vector<std::vector<EntryPtr>> walks;
  for (const auto& question : Questions()) {
    walks.push_back(Visited(path, question.scope));
    walks.push_back(VisitedConcurrently(path, question.scope));
  }
  return walks;
}

std::vector<boost::optional<FoundItem>> WinnersOn(const IPath& path) {
  std::vector<boost::optional<FoundItem>> winners;
  for (const auto& [scope, policy] : Questions()) {
    winners.push_back(path.FindFirstInScope(scope, WantedTarget(), policy));
  }
  return winners;
}

std::vector<boost::optional<FoundItem>> VisibleOn(const IPath& path) {
  std::vector<boost::optional<FoundItem>> visible;
  for (const auto& question : Questions()) {
    visible.push_back(FindFirstFileVisibleOnPath(path, WantedTarget(), question.policy));
  }
  return visible;
}

/// What is known of each of `entries`, all of which are on the path.
std::vector<EntryPtr> KnownOf(const std::vector<EntryPtr>& entries, const IPath& path) {
  std::vector<EntryPtr> known;
  for (const EntryPtr& entry : entries) {
    const auto location = entry->GetAbsoluteIRI();
    known.push_back(path.GetMainEntryForEntry(*entry));
    known.push_back(path.GetParentEntryForEntry(*entry));
    known.push_back(path.GetPathEntryFromAbsoluteIRI(location, kPolicy));
    known.push_back(path.GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(location, u"")));
  }
  return known;
}

/// For each pair of `entries`, whether the first is before the second; for each one, whether it is on the path.
std::vector<bool> OrderOf(const std::vector<EntryPtr>& entries, const IPath& path) {
  std::vector<bool> order;
  for (const EntryPtr& first : entries) {
    order.push_back(path.IsEntryOnPath(*first));
    for (const EntryPtr& second : entries) order.push_back(path.FirstEntryIsBeforeSecondOnPath(*first, *second));
  }
  return order;
}

/// In all operations, about `entries` where they take one.
void ExpectTheSamePath(const IPath& left, const IPath& right, const std::vector<EntryPtr>& entries) {
  ASSERT_EQ(WalksOf(left), WalksOf(right));
  ASSERT_TRUE(ListsOf(left) == ListsOf(right));
  ASSERT_EQ(WalksOf(left), WalksOf(right)) << "with main entries listed";
  ASSERT_TRUE(WinnersOn(left) == WinnersOn(right));
  ASSERT_EQ(KnownOf(entries, left), KnownOf(entries, right));
  ASSERT_EQ(OrderOf(entries, left), OrderOf(entries, right));
}

void ExpectJoiningIsAssociative(const PathPtr& a, const PathPtr& b, const PathPtr& c) {
  const PathPtr flat = Over<ConcatenatedPath>({a, b, c});
  const PathPtr leftFirst = Over<ConcatenatedPath>({Over<ConcatenatedPath>({a, b}), c});
  const PathPtr rightFirst = Over<ConcatenatedPath>({a, Over<ConcatenatedPath>({b, c})});
  const std::vector<EntryPtr> entries = Visited(*flat, kEverything);

  ASSERT_NO_FATAL_FAILURE(ExpectTheSamePath(*leftFirst, *flat, entries));
  ASSERT_NO_FATAL_FAILURE(ExpectTheSamePath(*rightFirst, *flat, entries));
}

TEST(CompositePathLaws, JoiningIsAssociative) {
  for (const PathPtrs& components : SmallComponentLists()) {
    if (components.size() != 3 || MainEntriesOf(components).size() > 4) continue;
    ASSERT_NO_FATAL_FAILURE(ExpectJoiningIsAssociative(components[0], components[1], components[2]));
  }
}

TEST(CompositePathLaws, JoiningIsAssociativeWhenOnePathIsJoinedTwice) {
  const PathPtrs paths = SmallComponents(0);
  for (const PathPtr& one : paths) {
    for (const PathPtr& other : paths) {
      ASSERT_NO_FATAL_FAILURE(ExpectJoiningIsAssociative(one, other, one));
      ASSERT_NO_FATAL_FAILURE(ExpectJoiningIsAssociative(one, one, other));
    }
  }
}

void ExpectDeduplicatingTwiceEqualsOnce(const PathPtrs& components) {
  const PathPtr once = Over<DeduplicatedPath>(components);
  const PathPtr twice = Over<DeduplicatedPath>({Over<DeduplicatedPath>(components)});

  ASSERT_EQ(WalksOf(*twice), WalksOf(*once)) << "as long as no main entries are listed";
  ASSERT_TRUE(ListsOf(*twice) == ListsOf(*once));
}

TEST(CompositePathLaws, DeduplicatingTwiceEqualsOnce) {
  for (const PathPtrs& components : SmallComponentLists()) {
    ASSERT_NO_FATAL_FAILURE(ExpectDeduplicatingTwiceEqualsOnce(components));
  }

  RandomSource random = RandomSource::OfThisRun(1302);
  SCOPED_TRACE(random.Describe());
  for (int round = 0; round < RandomSource::Rounds(50); ++round) {
    ASSERT_NO_FATAL_FAILURE(ExpectDeduplicatingTwiceEqualsOnce(RandomComponents(random, Contents::Changing)));
  }
}

TEST(CompositePathLaws, DeduplicatingNeverChangesAWinner) {
  for (const PathPtrs& components : SmallComponentLists()) {
    ASSERT_TRUE(WinnersOn(*Over<DeduplicatedPath>(components)) == WinnersOn(*Over<ConcatenatedPath>(components)));
  }
}

// Where a folder holds the same wherever it appears, whichever entry stands for it.
TEST(CompositePathLaws, DeduplicatingNeverChangesWhichFileIsVisible) {
  RandomSource random = RandomSource::OfThisRun(1303);
  SCOPED_TRACE(random.Describe());
  for (int round = 0; round < RandomSource::Rounds(100); ++round) {
    const PathPtrs components = RandomComponents(random, Contents::Settled);
    const PathPtr joined = Over<ConcatenatedPath>(components);
    const PathPtr distinct = Over<DeduplicatedPath>(components);

    ASSERT_TRUE(VisibleOn(*distinct) == VisibleOn(*joined));
    ASSERT_TRUE(WinnersOn(*distinct) == WinnersOn(*joined));
  }
}

void ExpectMaskingNothingChangesNothing(const PathPtrs& components) {
  for (const PathPtr& path : {Over<ConcatenatedPath>(components), Over<DeduplicatedPath>(components)}) {
    const std::vector<EntryPtr> entries = Visited(*Over<ConcatenatedPath>(components), kEverything);

    ASSERT_NO_FATAL_FAILURE(ExpectTheSamePath(MultiMaskedPath(path, {}), *path, entries));
  }
}

TEST(CompositePathLaws, MaskingNothingChangesNothing) {
  for (const PathPtrs& components : SmallComponentLists()) {
    if (MainEntriesOf(components).size() > 4) continue;
    ASSERT_NO_FATAL_FAILURE(ExpectMaskingNothingChangesNothing(components));
  }
}

// The masks of the inner path first, then those of the outer one; all are main entries.
TEST(CompositePathLaws, MaskingInTwoStepsEqualsMaskingAtOnceButForTheFirstMatch) {
  RandomSource random = RandomSource::OfThisRun(1402);
  SCOPED_TRACE(random.Describe());
  for (int round = 0; round < RandomSource::Rounds(50); ++round) {
    const PathPtrs components = RandomComponents(random, Contents::Changing);
    const PathPtr path = Over<ConcatenatedPath>(components);
    std::vector<EntryPtr> inner;
    std::vector<EntryPtr> outer;
    for (const EntryPtr& entry : MainEntriesOf(components)) {
      if (random.OneIn(3)) (random.OneIn(2) ? inner : outer).push_back(entry);
    }
    std::vector<EntryPtr> all = inner;
    all.insert(all.end(), outer.begin(), outer.end());

    const MultiMaskedPath inSteps(std::make_shared<const MultiMaskedPath>(path, inner), outer);
    const MultiMaskedPath atOnce(path, all);

    ASSERT_TRUE(ListsOf(inSteps) == ListsOf(atOnce));
    ASSERT_EQ(WalksOf(inSteps), WalksOf(atOnce));
  }
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
