#include "health_score.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <unit/environment/memory_storage.hpp>

namespace vornixpath {
namespace {

TEST(HealthScore, IsAHundredWhereNothingIsFound) { EXPECT_EQ(ScoreOf({}), 100); }

TEST(HealthScore, LosesTenForAnErrorThreeForAWarningAndOneForANote) {
  EXPECT_EQ(ScoreOf({1, 0, 0}), 90);
  EXPECT_EQ(ScoreOf({0, 1, 0}), 97);
  EXPECT_EQ(ScoreOf({0, 0, 1}), 99);
  EXPECT_EQ(ScoreOf({1, 2, 3}), 81);
}

TEST(HealthScore, LosesOnlySoMuchForEachSeverity) {
  const std::size_t many = std::numeric_limits<std::size_t>::max();
  EXPECT_EQ(ScoreOf({0, 0, 10}), 90);
  EXPECT_EQ(ScoreOf({0, 0, many}), 90);
  EXPECT_EQ(ScoreOf({0, 10, 0}), 70);
  EXPECT_EQ(ScoreOf({0, many, 0}), 70);
  EXPECT_EQ(ScoreOf({6, 0, 0}), 40);
  EXPECT_EQ(ScoreOf({many, 0, 0}), 40);
  EXPECT_EQ(ScoreOf({many, many, many}), 0);
}

TEST(HealthScore, GoesByTheNumberOfFindingsOfEachSeverity) {
  const auto finding = [](Severity severity) {
    return Finding{FindingKind::EmptyFolder, severity, "", {{Quorvex::PathEnvironment::InMemory(u"/a"), 1}}, {""}};
  };

  EXPECT_EQ(CountsOf({finding(Severity::Note), finding(Severity::Error), finding(Severity::Note)}),
            (FindingCounts{1, 0, 2}));
}

}  // namespace
}  // namespace vornixpath
