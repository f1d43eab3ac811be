// Which elements of two sequences of shared pointers stand in the same order in both.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <longest_common_subsequence.hpp>
#include <memory>
#include <numeric>
#include <oracle/longest_common_subsequence.hpp>
#include <string>
#include <support/allocations.hpp>
#include <support/random_source.hpp>
#include <vector>

namespace Quorvex::PathManagement::diff_tests {
namespace {

using support::Allocations;
using support::RandomSource;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Object = std::shared_ptr<const int>;
using Objects = std::vector<Object>;
using Subsequence = detail::LongestCommonSubsequence<Object>;

const Object x = std::make_shared<const int>(1);
const Object y = std::make_shared<const int>(2);
const Object z = std::make_shared<const int>(3);

Objects ManyObjects(std::size_t count) {
  Objects objects(count);
  for (auto& object : objects) object = std::make_shared<const int>();
  return objects;
}

TEST(LongestCommonSubsequence, IsEmptyWhenASequenceIs) {
  EXPECT_THAT(Subsequence::Find({}, {}), IsEmpty());
  EXPECT_THAT(Subsequence::Find({x, y}, {}), IsEmpty());
  EXPECT_THAT(Subsequence::Find({}, {x, y}), IsEmpty());
}

TEST(LongestCommonSubsequence, IsEmptyWhenNoElementIsCommon) {
  EXPECT_THAT(Subsequence::Find({x, x}, {y, z, z}), IsEmpty());
}

TEST(LongestCommonSubsequence, OfEqualSequencesIsTheSequence) {
  EXPECT_THAT(Subsequence::Find({x, y, z}, {x, y, z}), ElementsAre(x, y, z));
  EXPECT_THAT(Subsequence::Find({x, y, x}, {x, y, x}), ElementsAre(x, y, x));
}

TEST(LongestCommonSubsequence, MatchesByIdentityAndNotByValue) {
  EXPECT_THAT(Subsequence::Find({std::make_shared<const int>(1)}, {x}), IsEmpty());
}

TEST(LongestCommonSubsequence, MatchesAnElementOnceThatOccursTwiceInOneSequenceOnly) {
  EXPECT_THAT(Subsequence::Find({x}, {x, x}), ElementsAre(x));
  EXPECT_THAT(Subsequence::Find({x, x}, {x}), ElementsAre(x));
}

TEST(LongestCommonSubsequence, PrefersTheLaterElementOfTheFirstSequenceThatStandsFurtherAheadInTheSecond) {
  EXPECT_THAT(Subsequence::Find({x, y}, {y, x}), ElementsAre(y));
  EXPECT_THAT(Subsequence::Find({x, y, z}, {z, x, y}), ElementsAre(x, y));
}

TEST(LongestCommonSubsequence, KeepsBothSequencesAsTheyWere) {
  const Objects first = {x, y, x};
  const Objects second = {y, x};
  static_cast<void>(Subsequence::Find(first, second));

  EXPECT_THAT(first, ElementsAre(x, y, x));
  EXPECT_THAT(second, ElementsAre(y, x));
}

TEST(LongestCommonSubsequence, ConsistsOfCopiesOfTheFirstSequencesPointers) {
  const auto owner = std::make_shared<const std::string>();
  const Object ownedOtherwise(owner, x.get());

  const Objects found = Subsequence::Find({ownedOtherwise}, {x});

  ASSERT_THAT(found, ElementsAre(x));
  EXPECT_FALSE(found.front().owner_before(owner) || owner.owner_before(found.front()));
}

TEST(LongestCommonSubsequence, TakesNoMoreRoomThanItNeeds) {
  const Objects distinct = ManyObjects(5);
  const Objects repeated(5, x);

  EXPECT_EQ(Subsequence::Find(distinct, distinct).capacity(), 5U);
  EXPECT_EQ(Subsequence::Find(repeated, repeated).capacity(), 5U);
}

// Sequences as numbers in base `count`: each of the objects, up to that length.
std::vector<Objects> SequencesUpTo(std::size_t length, const Objects& objects) {
  std::vector<Objects> sequences = {{}};
  for (std::size_t begin = 0; length > 0; --length) {
    const std::size_t end = sequences.size();
    for (; begin < end; ++begin) {
      for (const Object& object : objects) {
        sequences.push_back(sequences[begin]);
        sequences.back().push_back(object);
      }
    }
  }
  return sequences;
}

// What the objects are called does not matter, so only those sequences are looked at where they appear in order.
bool AppearInOrder(const Objects& first, const Objects& second, const Objects& objects) {
  std::size_t seen = 0;
  for (const Objects* sequence : {&first, &second}) {
    for (const Object& object : *sequence) {
      if (seen < objects.size() && object == objects[seen]) ++seen;
      if (std::find(objects.begin() + static_cast<std::ptrdiff_t>(seen), objects.end(), object) != objects.end())
        return false;
    }
  }
  return true;
}

// In four parts of equal size, so that they can run side by side.
class AllShortSequences : public testing::TestWithParam<std::size_t> {};

TEST_P(AllShortSequences, HaveTheLongestCommonSubsequenceOfTheLiteralSteps) {
  const Objects objects = ManyObjects(4);
  const std::vector<Objects> sequences = SequencesUpTo(6, objects);
  ASSERT_THAT(sequences, SizeIs(5461));

  std::size_t pairs = 0;
  std::size_t differences = 0;
  for (const Objects& first : sequences) {
    if (!AppearInOrder(first, {}, objects)) continue;
    for (std::size_t number = GetParam(); number < sequences.size(); number += 4) {
      const Objects& second = sequences[number];
      if (!AppearInOrder(first, second, objects)) continue;
      ++pairs;
      if (Subsequence::Find(first, second) != oracle::LongestCommonSubsequence(first, second)) ++differences;
    }
  }
  EXPECT_EQ(differences, 0U) << "of " << pairs;
  EXPECT_GT(pairs, 250'000U);
}

INSTANTIATE_TEST_SUITE_P(UpToSixOfFourObjects, AllShortSequences, testing::Range<std::size_t>(0, 4));

TEST(LongestCommonSubsequence, IsTheOneOfTheLiteralStepsForLongSequencesThatRepeatObjects) {
  RandomSource random = RandomSource::OfThisRun(2201);
  SCOPED_TRACE(random.Describe());

  for (const std::size_t count : {2U, 20U, 300U, 5'000U}) {
    const Objects objects = ManyObjects(count);
    for (int round = 0; round < 5; ++round) {
      const Objects first = random.ListOf(1'000, [&] { return random.Pick(objects); });
      const Objects second = random.ListOf(1'000, [&] { return random.Pick(objects); });
      EXPECT_TRUE(Subsequence::Find(first, second) == oracle::LongestCommonSubsequence(first, second)) << count;
    }
  }
}

// Some elements are dropped, some new, and some stand elsewhere.
Objects Changed(Objects objects, RandomSource& random) {
  const std::size_t changes = random.Below(objects.size());
  for (std::size_t change = 0; change < changes; ++change) {
    std::swap(objects[random.Below(objects.size())], objects[random.Below(objects.size())]);
    if (random.OneIn(2)) objects.erase(objects.begin() + static_cast<std::ptrdiff_t>(random.Below(objects.size())));
    if (random.OneIn(2)) objects[random.Below(objects.size())] = std::make_shared<const int>();
  }
  return objects;
}

TEST(LongestCommonSubsequence, IsTheOneOfTheLiteralStepsForLongSequencesThatRepeatNothing) {
  RandomSource random = RandomSource::OfThisRun(2202);
  SCOPED_TRACE(random.Describe());

  for (int round = 0; round < 50; ++round) {
    const Objects first = ManyObjects(1 + random.Below(2'000));
    const Objects second = Changed(first, random);
    EXPECT_TRUE(Subsequence::Find(first, second) == oracle::LongestCommonSubsequence(first, second));
  }
}

TEST(LongestCommonSubsequence, OfAMillionElementsOverflowsNoStack) {
  Objects objects = ManyObjects(1'000'000);
  EXPECT_THAT(Subsequence::Find(objects, objects), SizeIs(1'000'000));

  objects.back() = objects.front();
  EXPECT_THAT(Subsequence::Find(objects, objects), SizeIs(1'000'000));
}

TEST(LongestCommonSubsequence, ForgetsLinksThatNoCandidateHoldsAnyMore) {
  constexpr std::size_t kLength = 1'000;
  const Objects objects(kLength, x);

  const Allocations allocations;
  EXPECT_THAT(Subsequence::Find(objects, objects), SizeIs(kLength));

  EXPECT_GT(allocations.GetCount(), kLength * kLength / 2);
  EXPECT_LT(allocations.GetMostAlive(), 20 * kLength);
}

TEST(LongestCommonSubsequence, AllocatesLittleMoreThanItsResultWhereNothingRepeats) {
  constexpr std::size_t kLength = 100'000;
  const Objects objects = ManyObjects(kLength);

  const Allocations allocations;
  EXPECT_THAT(Subsequence::Find(objects, objects), SizeIs(kLength));

  EXPECT_LT(allocations.GetCount(), 100U);
}

TEST(SequencePositions, EndWhereThirtyTwoBitsDo) {
  EXPECT_EQ(detail::LengthInPositions(0xFFFFFFFE), 0xFFFFFFFEU);
  EXPECT_THROW(detail::LengthInPositions(0xFFFFFFFF), std::length_error);
  EXPECT_THROW(detail::LengthInPositions(std::size_t{1} << 32U), std::length_error);
}

}  // namespace
}  // namespace Quorvex::PathManagement::diff_tests
