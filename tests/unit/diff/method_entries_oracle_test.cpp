// Comparisons of random trees of method entries against a model that goes down level by level.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <oracle/method_entry_changes.hpp>
#include <support/random_source.hpp>

#include "agreement.hpp"
#include "made_entry.hpp"

namespace Quorvex::PathManagement::diff_tests {
namespace {

using oracle::EntryVectorChanges;
using support::RandomSource;

// The same folders twice: each has one object on either side, which may be the same.
struct TwoVersions {
  EntryPtrs oldObjects;
  EntryPtrs newObjects;
  EntryPtrs kept;
};

// With any of `below` at any of the five places, in any order. Those of the first group are on both sides, so that they
// can be reordered.
EntryPtr AnEntryAbove(const EntryPtrs& below, const EntryPtrs& kept, const std::string& name, RandomSource& random) {
  const auto entry = AnEntry(name);
  if (below.empty() || kept.empty()) return entry;
  const auto pick = [&] { return random.Pick(below); };
  if (random.OneIn(3)) entry->privateEntry = pick();
  if (random.OneIn(3)) entry->secondSingle = pick();
  entry->first = random.ListOf(4, [&] { return random.Pick(kept); });
  if (random.OneIn(2)) entry->second = random.ListOf(2, pick);
  if (random.OneIn(2)) entry->third = random.ListOf(2, pick);
  return entry;
}

// From the innermost on; each entry may be a method entry of any later one. An object of both sides has method entries
// that are on both sides too, so that no side meets two objects for one folder.
TwoVersions SomeTrees(std::size_t folders, RandomSource& random) {
  TwoVersions trees;
  for (std::size_t folder = 0; folder < folders; ++folder) {
    const std::string name = std::to_string(folder * 7 % folders);
    if (random.OneIn(3)) {
      trees.kept.push_back(AnEntryAbove(trees.kept, trees.kept, name, random));
      trees.oldObjects.push_back(trees.kept.back());
      trees.newObjects.push_back(trees.kept.back());
    } else {
      trees.oldObjects.push_back(AnEntryAbove(trees.oldObjects, trees.kept, name, random));
      trees.newObjects.push_back(AnEntryAbove(trees.newObjects, trees.kept, name, random));
    }
  }
  return trees;
}

// How often the random trees showed what they are there for.
struct Coverage {
  std::size_t deepRounds = 0;
  std::size_t reorderedBelow = 0;
  std::size_t refreshedBelow = 0;
  std::size_t addedBelow = 0;
  std::size_t removedBelow = 0;

  void Count(const std::vector<EntryVectorChanges>& levels) {
    if (levels.size() > 3) ++deepRounds;
    for (std::size_t level = 1; level < levels.size(); ++level) {
      reorderedBelow += levels[level].reordered.size();
      refreshedBelow += levels[level].refreshed.size();
      addedBelow += levels[level].added.size();
      removedBelow += levels[level].removed.size();
    }
  }
};

TEST(ComparisonWithMethodEntries, TellsOfRandomTreesWhatCountingLevelByLevelTells) {
  RandomSource random = RandomSource::OfThisRun(2103);
  SCOPED_TRACE(random.Describe());
  std::size_t differences = 0;
  Coverage coverage;

  for (int round = 0; round < RandomSource::Rounds(4'000); ++round) {
    const TwoVersions trees = SomeTrees(8, random);
    const EntryPtrs oldEntries = random.ListOf(6, [&] { return random.Pick(trees.oldObjects); });
    const EntryPtrs newEntries = random.ListOf(6, [&] { return random.Pick(trees.newObjects); });
    const auto levels = oracle::ChangesLevelByLevel(oldEntries, newEntries);
    coverage.Count(levels);
    const Changes changes = ChangesOf(oldEntries, newEntries, ComparisonFilter::IncludeMethodEntries);
    if (!Agree(changes, oracle::Joined(levels))) ++differences;
  }
  EXPECT_EQ(differences, 0U);
  EXPECT_GT(coverage.deepRounds, static_cast<std::size_t>(RandomSource::Rounds(1'000)));
  EXPECT_GT(coverage.reorderedBelow, static_cast<std::size_t>(RandomSource::Rounds(200)));
  EXPECT_GT(coverage.refreshedBelow, static_cast<std::size_t>(RandomSource::Rounds(200)));
  EXPECT_GT(coverage.addedBelow, static_cast<std::size_t>(RandomSource::Rounds(200)));
  EXPECT_GT(coverage.removedBelow, static_cast<std::size_t>(RandomSource::Rounds(200)));
}

}  // namespace
}  // namespace Quorvex::PathManagement::diff_tests
