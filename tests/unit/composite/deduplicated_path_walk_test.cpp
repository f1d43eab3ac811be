// The two routes of a walk: along the kept main entries when there are any, else along the components, by location.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <support/mock_path.hpp>
#include <utility>
#include <vector>

#include "repeated_components.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using support::APath;
using support::Folder;
using support::InjectedFailure;
using support::LocationOf;
using support::MockPath;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::NiceMock;
using testing::Return;

using Locations = std::vector<std::string>;

class DeduplicatedPathWalk : public testing::TestWithParam<Walk> {
 protected:
  static bool Visit(const IPath& path, SearchScope scope, const PathEntryCallback& callback) {
    return (path.*GetParam().walk)(scope, callback);
  }

  // The locations visited and whether the walk was stopped, which it is at `last`.
  static std::pair<Locations, bool> VisitUntil(const IPath& path, const std::string& last,
                                               SearchScope scope = kEverything) {
    Locations visited;
    const bool stopped = Visit(path, scope, [&](const EntryPtr& entry) {
      visited.push_back(LocationOf(entry));
      return visited.back() == last;
    });
    return {visited, stopped};
  }
  static Locations Visited(const IPath& path, SearchScope scope = kEverything) {
    const auto [visited, stopped] = VisitUntil(path, "never", scope);
    EXPECT_FALSE(stopped);
    return visited;
  }

  RepeatedComponents components_;
  DeduplicatedPath path_{components_.Both()};
};

TEST_P(DeduplicatedPathWalk, VisitsEachLocationOfTheComponentsOnceWhileThereIsNoList) {
  EXPECT_THAT(Visited(path_), ElementsAre("/a", "/a/@Cls", "/b", "/c", "/a/@New"));
  EXPECT_THAT(components_.log->GetOperations(), ElementsAre("first.ForEachEntry", "second.ForEachEntry"));
}

TEST_P(DeduplicatedPathWalk, NeverBuildsTheList) {
  static_cast<void>(Visited(path_));

  EXPECT_THAT(Visited(path_), ElementsAre("/a", "/a/@Cls", "/b", "/c", "/a/@New"));
  EXPECT_THAT(components_.log->GetOperations(), testing::Not(testing::Contains(testing::HasSubstr("GetMainEntries"))));
}

TEST_P(DeduplicatedPathWalk, HandsTheEntryOfTheFirstAppearanceToTheCallback) {
  std::vector<EntryPtr> visited;
  Visit(path_, kEverything, [&](const EntryPtr& entry) {
    visited.push_back(entry);
    return false;
  });

  EXPECT_THAT(visited, ElementsAre(components_.first->EntryAt("/a"), components_.first->EntryAt("/a/@Cls"),
                                   components_.first->EntryAt("/b"), components_.second->EntryAt("/c"),
                                   components_.second->EntryAt("/a/@New")));
}

TEST_P(DeduplicatedPathWalk, StopsAtTheFirstEntryAndAsksNoFurtherComponent) {
  EXPECT_EQ(VisitUntil(path_, "/a"), std::pair(Locations{"/a"}, true));
  EXPECT_THAT(components_.log->GetOperations(), ElementsAre("first.ForEachEntry"));
}

TEST_P(DeduplicatedPathWalk, CanBeStoppedInALaterComponent) {
  EXPECT_EQ(VisitUntil(path_, "/c"), std::pair(Locations({"/a", "/a/@Cls", "/b", "/c"}), true));
}

TEST_P(DeduplicatedPathWalk, GivesTheComponentsTheVeryScope) {
  static_cast<void>(Visited(path_));

  for (const Call& call : components_.log->GetCalls()) {
    EXPECT_EQ(call.scope->begin(), std::begin(kEveryKind));
    EXPECT_EQ(call.scope->end(), std::end(kEveryKind));
  }
}

