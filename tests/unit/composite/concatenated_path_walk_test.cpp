// The first match and the walks: component after component, until one has enough.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "recorded_components.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using support::APath;
using support::FileOf;
using support::Folder;
using support::InjectedFailure;
using support::LocationOf;
using testing::Each;
using testing::ElementsAre;
using testing::Field;

TEST(ConcatenatedPath, FindsTheFirstMatchWithoutAskingLaterComponents) {
  const RecordedComponents components;
  const ConcatenatedPath path(components.first, components.second);
  const auto target = detail::SearchTarget::Owning(u"foo", u".vnx");

  EXPECT_EQ(FileOf(path.FindFirstInScope(kEverything, target, kPolicy)), "/a/foo.vnx");
  EXPECT_THAT(components.log->GetOperations(), ElementsAre("first.FindFirstInScope"));
}

TEST(ConcatenatedPath, FindsTheMatchOfALaterComponentWhenEarlierOnesHaveNone) {
  const RecordedComponents components;
  const auto third = APath().With(Folder("/d").WithFile("late.vnx")).Build();
  const ConcatenatedPath path(PathPtrs{components.first, components.second, third});

  EXPECT_EQ(FileOf(path.FindFirstInScope(kEverything, detail::SearchTarget::Owning(u"late", u".vnx"), kPolicy)),
            "/d/late.vnx");
  EXPECT_EQ(FileOf(path.FindFirstInScope(kEverything, detail::SearchTarget::Owning(u"never", u".vnx"), kPolicy)),
            "none");
}

TEST(ConcatenatedPath, PassesTheVeryScopeTargetAndPolicyOn) {
  const RecordedComponents components;
  const ConcatenatedPath path(components.first, components.second);
  const auto target = detail::SearchTarget::Owning(u"never", u".vnx");

  static_cast<void>(path.FindFirstInScope(kEverything, target, kPolicy));

  EXPECT_THAT(components.log->GetOperations(), ElementsAre("first.FindFirstInScope", "second.FindFirstInScope"));
  EXPECT_THAT(components.log->GetCalls(), Each(GotTheSameScopeAndPolicy()));
  EXPECT_THAT(components.log->GetCalls(), Each(Field(&Call::target, &target)));
}

TEST(ConcatenatedPath, LetsTheFailureOfASearchPass) {
  const RecordedComponents components;
  const ConcatenatedPath path(components.first, components.second);
  components.log->FailNext("first.FindFirstInScope");

  EXPECT_THROW(
      static_cast<void>(path.FindFirstInScope(kEverything, detail::SearchTarget::Owning(u"foo", u".vnx"), kPolicy)),
      InjectedFailure);
}

class ConcatenatedPathWalk : public testing::TestWithParam<Walk> {
 protected:
  // The locations visited, until `last` has been; the result of the walk goes to `stopped_`.
  std::vector<std::string> VisitUntil(const std::string& last) {
    std::vector<std::string> visited;
    callback_ = [&](const EntryPtr& entry) {
      visited.push_back(LocationOf(entry));
      return visited.back() == last;
    };
    stopped_ = (path_.*GetParam().walk)(kEverything, callback_);
    return visited;
  }
  std::string Named(const std::string& component) const { return component + '.' + GetParam().operation; }

  RecordedComponents components_;
  ConcatenatedPath path_{components_.first, components_.second};
  PathEntryCallback callback_;
  bool stopped_ = false;
};

TEST_P(ConcatenatedPathWalk, VisitsTheEntriesOfEachComponentInTurn) {
  EXPECT_THAT(VisitUntil("never"), ElementsAre("/a", "/a/@Cls", "/b", "/c", "/c/@Cls"));
  EXPECT_FALSE(stopped_);
  EXPECT_THAT(components_.log->GetOperations(), ElementsAre(Named("first"), Named("second")));
}

TEST_P(ConcatenatedPathWalk, NeverReachesTheSecondComponentWhenStoppedInTheFirst) {
  EXPECT_THAT(VisitUntil("/a/@Cls"), ElementsAre("/a", "/a/@Cls"));
  EXPECT_TRUE(stopped_);
  EXPECT_THAT(components_.log->GetOperations(), ElementsAre(Named("first")));
}

TEST_P(ConcatenatedPathWalk, CanBeStoppedInTheLastComponent) {
  EXPECT_THAT(VisitUntil("/c/@Cls"), ElementsAre("/a", "/a/@Cls", "/b", "/c", "/c/@Cls"));
  EXPECT_TRUE(stopped_);
}

TEST_P(ConcatenatedPathWalk, PassesTheVeryScopeAndCallbackOn) {
  static_cast<void>(VisitUntil("never"));

  for (const Call& call : components_.log->GetCalls()) {
    EXPECT_EQ(call.scope->begin(), std::begin(kEveryKind));
    EXPECT_EQ(call.scope->end(), std::end(kEveryKind));
    EXPECT_THAT(call.arguments, ElementsAre(&callback_));
  }
}

TEST_P(ConcatenatedPathWalk, LetsTheFailureOfTheCallbackPass) {
  const PathEntryCallback failing = [](const EntryPtr&) -> bool { throw InjectedFailure("callback"); };

  EXPECT_THROW((path_.*GetParam().walk)(kEverything, failing), InjectedFailure);
  EXPECT_THAT(components_.log->GetOperations(), ElementsAre(Named("first")));
}

INSTANTIATE_TEST_SUITE_P(Walks, ConcatenatedPathWalk, testing::ValuesIn(kBothWalks),
                         [](const auto& instance) { return std::string(instance.param.operation); });

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
