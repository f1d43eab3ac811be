// The walks, from which the callback hears nothing of what is masked.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <support/mock_path.hpp>
#include <vector>

#include "masked_folders.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using support::APath;
using support::Folder;
using support::InjectedFailure;
using support::LocationOf;
using support::MockPath;
using testing::Contains;
using testing::ElementsAre;
using testing::NiceMock;
using testing::Not;
using testing::Return;

class MultiMaskedPathWalk : public testing::TestWithParam<Walk> {
 protected:
  static bool Visit(const IPath& path, const PathEntryCallback& callback, SearchScope scope = kEverything) {
    return (path.*GetParam().walk)(scope, callback);
  }

  // The locations visited, until `last` has been; the result of the walk goes to `stopped_`.
  std::vector<std::string> VisitUntil(const IPath& path, const std::string& last) {
    std::vector<std::string> visited;
    stopped_ = Visit(path, [&](const EntryPtr& entry) {
      visited.push_back(LocationOf(entry));
      return visited.back() == last;
    });
    return visited;
  }

  MaskedFolders folders_;
  bool stopped_ = false;
};

TEST_P(MultiMaskedPathWalk, PassesMaskedFoldersAndTheirMethodEntriesBy) {
  EXPECT_THAT(VisitUntil(folders_.Without({"/c", "/a"}), "never"), ElementsAre("/b", "/b/@Cls", "/d", "/d/@Cls"));
  EXPECT_FALSE(stopped_);
}

TEST_P(MultiMaskedPathWalk, VisitsEverythingWhenNothingIsMasked) {
  EXPECT_THAT(VisitUntil(folders_.Without({}), "never"),
              ElementsAre("/a", "/a/@Cls", "/b", "/b/@Cls", "/c", "/c/@Cls", "/d", "/d/@Cls"));
}

TEST_P(MultiMaskedPathWalk, VisitsEverythingWhenOnlyAStrangerIsMasked) {
  const EntryPtr stranger = APath().With(Folder("/a")).Build()->EntryAt("/a");

  EXPECT_EQ(VisitUntil(MultiMaskedPath(folders_.path, {stranger}), "never").size(), 8U);
}

TEST_P(MultiMaskedPathWalk, IsStoppedByTheCallbackAlone) {
  EXPECT_THAT(VisitUntil(folders_.Without({"/a"}), "/b"), ElementsAre("/b"));
  EXPECT_TRUE(stopped_);

  EXPECT_THAT(VisitUntil(folders_.Without({"/b"}), "/b"), Not(Contains("/b")));
  EXPECT_FALSE(stopped_) << "nobody is asked about what is masked";
}

TEST_P(MultiMaskedPathWalk, IsAWalkOfThatKindOverThePathInTheVeryScope) {
  static_cast<void>(VisitUntil(folders_.Without({"/a"}), "never"));

  const Call question = folders_.log->GetCalls().front();
  EXPECT_EQ(question.operation, std::string("path.") + GetParam().operation);
  EXPECT_EQ(question.scope->begin(), std::begin(kEveryKind));
  EXPECT_EQ(question.scope->end(), std::end(kEveryKind));
}

TEST_P(MultiMaskedPathWalk, HandsThroughWhatThePathSays) {
  const auto mock = std::make_shared<NiceMock<MockPath>>();
  ON_CALL(*mock, ForEachEntry).WillByDefault(Return(true));
  ON_CALL(*mock, ConcurrentForEachEntry).WillByDefault(Return(true));

  EXPECT_TRUE(Visit(MultiMaskedPath(mock, {}), [](const EntryPtr&) { return false; }));
}

TEST_P(MultiMaskedPathWalk, FailsWithAnEmptyCallbackAtTheFirstEntryThatIsNotMasked) {
  EXPECT_THROW(Visit(folders_.Without({"/a"}), nullptr), std::bad_function_call);
  EXPECT_FALSE(Visit(folders_.Without({"/a", "/b", "/c", "/d"}), nullptr)) << "no entry is offered";
}

TEST_P(MultiMaskedPathWalk, LetsFailuresOfTheCallbackAndOfThePathPass) {
  const MultiMaskedPath masked = folders_.Without({"/a"});
  const PathEntryCallback goOn = [](const EntryPtr&) { return false; };

  EXPECT_THROW(Visit(masked, [](const EntryPtr&) -> bool { throw InjectedFailure("callback"); }), InjectedFailure);
  for (const std::string operation : {GetParam().operation, "IsEntryOnPath", "GetMainEntryForEntry"}) {
    folders_.log->FailNext("path." + operation);
    EXPECT_THROW(Visit(masked, goOn), InjectedFailure) << operation;
  }
  EXPECT_FALSE(Visit(masked, goOn));
}

INSTANTIATE_TEST_SUITE_P(Walks, MultiMaskedPathWalk, testing::ValuesIn(kBothWalks),
                         [](const auto& instance) { return std::string(instance.param.operation); });

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
