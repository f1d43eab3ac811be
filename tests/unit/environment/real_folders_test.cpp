#include <gmock/gmock.h>

#include <string>

#include "disk_folder.hpp"
#include "memory_storage.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::vfs::CanonicalAbsoluteIRI;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST(RealFolders, HoldFilesAndSpecialSubfolders) {
  const DiskFolder disk;
  disk.AddFile("b.x");
  disk.AddFile("a.x");
  disk.AddFile(".hidden");
  disk.AddFolder("plain");
  disk.AddFolder("+p");
  disk.AddFolder("+p/@c");
  disk.AddFile("+p/@c/m.x");
  disk.AddFolder("private");

  const auto path = ReadPath({disk.LocationOf()});
  const auto entry = path->GetMainEntries()->at(0);

  EXPECT_THAT(AllShown(*entry->GetItems()), ElementsAre(".hidden", "a.x", "b.x"));
  EXPECT_THAT(Walk(*path), ElementsAre(disk.PathOf(), disk.PathOf("private"), disk.PathOf("+p"), disk.PathOf("+p/@c")));
  EXPECT_EQ(Shown(path->FindFirstInScope(kEveryKind, Wanted{u"m", {u".x"}}.Target(), kNative)),
            disk.PathOf("+p/@c") + ": m.x");
  EXPECT_THAT(AllShown(path->GetProblems()), IsEmpty());
}

TEST(RealFolders, LeaveOutWhatIsNeitherFileNorFolder) {
  const DiskFolder disk;
  disk.AddFile("file");
  disk.AddFifo("fifo");
  disk.AddSocket("socket");
  disk.AddLink("dangling", "nothing");
  disk.AddLink("device", "/dev/null");
  disk.AddLink("to-fifo", "fifo");
  disk.AddLink("itself", "itself");
  disk.AddFifo("+fifo");

  const auto path = ReadPath({disk.LocationOf()});

  EXPECT_THAT(AllShown(*path->GetMainEntries()->at(0)->GetItems()), ElementsAre("file"));
  EXPECT_THAT(path->GetMethodEntries(), IsEmpty());
  EXPECT_THAT(AllShown(path->GetProblems()), IsEmpty());
}

TEST(RealFolders, FollowLinksToFilesAndFolders) {
  const DiskFolder disk;
  disk.AddFolder("elsewhere");
  disk.AddFile("elsewhere/f.x");
  disk.AddFolder("m");
  disk.AddLink("m/g.y", "../elsewhere/f.x");
  disk.AddLink("m/+p", disk.PathOf("elsewhere"));

  const auto path = ReadPath({disk.LocationOf("m")});

  EXPECT_THAT(AllShown(*path->GetMainEntries()->at(0)->GetItems()), ElementsAre("g.y"));
  ASSERT_THAT(AllShown(path->GetMethodEntries()), ElementsAre(disk.PathOf("m/+p")));
  EXPECT_THAT(AllShown(*path->GetMethodEntries()[0]->GetItems()), ElementsAre("f.x"));
  EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(disk.LocationOf("elsewhere"), u"")),
            path->GetMethodEntries()[0]);
}

TEST(RealFolders, TellLetterCasesApart) {
  const DiskFolder disk;
  disk.AddFile("Foo.x");
  disk.AddFile("foo.x");
  const auto path = ReadPath({disk.LocationOf()});
  const auto first = [&path](const std::u16string& name, FilenameMatchingPolicy policy) {
    const auto found = path->FindFirstInScope(kEveryKind, Exactly(name).Target(), policy);
    return found ? Shown(found->GetPathItem()) : "none";
  };

  EXPECT_EQ(first(u"foo.x", kNative), "foo.x");
  EXPECT_EQ(first(u"FOO.x", kNative), "none");
  EXPECT_EQ(first(u"FOO.x", kCaseInsensitive), "Foo.x");
}

TEST(RealFolders, EndWhereTwoLinksLeadBackToTheirFolder) {
  const DiskFolder disk;
  disk.AddLink("+a", ".");
  disk.AddLink("+b", disk.PathOf());

  const auto path = ReadPath({disk.LocationOf()});

  EXPECT_THAT(Walk(*path), ElementsAre(disk.PathOf()));
  EXPECT_THAT(AllShown(path->GetProblems()),
              ElementsAre("0 " + disk.PathOf("+a") + ": it leads back to a folder that encloses it",
                          "0 " + disk.PathOf("+b") + ": it leads back to a folder that encloses it"));
}

TEST(RealFolders, ReportAFolderThatIsALinkToItself) {
  const DiskFolder disk;
  disk.AddLink("loop", "loop");
  disk.AddFolder("m");
  disk.AddFile("m/f");

  const auto path = ReadPath({disk.LocationOf("loop"), disk.LocationOf("m")});

  ASSERT_THAT(path->GetProblems(), SizeIs(1));
  EXPECT_EQ(path->GetProblems()[0].kind, ProblemKind::Unreadable);
  EXPECT_EQ(path->GetProblems()[0].error, std::errc::too_many_symbolic_link_levels);
  EXPECT_EQ(Shown(path->FindFirstInScope(kEveryKind, Exactly(u"f").Target(), kNative)), disk.PathOf("m") + ": f");
}

TEST(RealFolders, AreReadAsDeepAsAPathTextReachesAndNoDeeper) {
  const DiskFolder disk;
  const std::string longName = "+" + std::string(254, 'd');
  disk.AddNestedFolders(longName, 40);
  disk.AddFile("f");

  const auto path = ReadPath({disk.LocationOf()});

  ASSERT_THAT(path->GetProblems(), SizeIs(1));
  EXPECT_EQ(path->GetProblems()[0].kind, ProblemKind::Unreadable);
  EXPECT_EQ(path->GetProblems()[0].error, std::errc::filename_too_long);
  EXPECT_EQ(path->GetProblems()[0].location.getName().substr(0, 2), u"+d");
  EXPECT_EQ(Shown(path->FindFirstInScope(kEveryKind, Exactly(u"f").Target(), kNative)), disk.PathOf() + ": f");
  EXPECT_THAT(path->GetMethodEntries(), SizeIs(testing::AllOf(testing::Ge(14U), testing::Lt(40U))));
}

TEST(RealFolders, ReportWhatIsMissingOrNoFolder) {
  const DiskFolder disk;
  disk.AddFile("file");
  disk.AddLink("dangling", "nothing");

  const auto path = ReadPath({disk.LocationOf("file"), disk.LocationOf("missing"), disk.LocationOf("file/below"),
                              disk.LocationOf("dangling")});

  EXPECT_THAT(AllShown(path->GetProblems()), ElementsAre("0 " + disk.PathOf("file") + ": it is not a folder",
                                                         "1 " + disk.PathOf("missing") + ": there is no such folder",
                                                         "2 " + disk.PathOf("file/below") + ": it is not a folder",
                                                         "3 " + disk.PathOf("dangling") + ": there is no such folder"));
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
