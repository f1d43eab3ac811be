// A path that is watched: what people do to its folders is found in it.

#include <gmock/gmock.h>

#include <support/run_together.hpp>
#include <support/without_privileges.hpp>

#include "shown.hpp"
#include "watched_disk.hpp"

namespace Quorvex::PathEnvironment {
namespace {

namespace fs = std::filesystem;

using PathManagement::support::RunTogether;
using PathManagement::support::TemporaryFolder;
using testing::ElementsAre;

void MakeFile(const fs::path& file) { const std::ofstream made(file); }

class AWatchedPath : public testing::Test {
 protected:
  AWatchedPath() { fs::create_directories(root / "a"); }

  static std::string First(const FolderPath& path, const std::u16string& name) {
    const auto found = path.FindFirstInScope(kEveryKind, Wanted{name, {u".x"}}.Target(), kNative);
    return found ? fl::filesystem::to_bytes(found->GetPathEntry()->GetAbsoluteIRI().getName()) : "none";
  }

  TemporaryFolder temporary;
  const fs::path& root = temporary.GetPath();
};

TEST_F(AWatchedPath, FindsAFileAsSoonAsItIsMade) {
  WatchedDisk disk({root / "a"});

  MakeFile(root / "a/new.x");

  EXPECT_TRUE(disk.Await([](const FolderPath& path) { return First(path, u"new") == "a"; }));
}

TEST_F(AWatchedPath, FindsWhatChangedBetweenReadingAndWatching) {
  const auto path = ReadPath({OnDisk(root / "a")});
  MakeFile(root / "a/new.x");
  WatchedPath watched(path, foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference());

  DispatchSessionEvents();

  EXPECT_EQ(First(*watched.Refresh().path, u"new"), "a");
}

TEST_F(AWatchedPath, FindsFilesInFoldersThatAreMadeAndFilledAtOnce) {
  WatchedDisk disk({root / "a"});

  for (int round = 0; round < 50; ++round) {
    const std::string name = "+p" + std::to_string(round);
    fs::create_directories(root / "a" / name / "@c");
    MakeFile(root / "a" / name / "@c" / "first.x");
    static_cast<void>(disk.watched->Refresh());
    MakeFile(root / "a" / name / "@c" / "second.x");
  }

  EXPECT_TRUE(disk.Await([](const FolderPath& path) {
    return path.FindAllInScope(kEveryKind, Wanted{u"first", {u".x"}}.Target(), kNative).size() == 50 &&
           path.FindAllInScope(kEveryKind, Wanted{u"second", {u".x"}}.Target(), kNative).size() == 50;
  }));
}

TEST_F(AWatchedPath, FindsWhatChangesInAFolderUnderAnotherNameOfItsScheme) {
  const auto alias = foundation::storage::vfs::VornixStorageSystem::MountAlias(u"disk", u"file");
  const AbsoluteIRI folder(u"disk" + OnDisk(root / "a").toString().substr(4));
  WatchedPath watched(ReadPath({folder}), foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference());
  EXPECT_EQ(watched.GetWatcher().Find(folder)->state, Watching::Watched);
  DispatchSessionEvents();
  static_cast<void>(watched.Refresh());

  MakeFile(root / "a/new.x");

  const auto end = std::chrono::steady_clock::now() + kLongEnough;
  while (First(*watched.GetPath(), u"new") != "a" && std::chrono::steady_clock::now() < end) {
    DispatchSessionEvents();
    static_cast<void>(watched.Refresh());
  }
  EXPECT_EQ(First(*watched.GetPath(), u"new"), "a");
}

TEST_F(AWatchedPath, KeepsUpWithFoldersThatAreClosedAndOpened) {
  PathManagement::support::WithoutPrivileges([this] {
    fs::create_directories(root / "up/m/+p");
    MakeFile(root / "up/m/+p/f.x");
    WatchedDisk disk({root / "up/m"});

    for (const auto* const closed : {"up", "up/m", "up/m/+p"}) {
      for (const fs::perms mode : {fs::perms::none, fs::perms::owner_exec, fs::perms::owner_read}) {
        SCOPED_TRACE(closed);
        fs::permissions(root / closed, mode);
        EXPECT_TRUE(disk.AwaitFreshness());
        fs::permissions(root / closed, fs::perms::owner_all);
        EXPECT_TRUE(disk.AwaitFreshness());
      }
    }
    EXPECT_EQ(First(*disk.GetPath(), u"p/f"), "+p");
  });
}

TEST_F(AWatchedPath, NoticesWhatIsMovedInAFolderThatMayNotBeListed) {
  PathManagement::support::WithoutPrivileges([this] {
    fs::create_directories(root / "up/deep/m");
    fs::create_directories(root / "up/other/m");
    MakeFile(root / "up/other/m/f.x");
    fs::permissions(root / "up", fs::perms::owner_exec | fs::perms::owner_write);
    {
      WatchedDisk disk({root / "up/deep/m"});
      EXPECT_EQ(disk.StateOf(root / "up/deep/m").reason, WatchingReason::NoPermission);
      fs::rename(root / "up/deep", root / "up/away");
      EXPECT_TRUE(disk.AwaitFreshness());
      fs::rename(root / "up/other", root / "up/deep");
      EXPECT_TRUE(disk.Await([](const FolderPath& path) { return First(path, u"f") == "m"; }));
    }
    fs::permissions(root / "up", fs::perms::owner_all);
  });
}

TEST_F(AWatchedPath, NeverChangesItsListOfFolders) {
  WatchedDisk disk({root / "a", root / "missing"});
  MakeFile(root / "a/f.x");
  fs::rename(root / "a", root / "missing");

  ASSERT_TRUE(disk.Await([](const FolderPath& path) { return First(path, u"f") == "missing"; }));

  EXPECT_EQ(disk.GetPath()->GetMainEntries()->size(), 2U);
  EXPECT_THAT(disk.GetPath()->GetPositions(), ElementsAre(0, 1));
  EXPECT_EQ(disk.GetPath()->GetProblems().size(), 1U);
  EXPECT_EQ(disk.GetPath()->GetProblems()[0].location, OnDisk(root / "a"));
}

TEST_F(AWatchedPath, ComesToRestWhenNothingChangesAnyMore) {
  WatchedDisk disk({root / "a"}, std::chrono::milliseconds::zero());
  fs::create_directories(root / "a/+p/+q");
  ASSERT_TRUE(disk.AwaitFreshness());
  ASSERT_TRUE(disk.AwaitFreshness());
  const auto path = disk.GetPath();
  DispatchSessionEvents();
  static_cast<void>(disk.watched->Refresh());

  EXPECT_EQ(DispatchSessionEvents(), 0U);
  EXPECT_EQ(disk.watched->Refresh().path, path);
}

TEST_F(AWatchedPath, MayBeRefreshedAndAskedFromManyThreads) {
  WatchedDisk disk({root / "a", root / "b"});
  std::atomic<std::size_t> changing = 2;

  RunTogether(4, [&](std::size_t thread) {
    if (thread < 2) {
      for (int round = 0; round < 200; ++round) {
        const fs::path place = root / (thread == 0 ? "a" : "b") / ("+p" + std::to_string(round % 7));
        fs::create_directories(place);
        MakeFile(place / ("f" + std::to_string(round) + ".x"));
        if (round % 5 == 0) fs::remove_all(place);
      }
      --changing;
      return;
    }
    while (changing != 0) {
      DispatchSessionEvents();
      const PathRefresh refresh = disk.watched->Refresh();
      static_cast<void>(First(*refresh.path, u"p1/f1"));
      static_cast<void>(First(*disk.GetPath(), u"p2/f2"));
    }
  });

  EXPECT_TRUE(disk.AwaitFreshness());
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