TEST_P(DeduplicatedPathWalk, KnowsOnlyLocationsInTheScopeAsSeen) {
  // /a/+p is a method entry first, out of scope, and then a main entry.
  const auto component =
      APath().With(Folder("/a").WithPackage(Folder("p"))).With(Folder("/a/+p")).With(Folder("/a")).Build();
  const DeduplicatedPath path(PathPtrs{component});
  constexpr PathEntryType kMain[] = {PathEntryType::Main};

  EXPECT_THAT(Visited(path, SearchScope(std::begin(kMain), std::end(kMain))), ElementsAre("/a", "/a/+p"));
  EXPECT_THAT(Visited(path), ElementsAre("/a", "/a/+p"));
}

TEST_P(DeduplicatedPathWalk, StopsWhenAComponentSaysSoItself) {
  const auto stopped = std::make_shared<NiceMock<MockPath>>();
  ON_CALL(*stopped, ForEachEntry).WillByDefault(Return(true));
  const DeduplicatedPath path(PathPtrs{stopped, components_.first});

  EXPECT_EQ(VisitUntil(path, "never"), std::pair(Locations{}, true));
  EXPECT_THAT(components_.log->GetOperations(), IsEmpty());
}

TEST_P(DeduplicatedPathWalk, GoesAlongTheMainEntriesOnceTheyAreListed) {
  static_cast<void>(path_.GetMainEntries());
  components_.log->Clear();

  // What only a later appearance of /a holds is not reached.
  EXPECT_THAT(Visited(path_), ElementsAre("/a", "/a/@Cls", "/b", "/c"));
  EXPECT_THAT(components_.log->GetOperations(), IsEmpty()) << "no component is asked";
}

TEST_P(DeduplicatedPathWalk, RepeatsLocationsOfMethodEntriesAlongTheMainEntries) {
  const auto component = APath().With(Folder("/a").WithPackage(Folder("p"))).With(Folder("/a/+p")).Build();
  const DeduplicatedPath path(PathPtrs{component});
  ASSERT_THAT(Visited(path), ElementsAre("/a", "/a/+p"));

  static_cast<void>(path.GetMainEntries());

  EXPECT_THAT(Visited(path), ElementsAre("/a", "/a/+p", "/a/+p"));
}

TEST_P(DeduplicatedPathWalk, EndsAlongTheMainEntriesWhereverItIsStopped) {
  static_cast<void>(path_.GetMainEntries());

  EXPECT_EQ(VisitUntil(path_, "/a"), std::pair(Locations{"/a"}, true));
  EXPECT_EQ(VisitUntil(path_, "/a/@Cls"), std::pair(Locations({"/a", "/a/@Cls"}), true));
  EXPECT_EQ(VisitUntil(path_, "/c"), std::pair(Locations({"/a", "/a/@Cls", "/b", "/c"}), true));
}

TEST_P(DeduplicatedPathWalk, VisitsOnlyTheScopeAlongTheMainEntries) {
  constexpr PathEntryType kClass[] = {PathEntryType::Class};
  static_cast<void>(path_.GetMainEntries());

  EXPECT_THAT(Visited(path_, SearchScope(std::begin(kClass), std::end(kClass))), ElementsAre("/a/@Cls"));
}

TEST_P(DeduplicatedPathWalk, GoesAlongTheComponentsWhenTheListIsEmpty) {
  // Components that gained folders after the list was built.
  const auto source = APath().With(Folder("/late")).Build();
  const auto mock = std::make_shared<NiceMock<MockPath>>();
  ON_CALL(*mock, GetMainEntries).WillByDefault(Return(std::make_shared<const MockPath::Entries>()));
  ON_CALL(*mock, ForEachEntry).WillByDefault([&](SearchScope scope, const PathEntryCallback& callback) {
    return source->ForEachEntry(scope, callback);
  });
  const DeduplicatedPath path(PathPtrs{mock, mock});
  ASSERT_THAT(*path.GetMainEntries(), IsEmpty());

  EXPECT_THAT(Visited(path), ElementsAre("/late"));
}

