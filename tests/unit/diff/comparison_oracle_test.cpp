// Comparisons of random vectors against a model that counts.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <oracle/entry_vector_changes.hpp>
#include <support/random_source.hpp>

#include "agreement.hpp"
#include "made_entry.hpp"

namespace Quorvex::PathManagement::diff_tests {
namespace {

using support::RandomSource;

// So many objects; each folder has about `objectsAFolder` of them.
EntryPtrs SomeObjects(std::size_t count, std::size_t objectsAFolder, RandomSource& random) {
  EntryPtrs objects(count);
  for (auto& object : objects) object = AnEntry(std::to_string(random.Below(count / objectsAFolder + 1)));
  return objects;
}

TEST(Comparison, TellsOfRandomVectorsWhatCountingTells) {
  RandomSource random = RandomSource::OfThisRun(2101);
  SCOPED_TRACE(random.Describe());
  std::size_t differences = 0;
  std::size_t changesSeen = 0;

  for (int round = 0; round < RandomSource::Rounds(10'000); ++round) {
    const EntryPtrs objects = SomeObjects(1 + random.Below(12), 1 + random.Below(3), random);
    const EntryPtrs oldEntries = random.ListOf(10, [&] { return random.Pick(objects); });
    const EntryPtrs newEntries = random.ListOf(10, [&] { return random.Pick(objects); });
    const Changes changes = ChangesOf(oldEntries, newEntries);
    changesSeen += changes.Count();
    if (!Agree(changes, oracle::ChangesBetween(oldEntries, newEntries))) ++differences;
  }
  EXPECT_EQ(differences, 0U);
  EXPECT_GT(changesSeen, static_cast<std::size_t>(RandomSource::Rounds(10'000)));
}

// A share of the entries is gone, new, replaced, or stands elsewhere; none repeats.
EntryPtrs Changed(EntryPtrs entries, RandomSource& random) {
  const std::size_t changes = random.Below(entries.size());
  for (std::size_t change = 0; change < changes; ++change) {
    const std::size_t place = random.Below(entries.size());
    std::swap(entries[random.Below(entries.size())], entries[place]);
    if (random.OneIn(3))
      entries[place] = std::make_shared<MadeEntry>(*std::static_pointer_cast<const MadeEntry>(entries[place]));
    if (random.OneIn(3)) entries[place] = AnEntry("new" + std::to_string(change));
    if (random.OneIn(3)) entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(place));
  }
  return entries;
}

TEST(Comparison, TellsOfLongVectorsWhatCountingTells) {
  RandomSource random = RandomSource::OfThisRun(2102);
  SCOPED_TRACE(random.Describe());

  for (int round = 0; round < RandomSource::Rounds(8); ++round) {
    const EntryPtrs oldEntries = SomeObjects(1'500, 1, random);
    EntryPtrs newEntries = Changed(oldEntries, random);
    EXPECT_TRUE(Agree(ChangesOf(oldEntries, newEntries), oracle::ChangesBetween(oldEntries, newEntries)));

    newEntries.push_back(random.Pick(oldEntries));
    newEntries.push_back(newEntries.back());
    EXPECT_TRUE(Agree(ChangesOf(oldEntries, newEntries), oracle::ChangesBetween(oldEntries, newEntries)));
    EXPECT_TRUE(Agree(ChangesOf(newEntries, oldEntries), oracle::ChangesBetween(newEntries, oldEntries)));
  }
}

}  // namespace
}  // namespace Quorvex::PathManagement::diff_tests
