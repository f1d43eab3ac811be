#include <gtest/gtest.h>

#include <candidate_links.hpp>
#include <memory>
#include <vector>

namespace Quorvex::PathManagement::diff_tests {
namespace {

using detail::IndexNode;
using detail::SequencePosition;

std::shared_ptr<IndexNode> ChainOf(SequencePosition length, std::shared_ptr<IndexNode> before = nullptr) {
  for (SequencePosition index = 0; index < length; ++index) {
    before = std::make_shared<IndexNode>(index, std::move(before));
  }
  return before;
}

TEST(IndexNode, ReleasesAChainOfAMillionWithoutRecursion) {
  auto last = ChainOf(1'000'000);
  const std::weak_ptr<IndexNode> beforeLast = last->previous;

  last.reset();

  EXPECT_TRUE(beforeLast.expired());
}

TEST(IndexNode, LeavesTheLinksThatAnotherChainShares) {
  const auto shared = ChainOf(3);
  auto longer = ChainOf(100, shared);
  const std::weak_ptr<IndexNode> own = longer->previous;

  longer.reset();

  EXPECT_TRUE(own.expired());
  ASSERT_NE(shared->previous, nullptr);
  EXPECT_EQ(shared->previous->previous->index, 0U);
}

TEST(SharedLinks, ReplaceACandidateOfTheSameLengthOnly) {
  detail::SharedLinks links;
  links.Put(0, 0);
  links.Put(1, 1);
  links.Put(0, 2);  // what is at 1 still follows 0

  std::vector<SequencePosition> positions;
  links.ForEachBackwards([&](SequencePosition position) { positions.push_back(position); });

  EXPECT_EQ(positions, (std::vector<SequencePosition>{1, 0}));
}

}  // namespace
}  // namespace Quorvex::PathManagement::diff_tests
