// The file that a name means on a whole path.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <search_path_interfaces/constants.hpp>
#include <support/fake_path.hpp>
#include <support/mock_path.hpp>
#include <support/texts_of.hpp>

#include "asked.hpp"

namespace Quorvex::PathManagement::lookup_tests {
namespace {

using support::APath;
using support::CallLog;
using support::FileOf;
using support::Folder;
using support::InjectedFailure;
using support::MockPath;
using testing::_;
using testing::AllOf;
using testing::ElementsAre;
using testing::NiceMock;
using testing::Return;
using testing::SizeIs;
using testing::StrictMock;

Folder WithFoo(const char* name) { return Folder(name).WithFile("foo.vnx"); }

std::string FileVisibleOn(const IPath& path, const std::u16string& name,
                          FilenameMatchingPolicy policy = FilenameMatchingPolicy::CaseSensitive) {
  return FileOf(FindFirstFileVisibleOnPath(path, Wanted(name).target, policy));
}

TEST(FindFirstFileVisibleOnPath, FindsNothingOnAnEmptyPath) {
  EXPECT_EQ(FileVisibleOn(*APath().Build(), u"foo"), "none");
  EXPECT_EQ(FileVisibleOn(*APath().Build(), u"a/foo"), "none");
}

TEST(FindFirstFileVisibleOnPath, FindsTheFileOfTheFirstMainEntryThatHasIt) {
  const auto path = APath().With(Folder("/a")).With(WithFoo("/b")).With(WithFoo("/c")).Build();

  EXPECT_EQ(FileVisibleOn(*path, u"foo"), "/b/foo.vnx");
}

TEST(FindFirstFileVisibleOnPath, FindsTheFileOfAClassFolderOfItsNameWhenNoMainEntryHasIt) {
  const auto path = APath().With(Folder("/a").WithClass(WithFoo("foo"))).Build();

  EXPECT_EQ(FileVisibleOn(*path, u"foo"), "/a/@foo/foo.vnx");
}

TEST(FindFirstFileVisibleOnPath, SeesNoOtherSpecialFolder) {
  const auto path = APath()
                        .With(Folder("/a")
                                  .WithClass(WithFoo("other"))
                                  .WithPackage(WithFoo("foo").WithClass(WithFoo("foo")))
                                  .With(WithFoo("private"))
                                  .With(WithFoo("resources"))
                                  .WithAuxiliary(WithFoo("foo")))
                        .Build();

  EXPECT_EQ(FileVisibleOn(*path, u"foo"), "none");
}

TEST(FindFirstFileVisibleOnPath, PrefersAClassFolderThatStandsBeforeTheMainEntry) {
  const auto path = APath().With(Folder("/a").WithClass(WithFoo("foo"))).With(WithFoo("/b")).Build();

  EXPECT_EQ(FileVisibleOn(*path, u"foo"), "/a/@foo/foo.vnx");
}

TEST(FindFirstFileVisibleOnPath, PrefersTheMainEntryToAClassFolderThatStandsLater) {
  const auto path = APath().With(WithFoo("/a")).With(Folder("/b").WithClass(WithFoo("foo"))).Build();

  EXPECT_EQ(FileVisibleOn(*path, u"foo"), "/a/foo.vnx");
}

TEST(FindFirstFileVisibleOnPath, PrefersTheMainEntryToItsOwnClassFolder) {
  const auto path = APath().With(WithFoo("/a").WithClass(WithFoo("foo"))).Build();

  EXPECT_EQ(FileVisibleOn(*path, u"foo"), "/a/foo.vnx");
}

TEST(FindFirstFileVisibleOnPath, PassesOverAClassFolderWithoutTheFile) {
  const auto path = APath()
                        .With(Folder("/a").WithClass(Folder("foo").WithFile("bar.vnx")))
                        .With(Folder("/b").WithClass(WithFoo("foo")))
                        .With(WithFoo("/c"))
                        .Build();

  EXPECT_EQ(FileVisibleOn(*path, u"foo"), "/b/@foo/foo.vnx");
}

TEST(FindFirstFileVisibleOnPath, FindsTheFileOfTheMainEntryWhenNoClassFolderOfItsNameHasIt) {
  const auto path = APath().With(Folder("/a").WithClass(Folder("foo").WithFile("bar.vnx"))).With(WithFoo("/b")).Build();

  EXPECT_EQ(FileVisibleOn(*path, u"foo"), "/b/foo.vnx");
}

TEST(FindFirstFileVisibleOnPath, LetsOnlyTheFirstClassHitCompeteWithTheMainEntry) {
  const auto log = std::make_shared<CallLog>();
  const auto path = APath()
                        .Recording("path", log)
                        .With(WithFoo("/a"))
                        .With(Folder("/b").WithClass(WithFoo("foo")))
                        .With(Folder("/c").WithClass(WithFoo("foo")))
                        .Build();

  EXPECT_EQ(FileVisibleOn(*path, u"foo"), "/a/foo.vnx");
  EXPECT_THAT(log->GetOperations(), ElementsAre("path.FindFirstInScope", "path.GetMethodEntriesByName",
                                                "/b/@foo FindFirst", "path.FirstEntryIsBeforeSecondOnPath"));
}

TEST(FindFirstFileVisibleOnPath, TellsInWhichEntryTheFileWasFound) {
  const auto path = APath().With(Folder("/a").WithClass(WithFoo("foo"))).With(WithFoo("/b")).Build();
  const Wanted wanted(u"foo");

  const auto found = FindFirstFileVisibleOnPath(*path, wanted.target, kPolicy);

  ASSERT_TRUE(found);
  EXPECT_EQ(found->GetPathEntry(), path->EntryAt("/a/@foo"));
  EXPECT_EQ(found->GetPathItem(), path->EntryAt("/a/@foo")->FindFirst(wanted.target, kPolicy));
}

TEST(FindFirstFileVisibleOnPath, SelectsClassFoldersNativelyWhateverThePolicyForFiles) {
  const auto exact = APath().With(Folder("/a").WithClass(WithFoo("FOO"))).Build();
  const auto folding = APath().IgnoringCase().With(Folder("/a").WithClass(WithFoo("FOO"))).Build();

  EXPECT_EQ(FileVisibleOn(*exact, u"foo", FilenameMatchingPolicy::CaseInsensitive), "none");
  EXPECT_EQ(FileVisibleOn(*folding, u"foo", FilenameMatchingPolicy::CaseSensitive), "/a/@FOO/foo.vnx");
}

TEST(FindFirstFileVisibleOnPath, ComparesTheFilesOfAClassFolderUnderTheCallersPolicy) {
  const auto path = APath().With(Folder("/a").WithClass(Folder("foo").WithFile("FOO.vnx"))).Build();

  EXPECT_EQ(FileVisibleOn(*path, u"foo", FilenameMatchingPolicy::CaseInsensitive), "/a/@foo/FOO.vnx");
  EXPECT_EQ(FileVisibleOn(*path, u"foo", FilenameMatchingPolicy::CaseSensitive), "none");
}

// /a has no file; its class folder and that of /b have none either; /c has both.
struct RecordedPath {
  std::shared_ptr<CallLog> log = std::make_shared<CallLog>();
  std::shared_ptr<const support::FakePath> path = APath()
                                                      .Recording("path", log)
                                                      .With(Folder("/a").WithClass(Folder("foo")))
                                                      .With(Folder("/b").WithClass(WithFoo("foo")))
                                                      .With(WithFoo("/c").WithClass(WithFoo("foo")))
                                                      .Build();
};

TEST(FindFirstFileVisibleOnPath, AsksTheMainEntriesThenTheClassFoldersThenWhichComesFirst) {
  const RecordedPath recorded;
  const Wanted wanted(u"foo");

  static_cast<void>(FindFirstFileVisibleOnPath(*recorded.path, wanted.target, kPolicy));

  ASSERT_THAT(recorded.log->GetOperations(),
              ElementsAre("path.FindFirstInScope", "path.GetMethodEntriesByName", "/a/@foo FindFirst",
                          "/b/@foo FindFirst", "path.FirstEntryIsBeforeSecondOnPath"));
  const auto calls = recorded.log->GetCalls();
  EXPECT_THAT(calls[0], AllOf(AskedInScope(MainScope), AskedForTarget(&wanted.target)));
  EXPECT_THAT(calls[1], AskedForClassFoldersOf(u"foo"));
  EXPECT_THAT(calls[2], AskedForTarget(&wanted.target));
  EXPECT_THAT(calls[3], AskedForTarget(&wanted.target));
  EXPECT_THAT(calls[4].arguments,
              ElementsAre(recorded.path->EntryAt("/b/@foo").get(), recorded.path->EntryAt("/c").get()));
}

TEST(FindFirstFileVisibleOnPath, AsksForNoOrderUnlessThereAreTwoHits) {
  const auto log = std::make_shared<CallLog>();
  const auto onlyMain = APath().Recording("path", log).With(WithFoo("/a")).Build();
  const auto onlyClass = APath().Recording("path", log).With(Folder("/a").WithClass(WithFoo("foo"))).Build();

  EXPECT_EQ(FileVisibleOn(*onlyMain, u"foo"), "/a/foo.vnx");
  EXPECT_THAT(log->GetOperations(), ElementsAre("path.FindFirstInScope", "path.GetMethodEntriesByName"));

  log->Clear();
  EXPECT_EQ(FileVisibleOn(*onlyClass, u"foo"), "/a/@foo/foo.vnx");
  EXPECT_THAT(log->GetOperations(),
              ElementsAre("path.FindFirstInScope", "path.GetMethodEntriesByName", "/a/@foo FindFirst"));
}

TEST(FindFirstFileVisibleOnPath, SearchesForTheTargetsOwnPartsNotForTheTypedName) {
  const RecordedPath recorded;
  const std::vector<std::u16string> extensions = {u".other"};
  const auto target = CreateSearchTargetWithExtensionInFilenamePreferred(u"foo.vnx", extensions);

  EXPECT_EQ(FileOf(FindFirstFileVisibleOnPath(*recorded.path, target, kPolicy)), "/b/@foo/foo.vnx");
  EXPECT_THAT(recorded.log->GetCalls()[1], AskedForClassFoldersOf(u"foo"));
}

TEST(FindFirstFileVisibleOnPath, FindsAPartialPathnameInEveryVisibleKindOfEntry) {
  const auto path = APath()
                        .With(Folder("/a")
                                  .WithPackage(WithFoo("pkg"))
                                  .WithClass(WithFoo("Cls"))
                                  .With(WithFoo("private"))
                                  .With(WithFoo("resources"))
                                  .WithAuxiliary(WithFoo("more")))
                        .With(WithFoo("/b"))
                        .Build();

  EXPECT_EQ(FileVisibleOn(*path, u"pkg/foo"), "/a/+pkg/foo.vnx");
  EXPECT_EQ(FileVisibleOn(*path, u"@Cls/foo"), "/a/@Cls/foo.vnx");
  EXPECT_EQ(FileVisibleOn(*path, u"private/foo"), "/a/private/foo.vnx");
  EXPECT_EQ(FileVisibleOn(*path, u"more/foo"), "/a/more/foo.vnx");
  EXPECT_EQ(FileVisibleOn(*path, u"b/foo"), "/b/foo.vnx");
  EXPECT_EQ(FileVisibleOn(*path, u"resources/foo"), "none");
}

TEST(FindFirstFileVisibleOnPath, AsksOneQuestionForAPartialPathname) {
  for (const std::u16string name : {u"b/foo", u"nowhere/foo", u"foo/", u"/foo", u"/"}) {
    const RecordedPath recorded;
    const Wanted wanted(name);

    static_cast<void>(FindFirstFileVisibleOnPath(*recorded.path, wanted.target, kPolicy));

    EXPECT_THAT(recorded.log->GetCalls(), ElementsAre(IsTheQuestionForAPartialPathname(&wanted.target)));
  }
}

TEST(FindFirstFileVisibleOnPath, KnowsAPartialPathnameByAnyOfTheSeparators) {
  for (const char16_t separator : Constants::PathnameSeparatorStr) {
    const RecordedPath recorded;
    const Wanted wanted(std::u16string(u"b") + separator + u"foo");

    static_cast<void>(FindFirstFileVisibleOnPath(*recorded.path, wanted.target, kPolicy));

    EXPECT_THAT(recorded.log->GetCalls(), ElementsAre(IsTheQuestionForAPartialPathname(&wanted.target)));
  }
}

TEST(FindFirstFileVisibleOnPath, GivesThePathsAnswerForAPartialPathnameAsItIs) {
  const auto other = APath().With(WithFoo("/elsewhere")).Build();
  const Wanted wanted(u"a/foo");
  const auto entry = other->EntryAt("/elsewhere");
  const FoundItem answer(entry->GetItems()->front(), entry);
  StrictMock<MockPath> path;
  EXPECT_CALL(path, FindFirstInScope(_, _, kPolicy)).WillOnce(Return(answer));

  const auto found = FindFirstFileVisibleOnPath(path, wanted.target, kPolicy);

  ASSERT_TRUE(found);
  EXPECT_EQ(found->GetPathItem(), answer.GetPathItem());
  EXPECT_EQ(found->GetPathEntry(), answer.GetPathEntry());
}

TEST(FindFirstFileVisibleOnPath, TakesTheOrderFromThePathAndFromNothingElse) {
  const auto entries = APath().With(WithFoo("/a")).With(Folder("/b").WithClass(WithFoo("foo"))).Build();
  const auto main = entries->EntryAt("/a");
  const auto classFolder = entries->EntryAt("/b/@foo");
  NiceMock<MockPath> path;
  ON_CALL(path, FindFirstInScope).WillByDefault(Return(FoundItem(main->GetItems()->front(), main)));
  ON_CALL(path, GetMethodEntriesByName).WillByDefault(Return(MockPath::Entries{classFolder}));
  ON_CALL(path, FirstEntryIsBeforeSecondOnPath).WillByDefault(Return(true));

  EXPECT_EQ(FileVisibleOn(path, u"foo"), "/b/@foo/foo.vnx");
}

TEST(FindFirstFileVisibleOnPath, LetsTheFailureOfAnyQuestionPass) {
  for (const char* const operation : {"path.FindFirstInScope", "path.GetMethodEntriesByName", "/b/@foo FindFirst",
                                      "path.FirstEntryIsBeforeSecondOnPath"}) {
    const RecordedPath recorded;
    recorded.log->FailNext(operation);

    EXPECT_THAT([&] { return FileVisibleOn(*recorded.path, u"foo"); },
                testing::ThrowsMessage<InjectedFailure>(testing::StrEq(operation)));
  }
}

TEST(FindFirstFileVisibleOnPath, LetsTheFailureOfAPartialPathnamePass) {
  const RecordedPath recorded;
  recorded.log->FailNext("path.FindFirstInScope");

  EXPECT_THROW(FileVisibleOn(*recorded.path, u"b/foo"), InjectedFailure);
  EXPECT_THAT(recorded.log->GetCalls(), SizeIs(1));
}

}  // namespace
}  // namespace Quorvex::PathManagement::lookup_tests
