// The first match: the path's own unless it is hidden, else the first candidate, in the order of the masks.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <support/mock_path.hpp>

#include "masked_folders.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using support::APath;
using support::FileOf;
using support::Folder;
using support::InjectedFailure;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::Not;

class MultiMaskedPathFirstMatch : public testing::Test {
 protected:
  std::string FirstWithout(std::initializer_list<std::string_view> masked, SearchScope scope = kEverything) const {
    return FileOf(folders_.Without(masked).FindFirstInScope(scope, target_, kPolicy));
  }

  MaskedFolders folders_;
  detail::SearchTarget target_ = detail::SearchTarget::Owning(u"foo", u".vnx");
};

TEST_F(MultiMaskedPathFirstMatch, IsThePathsOwnWhenItIsNotHidden) {
  EXPECT_EQ(FirstWithout({}), "/a/foo.vnx");
  EXPECT_EQ(FirstWithout({"/b", "/c"}), "/a/foo.vnx");
  EXPECT_THAT(folders_.log->GetOperations(), Not(Contains("path.FindAllInScope")));
}

TEST_F(MultiMaskedPathFirstMatch, IsNothingWhenThePathFindsNothing) {
  const auto target = detail::SearchTarget::Owning(u"never", u".vnx");

  EXPECT_FALSE(folders_.Without({"/a"}).FindFirstInScope(kEverything, target, kPolicy).has_value());
  EXPECT_THAT(folders_.log->GetOperations(), ElementsAre("path.FindFirstInScope"));
}

TEST_F(MultiMaskedPathFirstMatch, IsTheFirstAfterTheMaskedEntryThatHidesThePathsOwn) {
  EXPECT_EQ(FirstWithout({"/a"}), "/b/foo.vnx");
  EXPECT_EQ(FirstWithout({"/a", "/b"}), "/c/foo.vnx");
  EXPECT_EQ(FirstWithout({"/a", "/b", "/c"}), "/d/foo.vnx");
}

TEST_F(MultiMaskedPathFirstMatch, IsHiddenInAMethodEntryOfAMaskedFolderAsWell) {
  constexpr PathEntryType kClass[] = {PathEntryType::Class};

  EXPECT_EQ(FirstWithout({"/a"}, SearchScope(std::begin(kClass), std::end(kClass))), "/b/@Cls/foo.vnx");
}

TEST_F(MultiMaskedPathFirstMatch, IsNothingWhenEverythingIsMasked) {
  EXPECT_EQ(FirstWithout({"/a", "/b", "/c", "/d"}), "none");
  EXPECT_EQ(FirstWithout({"/d", "/c", "/b", "/a"}), "none");
}

TEST_F(MultiMaskedPathFirstMatch, IsTheFirstCandidateInTheOrderOfTheMasksNotOfThePath) {
  EXPECT_EQ(FirstWithout({"/a", "/c"}), "/b/foo.vnx");
  EXPECT_EQ(FirstWithout({"/c", "/a"}), "/d/foo.vnx") << "though /b/foo.vnx comes before";
}

TEST_F(MultiMaskedPathFirstMatch, IsLookedForAfterTheNextMaskWhenACandidateIsMasked) {
  EXPECT_EQ(FirstWithout({"/b", "/c", "/a"}), "/d/foo.vnx") << "after /b comes /c, which is masked; after /c, /d";
  EXPECT_EQ(FirstWithout({"/d", "/a"}), "/b/foo.vnx") << "after /d comes nothing";
}

TEST_F(MultiMaskedPathFirstMatch, IsNoneBehindAStranger) {
  const EntryPtr stranger = APath().With(Folder("/x")).Build()->EntryAt("/x");
  const MultiMaskedPath masked(folders_.path, {stranger, folders_.At("/a")});

  EXPECT_EQ(FileOf(masked.FindFirstInScope(kEverything, target_, kPolicy)), "/b/foo.vnx");
}

TEST_F(MultiMaskedPathFirstMatch, IsTheFirstBehindTheWholePositionOfAMask) {
  constexpr PathEntryType kMainAndClass[] = {PathEntryType::Main, PathEntryType::Class};
  const auto target = detail::SearchTarget::Owning(u"x", u".vnx");
  const auto path = APath()
                        .With(Folder("/a").WithFile("x.vnx").WithClass(Folder("C").WithFile("x.vnx")))
                        .With(Folder("/b").WithClass(Folder("C").WithFile("x.vnx")))
                        .Build();
  const MultiMaskedPath masked(path, {path->EntryAt("/a")});

  EXPECT_EQ(FileOf(masked.FindFirstInScope({std::begin(kMainAndClass), std::end(kMainAndClass)}, target, kPolicy)),
            "/b/@C/x.vnx");
}

TEST_F(MultiMaskedPathFirstMatch, AsksTheSameQuestionTwice) {
  static_cast<void>(FirstWithout({"/a"}));

  std::vector<Call> questions = folders_.log->GetCalls();
  std::erase_if(questions, [](const Call& call) { return call.target == nullptr; });
  EXPECT_THAT(questions, ElementsAre(Field(&Call::operation, "path.FindFirstInScope"),
                                     Field(&Call::operation, "path.FindAllInScope")));
  EXPECT_THAT(questions, Each(GotTheSameScopeAndPolicy()));
  EXPECT_THAT(questions, Each(Field(&Call::target, &target_)));
}

TEST_F(MultiMaskedPathFirstMatch, IsSearchedByAskingWhetherTheMaskedEntryIsBefore) {
  static_cast<void>(FirstWithout({"/a"}));

  const EntryPtr masked = folders_.At("/a");
  std::size_t asked = 0;
  for (const Call& call : folders_.log->GetCalls()) {
    if (call.operation != "path.FirstEntryIsBeforeSecondOnPath") continue;
    ++asked;
    EXPECT_EQ(call.arguments.front(), masked.get());
  }
  EXPECT_GT(asked, 0U);
}

TEST_F(MultiMaskedPathFirstMatch, IsThePathsOwnWhenItsEntryIsNotOnThePath) {
  // A path that finds what it says is not its own: then it cannot be masked.
  const auto path = std::make_shared<testing::NiceMock<support::MockPath>>();
  const FoundItem found(nullptr, folders_.At("/a"));
  ON_CALL(*path, FindFirstInScope).WillByDefault(testing::Return(found));
  ON_CALL(*path, IsEntryOnPath).WillByDefault(testing::Return(false));

  EXPECT_TRUE(MultiMaskedPath(path, folders_.EntriesAt({"/a"})).FindFirstInScope(kEverything, target_, kPolicy) ==
              found);
}

TEST_F(MultiMaskedPathFirstMatch, LetsFailuresOfThePathPass) {
  for (const char* const operation : {"FindFirstInScope", "FindAllInScope", "IsEntryOnPath", "GetMainEntryForEntry",
                                      "FirstEntryIsBeforeSecondOnPath"}) {
    folders_.log->FailNext(std::string("path.") + operation);
    EXPECT_THROW(static_cast<void>(FirstWithout({"/a"})), InjectedFailure) << operation;
    EXPECT_EQ(FirstWithout({"/a"}), "/b/foo.vnx");
  }
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
