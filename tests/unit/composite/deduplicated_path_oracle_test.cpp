// Deduplicated paths against lists that are copied and looked through: all small paths, then random larger ones.

#include <gtest/gtest.h>

#include <oracle/composite_paths.hpp>
#include <support/random_source.hpp>

#include "questions.hpp"
#include "random_components.hpp"
#include "small_paths.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using oracle::DeduplicatedPathModel;
using support::RandomSource;

void ExpectTheSameLists(const DeduplicatedPath& path, const DeduplicatedPathModel& model) {
  ASSERT_EQ(*path.GetMainEntries(), model.MainEntries());
  ASSERT_EQ(path.GetMethodEntries(), model.MethodEntries());
  for (const auto& [scope, policy] : Questions()) {
    ASSERT_EQ(path.GetMethodEntriesByName(scope, kClassName, policy),
              model.MethodEntriesByName(scope, kClassName, policy));
    ASSERT_EQ(path.GetPartiallyMatchingEntries(scope, kPartialPathname, policy),
              model.PartiallyMatchingEntries(scope, kPartialPathname, policy));
    const oracle::Items found = model.FindAll(scope, WantedTarget(), policy);
    ASSERT_TRUE(path.FindAllInScope(scope, WantedTarget(), policy) == found);
    const auto first = path.FindFirstInScope(scope, WantedTarget(), policy);
    ASSERT_EQ(first.has_value(), !found.empty());
    ASSERT_TRUE(found.empty() || *first == found.front());
  }
}

void ExpectAgreement(const PathPtrs& components) {
  PathPtrs taken = components;
  const DeduplicatedPath path(std::move(taken));
  const DeduplicatedPathModel model(components);
  for (const auto& question : Questions()) {
    ASSERT_EQ(Visited(path, question.scope), model.WalkAlongComponents(question.scope));
    ASSERT_EQ(VisitedConcurrently(path, question.scope), model.WalkAlongComponents(question.scope));
  }

  ASSERT_NO_FATAL_FAILURE(ExpectTheSameLists(path, model));

  for (const auto& question : Questions()) {
    ASSERT_EQ(Visited(path, question.scope), model.WalkAlongMainEntries(question.scope));
    ASSERT_EQ(VisitedConcurrently(path, question.scope), model.WalkAlongMainEntries(question.scope));
  }
}

TEST(DeduplicatedPathOracle, AgreesOnEverySmallPath) {
  std::size_t repeating = 0;
  for (const PathPtrs& components : SmallComponentLists()) {
    ASSERT_NO_FATAL_FAILURE(ExpectAgreement(components));
    if (DeduplicatedPathModel(components).MainEntries() != MainEntriesOf(components)) ++repeating;
  }
  EXPECT_GT(repeating, 1'000U);
}

TEST(DeduplicatedPathOracle, AgreesWhenComponentsAreOneObject) {
  for (const PathPtr& component : SmallComponents(2)) {
    ASSERT_NO_FATAL_FAILURE(ExpectAgreement({component, component, component}));
  }
}

TEST(DeduplicatedPathOracle, AgreesOnRandomPaths) {
  RandomSource random = RandomSource::OfThisRun(1301);
  SCOPED_TRACE(random.Describe());

  for (int round = 0; round < RandomSource::Rounds(100); ++round) {
    ASSERT_NO_FATAL_FAILURE(ExpectAgreement(RandomComponents(random, Contents::Changing)));
  }
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
