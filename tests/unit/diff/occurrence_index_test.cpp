// Where the elements of a sequence occur in it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <occurrence_index.hpp>
#include <vector>

namespace Quorvex::PathManagement::diff_tests {
namespace {

using detail::kNowhere;
using detail::SequencePosition;
using testing::ElementsAre;
using testing::IsEmpty;

using Object = std::shared_ptr<const int>;
using Objects = std::vector<Object>;
using Index = detail::OccurrenceIndex<Objects>;

const Object x = std::make_shared<const int>(1);
const Object y = std::make_shared<const int>(2);
const Object z = std::make_shared<const int>(3);

std::vector<SequencePosition> QueueOf(const Object& element, const Index& index) {
  std::vector<SequencePosition> queue;
  for (SequencePosition p = index.LastOf(element); p != kNowhere; p = index.PreviousOf(p)) queue.push_back(p);
  return queue;
}

TEST(OccurrenceIndex, ListsThePositionsOfAnElementInDescendingOrder) {
  const Objects sequence = {x, y, x, z, x, y};
  const Index index(sequence);

  EXPECT_THAT(QueueOf(x, index), ElementsAre(4, 2, 0));
  EXPECT_THAT(QueueOf(y, index), ElementsAre(5, 1));
  EXPECT_THAT(QueueOf(z, index), ElementsAre(3));
}

TEST(OccurrenceIndex, HasAnEmptyQueueForAnElementThatIsAbsent) {
  const Objects sequence = {x, x};
  EXPECT_THAT(QueueOf(y, Index(sequence)), IsEmpty());
  const Objects nothing;
  EXPECT_THAT(QueueOf(y, Index(nothing)), IsEmpty());
}

TEST(OccurrenceIndex, TellsWhetherAnElementRepeats) {
  const Objects distinct = {x, y, z};
  const Objects repeated = {x, y, z, y};

  EXPECT_FALSE(Index(distinct).HasRepeats());
  EXPECT_TRUE(Index(repeated).HasRepeats());
}

TEST(OccurrenceIndex, GivesTheHeadOfTheQueueForEachElementOfAnotherSequence) {
  const Objects distinct = {x, y};
  const Objects repeated = {x, x, y};

  EXPECT_THAT(Index(distinct).MatchListsOf({z, x, y, x, y, z}), ElementsAre(kNowhere, 0, 1, 0, 1, kNowhere));
  EXPECT_THAT(Index(repeated).MatchListsOf({z, x, y, x}), ElementsAre(kNowhere, 1, 2, 1));
}

// Around lengths where a position takes one bit more.
TEST(OccurrenceIndex, FindsEveryElementOfSequencesOfAllLengths) {
  Objects sequence;
  for (std::size_t length = 0; length < 300; ++length) {
    const Index index(sequence);
    std::size_t found = 0;
    for (SequencePosition position = 0; position < sequence.size(); ++position) {
      if (index.LastOf(sequence[position]) == position) ++found;
    }
    EXPECT_EQ(found, length);
    EXPECT_EQ(index.LastOf(x), kNowhere);
    sequence.push_back(std::make_shared<const int>());
  }
}

/// At the address whose product with the golden ratio, by which the index hashes, has all bits set. There is no object.
Object WithAllBitsOfItsHashSet() {
  constexpr std::uint64_t goldenRatio = 0x9E3779B97F4A7C15;
  std::uint64_t inverse = goldenRatio;  // of which each round makes twice as many bits right, from three on
  for (int round = 0; round < 5; ++round) inverse *= 2 - goldenRatio * inverse;
  const auto address = static_cast<std::uintptr_t>(~std::uint64_t{0} * inverse);
  // NOLINTNEXTLINE(performance-no-int-to-ptr): nobody looks at what is there
  return {std::shared_ptr<void>(), reinterpret_cast<const int*>(address)};
}

// What a slot holds must not look like an empty one, whose bits are all set.
TEST(OccurrenceIndex, FindsTheLastElementWhenAllBitsOfItsHashAreSet) {
  const Object wanted = WithAllBitsOfItsHashSet();
  for (SequencePosition last = 0; last < 9; ++last) {
    Objects sequence(last, x);
    sequence.push_back(wanted);
    EXPECT_EQ(Index(sequence).LastOf(wanted), last);
  }
}

}  // namespace
}  // namespace Quorvex::PathManagement::diff_tests
