// Where the elements of a sequence occur in it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

}  // namespace
}  // namespace Quorvex::PathManagement::diff_tests
