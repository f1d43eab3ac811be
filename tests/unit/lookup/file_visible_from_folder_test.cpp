// The file that a name means to code in a folder: private folder, then class folders, then main entries.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <memory>
#include <support/fake_path.hpp>
#include <support/texts_of.hpp>

#include "asked.hpp"

namespace Quorvex::PathManagement::lookup_tests {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using support::APath;
using support::CallLog;
using support::FileOf;
using support::Folder;
using support::InjectedFailure;
using testing::AllOf;
using testing::ElementsAre;

Folder WithFoo(const char* name) { return Folder(name).WithFile("foo.vnx"); }

std::string FileVisibleFrom(const std::u16string& folder, const IPath& path, const std::u16string& name,
                            FilenameMatchingPolicy policy = FilenameMatchingPolicy::CaseSensitive) {
  return FileOf(FindFirstFileVisibleFromFolder(path, AbsoluteIRI(folder), Wanted(name).target, policy));
}

TEST(FindFirstFileVisibleFromFolder, PrefersThePrivateFolderToAllElse) {
  const auto path =
      APath().With(WithFoo("/a").WithClass(WithFoo("foo"))).With(WithFoo("/b").With(WithFoo("private"))).Build();

  EXPECT_EQ(FileVisibleFrom(u"file:///b", *path, u"foo"), "/b/private/foo.vnx");
}

TEST(FindFirstFileVisibleFromFolder, SeesThePrivateFolderOfAClassFolder) {
  const auto path = APath().With(WithFoo("/a").WithClass(WithFoo("Cls").With(WithFoo("private")))).Build();

  EXPECT_EQ(FileVisibleFrom(u"file:///a/@Cls", *path, u"foo"), "/a/@Cls/private/foo.vnx");
}

TEST(FindFirstFileVisibleFromFolder, SeesNoOtherFoldersPrivateFolder) {
  const auto path = APath().With(Folder("/a").With(WithFoo("private"))).With(Folder("/b")).Build();

  EXPECT_EQ(FileVisibleFrom(u"file:///b", *path, u"foo"), "none");
}

TEST(FindFirstFileVisibleFromFolder, PrefersAClassFolderToAMainEntryThatStandsBeforeIt) {
  const auto path = APath().With(WithFoo("/a")).With(Folder("/b").WithClass(WithFoo("foo"))).Build();

  EXPECT_EQ(FileVisibleFrom(u"file:///a", *path, u"foo"), "/b/@foo/foo.vnx");
  EXPECT_EQ(FileOf(FindFirstFileVisibleOnPath(*path, Wanted(u"foo").target, kPolicy)), "/a/foo.vnx")
      << "on the path, position decides";
}

TEST(FindFirstFileVisibleFromFolder, PassesOverAPrivateFolderAndClassFoldersWithoutTheFile) {
  const auto path = APath()
                        .With(Folder("/a").With(Folder("private").WithFile("bar.vnx")).WithClass(Folder("foo")))
                        .With(Folder("/b").WithClass(WithFoo("foo")))
                        .Build();

  EXPECT_EQ(FileVisibleFrom(u"file:///a", *path, u"foo"), "/b/@foo/foo.vnx");
}

TEST(FindFirstFileVisibleFromFolder, FindsTheFirstMainEntrysFileLast) {
  const auto path = APath().With(WithFoo("/a")).With(WithFoo("/b").With(Folder("private"))).Build();

  EXPECT_EQ(FileVisibleFrom(u"file:///b", *path, u"foo"), "/a/foo.vnx") << "the folder's own files have no precedence";
}

TEST(FindFirstFileVisibleFromFolder, SeesTheFoldersOwnFilesOnlyWhenItIsAMainEntry) {
  const auto path = APath().With(Folder("/a").WithClass(WithFoo("Cls"))).With(WithFoo("/b")).Build();

  EXPECT_EQ(FileVisibleFrom(u"file:///b", *path, u"foo"), "/b/foo.vnx");
  EXPECT_EQ(FileVisibleFrom(u"file:///a/@Cls", *path, u"foo"), "/b/foo.vnx");
}

TEST(FindFirstFileVisibleFromFolder, SeesNothingOfAFolderThatIsNotOnThePath) {
  const auto withClass = APath().With(WithFoo("/a")).With(Folder("/b").WithClass(WithFoo("foo"))).Build();
  const auto withoutClass = APath().With(WithFoo("/a").With(WithFoo("private"))).Build();

  EXPECT_EQ(FileVisibleFrom(u"file:///elsewhere", *withClass, u"foo"), "/b/@foo/foo.vnx");
  EXPECT_EQ(FileVisibleFrom(u"file:///elsewhere", *withoutClass, u"foo"), "/a/foo.vnx");
  EXPECT_EQ(FileVisibleFrom(u"file:///elsewhere", *withoutClass, u"bar"), "none");
}

TEST(FindFirstFileVisibleFromFolder, TellsInWhichEntryTheFileWasFound) {
  const auto path = APath().With(Folder("/a").With(WithFoo("private")).WithClass(WithFoo("foo"))).Build();
  const Wanted wanted(u"foo");

  const auto fromFolder = FindFirstFileVisibleFromFolder(*path, AbsoluteIRI(u"file:///a"), wanted.target, kPolicy);
  const auto fromElsewhere = FindFirstFileVisibleFromFolder(*path, AbsoluteIRI(u"file:///x"), wanted.target, kPolicy);

  ASSERT_TRUE(fromFolder);
  ASSERT_TRUE(fromElsewhere);
  EXPECT_EQ(fromFolder->GetPathEntry(), path->EntryAt("/a/private"));
  EXPECT_EQ(fromElsewhere->GetPathEntry(), path->EntryAt("/a/@foo"));
}

TEST(FindFirstFileVisibleFromFolder, SelectsTheFolderAndClassFoldersNativelyWhateverThePolicyForFiles) {
  const auto exact = APath().With(Folder("/a").With(WithFoo("private")).WithClass(WithFoo("FOO"))).Build();
  const auto folding =
      APath().IgnoringCase().With(Folder("/a").With(WithFoo("private")).WithClass(WithFoo("BAR"))).Build();

  EXPECT_EQ(FileVisibleFrom(u"file:///A", *exact, u"foo", FilenameMatchingPolicy::CaseInsensitive), "none");
  EXPECT_EQ(FileVisibleFrom(u"file:///A", *folding, u"foo", FilenameMatchingPolicy::CaseSensitive),
            "/a/private/foo.vnx");
}

TEST(FindFirstFileVisibleFromFolder, ComparesThePrivateFoldersFilesUnderTheCallersPolicy) {
  const auto path = APath().With(Folder("/a").With(Folder("private").WithFile("FOO.vnx"))).Build();

  EXPECT_EQ(FileVisibleFrom(u"file:///a", *path, u"foo", FilenameMatchingPolicy::CaseInsensitive),
            "/a/private/FOO.vnx");
  EXPECT_EQ(FileVisibleFrom(u"file:///a", *path, u"foo", FilenameMatchingPolicy::CaseSensitive), "none");
}

// The private folder of /a and the class folder in it have no file; the class folder of /b has it, that of /c too.
struct RecordedPath {
  std::shared_ptr<CallLog> log = std::make_shared<CallLog>();
  std::shared_ptr<const support::FakePath> path =
      APath()
          .Recording("path", log)
          .With(WithFoo("/a").With(Folder("private").WithFile("bar.vnx")).WithClass(Folder("foo")))
          .With(Folder("/b").WithClass(WithFoo("foo")))
          .With(Folder("/c").WithClass(WithFoo("foo")))
          .Build();
};

TEST(FindFirstFileVisibleFromFolder, ReturnsAPrivateHitAtOnce) {
  const RecordedPath recorded;
  const Wanted wanted(u"bar");
  const AbsoluteIRI folder(u"file:///a");

  EXPECT_EQ(FileOf(FindFirstFileVisibleFromFolder(*recorded.path, folder, wanted.target, kPolicy)),
            "/a/private/bar.vnx");

  ASSERT_THAT(recorded.log->GetOperations(),
              ElementsAre("path.GetPathEntryFromAbsoluteIRI(policy)", "/a GetPrivateEntry", "/a/private FindFirst"));
  const auto calls = recorded.log->GetCalls();
  EXPECT_EQ(calls[0].location, folder);
  EXPECT_EQ(calls[0].policy, FilenameMatchingPolicy::Native);
  EXPECT_THAT(calls[2], AskedForTarget(&wanted.target));
}

TEST(FindFirstFileVisibleFromFolder, ReturnsTheFirstClassHitAtOnce) {
  const RecordedPath recorded;
  const Wanted wanted(u"foo");

  const auto found = FindFirstFileVisibleFromFolder(*recorded.path, AbsoluteIRI(u"file:///a"), wanted.target, kPolicy);

  EXPECT_EQ(FileOf(found), "/b/@foo/foo.vnx");
  ASSERT_THAT(recorded.log->GetOperations(),
              ElementsAre("path.GetPathEntryFromAbsoluteIRI(policy)", "/a GetPrivateEntry", "/a/private FindFirst",
                          "path.GetMethodEntriesByName", "/a/@foo FindFirst", "/b/@foo FindFirst"));
  const auto calls = recorded.log->GetCalls();
  EXPECT_THAT(calls[3], AskedForClassFoldersOf(u"foo"));
  EXPECT_THAT(calls[4], AskedForTarget(&wanted.target));
  EXPECT_THAT(calls[5], AskedForTarget(&wanted.target));
}

TEST(FindFirstFileVisibleFromFolder, AsksTheMainEntriesLastAndForNoOrder) {
  const RecordedPath recorded;
  const Wanted wanted(u"nowhere");

  const auto found = FindFirstFileVisibleFromFolder(*recorded.path, AbsoluteIRI(u"file:///b"), wanted.target, kPolicy);

  EXPECT_FALSE(found);
  ASSERT_THAT(recorded.log->GetOperations(),
              ElementsAre("path.GetPathEntryFromAbsoluteIRI(policy)", "/b GetPrivateEntry",
                          "path.GetMethodEntriesByName", "path.FindFirstInScope"));
  EXPECT_THAT(recorded.log->GetCalls()[3], AllOf(AskedInScope(MainScope), AskedForTarget(&wanted.target)));
}

TEST(FindFirstFileVisibleFromFolder, AsksForNoPrivateFolderOfAFolderThatIsNotOnThePath) {
  const RecordedPath recorded;

  EXPECT_EQ(FileVisibleFrom(u"file:///elsewhere", *recorded.path, u"bar"), "none");
  EXPECT_THAT(recorded.log->GetOperations(), ElementsAre("path.GetPathEntryFromAbsoluteIRI(policy)",
                                                         "path.GetMethodEntriesByName", "path.FindFirstInScope"));
}

TEST(FindFirstFileVisibleFromFolder, AsksOneQuestionForAPartialPathname) {
  for (const std::u16string name : {u"b/@foo/foo", u"private/bar", u"nowhere/foo", u"foo/"}) {
    const RecordedPath recorded;
    const Wanted wanted(name);

    static_cast<void>(
        FindFirstFileVisibleFromFolder(*recorded.path, AbsoluteIRI(u"file:///a"), wanted.target, kPolicy));

    EXPECT_THAT(recorded.log->GetCalls(), ElementsAre(IsTheQuestionForAPartialPathname(&wanted.target)));
  }
}

TEST(FindFirstFileVisibleFromFolder, FindsAPartialPathnameOnTheWholePathWhateverTheFolder) {
  const auto path =
      APath().With(Folder("/a").With(WithFoo("private"))).With(WithFoo("/b").With(WithFoo("private"))).Build();

  EXPECT_EQ(FileVisibleFrom(u"file:///b", *path, u"private/foo"), "/a/private/foo.vnx");
}

TEST(FindFirstFileVisibleFromFolder, LetsTheFailureOfAnyQuestionPass) {
  for (const char* const operation : {"path.GetPathEntryFromAbsoluteIRI(policy)", "/a GetPrivateEntry",
                                      "/a/private FindFirst", "path.GetMethodEntriesByName", "/a/@foo FindFirst"}) {
    const RecordedPath recorded;
    recorded.log->FailNext(operation);

    EXPECT_THAT([&] { return FileVisibleFrom(u"file:///a", *recorded.path, u"foo"); },
                testing::ThrowsMessage<InjectedFailure>(testing::StrEq(operation)));
  }
}

TEST(FindFirstFileVisibleFromFolder, LetsTheFailureOfTheLastQuestionPass) {
  const RecordedPath recorded;
  recorded.log->FailNext("path.FindFirstInScope", 2);

  EXPECT_THROW(FileVisibleFrom(u"file:///a", *recorded.path, u"nowhere"), InjectedFailure);
  EXPECT_THROW(FileVisibleFrom(u"file:///a", *recorded.path, u"a/foo"), InjectedFailure);
}

using Handle = foundation::storage::vfs::Folder;

TEST(FindFirstFileVisibleFromFolderHandle, DoesWhatItsLocationWould) {
  const RecordedPath byHandle;
  const RecordedPath byLocation;
  const Wanted wanted(u"foo");
  const Handle folder(AbsoluteIRI(u"file:///a"), VornixStorageSystem::GetStorageSystemReference());

  const auto found = FindFirstFileVisibleFromFolder(*byHandle.path, folder, wanted.target, kPolicy);
  static_cast<void>(FindFirstFileVisibleFromFolder(*byLocation.path, folder.getLocation(), wanted.target, kPolicy));

  EXPECT_EQ(FileOf(found), "/b/@foo/foo.vnx");
  EXPECT_EQ(byHandle.log->GetOperations(), byLocation.log->GetOperations());
  EXPECT_EQ(byHandle.log->GetCalls()[0].location, folder.getLocation());
  EXPECT_THAT(byHandle.log->GetCalls()[2], AskedForTarget(&wanted.target));
}

TEST(FindFirstFileVisibleFromFolderHandle, UsesTheLocationThatTheHandleWasGivenNotTheCanonicalOne) {
  const auto memory = std::make_shared<foundation::storage::vfs::MemoryStorageProvider>();
  const auto mount = VornixStorageSystem::Mount(u"memory", memory);
  memory->AddFolder(u"/real");
  memory->AddLink(u"/link", u"/real");
  const auto path =
      APath().Under(u"memory").With(Folder("/real").With(WithFoo("private"))).With(Folder("/link")).Build();
  const Handle link(AbsoluteIRI(u"memory:///link"), VornixStorageSystem::GetStorageSystemReference());
  ASSERT_EQ(link.getCanonicalLocation().getAbsoluteIRI(), AbsoluteIRI(u"memory:///real"));

  const auto found = FindFirstFileVisibleFromFolder(*path, link, Wanted(u"foo").target, kPolicy);

  EXPECT_EQ(FileOf(found), "none");
}

TEST(FindFirstFileVisibleFromFolderHandle, AsksNoStorage) {
  const auto path = APath().Under(u"nowhere-mounted").With(Folder("/a").With(WithFoo("private"))).Build();
  const Handle folder(AbsoluteIRI(u"nowhere-mounted:///a"), VornixStorageSystem::GetStorageSystemReference());

  EXPECT_EQ(FileOf(FindFirstFileVisibleFromFolder(*path, folder, Wanted(u"foo").target, kPolicy)),
            "/a/private/foo.vnx");
}

}  // namespace
}  // namespace Quorvex::PathManagement::lookup_tests