TEST_P(DeduplicatedPathWalk, GoesAlongTheComponentsAfterAFailedBuild) {
  components_.log->FailNext("second.GetMainEntries");
  EXPECT_THROW(static_cast<void>(path_.GetMainEntries()), InjectedFailure);

  EXPECT_THAT(Visited(path_), ElementsAre("/a", "/a/@Cls", "/b", "/c", "/a/@New"));
}

TEST_P(DeduplicatedPathWalk, StaysOnItsRouteWhenTheListIsBuiltMeanwhile) {
  Locations visited;
  Visit(path_, kEverything, [&](const EntryPtr& entry) {
    static_cast<void>(path_.GetMainEntries());
    visited.push_back(LocationOf(entry));
    return false;
  });

  EXPECT_THAT(visited, ElementsAre("/a", "/a/@Cls", "/b", "/c", "/a/@New"));
}

TEST_P(DeduplicatedPathWalk, FailsWithAnEmptyCallbackAtTheFirstEntry) {
  EXPECT_THROW(Visit(path_, kEverything, nullptr), std::bad_function_call);
  EXPECT_THAT(components_.log->GetOperations(), ElementsAre("first.ForEachEntry"));

  EXPECT_FALSE(Visit(DeduplicatedPath(PathPtrs{APath().Build()}), kEverything, nullptr)) << "there is no entry";
}

TEST_P(DeduplicatedPathWalk, LetsTheFailureOfTheCallbackPassAndForgetsTheWalk) {
  for (const bool isListed : {false, true}) {
    if (isListed) static_cast<void>(path_.GetMainEntries());
    const Locations before = Visited(path_);

    EXPECT_THROW(Visit(path_, kEverything, [](const EntryPtr&) -> bool { throw InjectedFailure("callback"); }),
                 InjectedFailure);
    EXPECT_EQ(Visited(path_), before);
  }
}

TEST_P(DeduplicatedPathWalk, LetsTheFailureOfAComponentPass) {
  components_.log->FailNext("second.ForEachEntry");

  EXPECT_THROW(static_cast<void>(Visited(path_)), InjectedFailure);
}

INSTANTIATE_TEST_SUITE_P(Walks, DeduplicatedPathWalk, testing::ValuesIn(kBothWalks),
                         [](const auto& instance) { return std::string(instance.param.operation); });

// A derived path with its own idea of a walk.
class OverridingWalk : public DeduplicatedPath {
 public:
  using DeduplicatedPath::DeduplicatedPath;

  bool ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const override {
    scope_ = scope;
    callback_ = &callback;
    return true;
  }

  mutable std::optional<SearchScope> scope_;
  mutable const PathEntryCallback* callback_ = nullptr;
};

TEST(DeduplicatedPath, WalksConcurrentlyByADerivedPathsOwnWalk) {
  const OverridingWalk path(PathPtrs{});
  const PathEntryCallback callback = [](const EntryPtr&) { return false; };

  EXPECT_TRUE(path.ConcurrentForEachEntry(kEverything, callback));
  EXPECT_EQ(path.callback_, &callback);
  EXPECT_EQ(path.scope_->begin(), std::begin(kEveryKind));
  EXPECT_EQ(path.scope_->end(), std::end(kEveryKind));
}

TEST(DeduplicatedPath, NeverWalksAComponentConcurrently) {
  const auto mock = std::make_shared<NiceMock<MockPath>>();
  EXPECT_CALL(*mock, ConcurrentForEachEntry).Times(0);
  EXPECT_CALL(*mock, ForEachEntry).WillOnce(Return(false));
  const DeduplicatedPath path(PathPtrs{mock});

  EXPECT_FALSE(path.ConcurrentForEachEntry(kEverything, [](const EntryPtr&) { return false; }));
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
