// What becomes of a path when the session announces changes.

#include <gmock/gmock.h>

#include <fakes/counting_storage_provider.hpp>
#include <fakes/failing_storage_provider.hpp>
#include <search_path_environment/path_refresher.hpp>

#include "announced.hpp"
#include "memory_storage.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::msg_svc::eventmgr::Event;
using foundation::storage::fakes::CountingStorageProvider;
using foundation::storage::fakes::StorageOperation;
using foundation::storage::vfs::VornixStorageSystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PathRefreshing : public testing::Test {
 protected:
  PathRefreshing() {
    SessionEvents()->dispatch();  // what others have left
    storage.WithFiles({u"/a/f.x", u"/a/+p/@c/m.x", u"/a/+p/p.x", u"/a/+q/q.x", u"/a/private/s.x", u"/b/f.x"});
    storage.WithLink(u"/link", u"/b");
    counting = storage.Through<CountingStorageProvider>();
    path = storage.Path({u"/a", u"/link", u"/missing"});
    refresher = std::make_unique<PathRefresher>(path, VornixStorageSystem::GetStorageSystemReference());
    counting->Reset();
  }

  PathRefresh RefreshAfter(const std::vector<std::u16string>& announced) {
    for (const auto& folder : announced) Announce(InMemory(folder));
    SessionEvents()->dispatch();
    return refresher->Refresh();
  }

  std::size_t ListingsOf(const std::u16string& folder) const {
    return counting->GetCount(StorageOperation::List, InMemory(folder));
  }
  std::size_t Listings() const { return counting->GetCount(StorageOperation::List); }

  static EntryPtr EntryAt(const FolderPath& path, const std::u16string& folder) {
    return path.GetPathEntryFromAbsoluteIRI(InMemory(folder), kNative);
  }
  static std::string First(const FolderPath& path, const std::u16string& name) {
    return Shown(path.FindFirstInScope(kEveryKind, Wanted{name, {u".x"}}.Target(), kNative));
  }

  MemoryStorage storage;
  std::shared_ptr<CountingStorageProvider> counting;
  std::shared_ptr<const FolderPath> path;
  std::unique_ptr<PathRefresher> refresher;
};

TEST_F(PathRefreshing, WithoutAnnouncementsTouchesNothing) {
  storage.WithFiles({u"/a/new.x"});

  const PathRefresh refresh = RefreshAfter({});

  EXPECT_EQ(refresh.path, path);
  EXPECT_THAT(refresh.changed, IsEmpty());
  EXPECT_EQ(refresh.doubted, 0U);
  EXPECT_EQ(counting->GetCount(), 0U);
}

TEST_F(PathRefreshing, FindsWhatIsNewAndNoLongerWhatIsGone) {
  storage.WithFiles({u"/a/new.x"});
  storage.GetProvider().Remove(InMemory(u"/a/f.x"));

  const PathRefresh refresh = RefreshAfter({u"/a"});

  EXPECT_EQ(First(*refresh.path, u"new"), "/a: new.x");
  EXPECT_EQ(First(*refresh.path, u"f"), "/link: f.x");
  EXPECT_EQ(First(*path, u"f"), "/a: f.x") << "the former version";
  EXPECT_EQ(refresher->GetPath(), refresh.path);
}

TEST_F(PathRefreshing, KeepsTheVersionWhenAllIsAsItWas) {
  const PathRefresh refresh = RefreshAfter({u"/a", u"/a/+p", u"/a/+p/@c", u"/link"});

  EXPECT_EQ(refresh.path, path);
  EXPECT_THAT(refresh.changed, IsEmpty());
  EXPECT_EQ(refresh.doubted, 4U);
}

TEST_F(PathRefreshing, ListsAnAnnouncedFolderOnceAndNoOther) {
  static_cast<void>(RefreshAfter({u"/a", u"/a", u"/a/+p"}));

  EXPECT_EQ(ListingsOf(u"/a"), 1U);
  EXPECT_EQ(ListingsOf(u"/a/+p"), 1U);
  EXPECT_EQ(Listings(), 2U);
}

TEST_F(PathRefreshing, ListsNothingAboveAnAnnouncedFolder) {
  storage.WithFiles({u"/a/+p/@c/new.x"});

  const PathRefresh refresh = RefreshAfter({u"/a/+p/@c"});

  EXPECT_EQ(Listings(), 1U);
  EXPECT_EQ(First(*refresh.path, u"p/c/new"), "/a/+p/@c: new.x");
  EXPECT_EQ(First(*refresh.path, u"f"), "/a: f.x");
}

TEST_F(PathRefreshing, MakesNewEntriesUpToTheMainOneAndSharesAllOthers) {
  storage.WithFiles({u"/a/+p/@c/new.x"});

  const PathRefresh refresh = RefreshAfter({u"/a/+p/@c"});

  for (const auto* const folder : {u"/a", u"/a/+p", u"/a/+p/@c"}) {
    EXPECT_NE(EntryAt(*refresh.path, folder), EntryAt(*path, folder)) << Shown(InMemory(folder));
  }
  for (const auto* const folder : {u"/a/+q", u"/a/private", u"/link", u"/missing"}) {
    EXPECT_EQ(EntryAt(*refresh.path, folder), EntryAt(*path, folder)) << Shown(InMemory(folder));
  }
}

TEST_F(PathRefreshing, TellsWhichMainFoldersChangedInPathOrder) {
  storage.WithFiles({u"/a/new.x", u"/b/new.x"});

  const PathRefresh refresh = RefreshAfter({u"/link", u"/a"});

  ASSERT_THAT(refresh.changed, SizeIs(2));
  EXPECT_EQ(refresh.changed[0].before, EntryAt(*path, u"/a"));
  EXPECT_EQ(refresh.changed[0].after, EntryAt(*refresh.path, u"/a"));
  EXPECT_EQ(refresh.changed[1].after, EntryAt(*refresh.path, u"/link"));
}

TEST_F(PathRefreshing, KeepsSubfoldersThatStayUnlessTheyAreAnnounced) {
  storage.WithFiles({u"/a/new.x", u"/a/+p/unannounced.x"});

  const PathRefresh refresh = RefreshAfter({u"/a"});

  EXPECT_EQ(First(*refresh.path, u"new"), "/a: new.x");
  EXPECT_EQ(First(*refresh.path, u"p/unannounced"), "none");
  EXPECT_EQ(First(*RefreshAfter({u"/a/+p"}).path, u"p/unannounced"), "/a/+p: unannounced.x");
}

TEST_F(PathRefreshing, ReadsNewSpecialSubfoldersInDepthAndDropsThoseThatAreGone) {
  storage.WithFiles({u"/a/+new/@d/private/n.x"});
  storage.GetProvider().Remove(InMemory(u"/a/+q/q.x"));
  storage.GetProvider().Remove(InMemory(u"/a/+q"));

  const PathRefresh refresh = RefreshAfter({u"/a"});

  EXPECT_THAT(AllShown(refresh.path->GetMethodEntries()),
              ElementsAre("/a/private", "/a/+new", "/a/+new/@d", "/a/+new/@d/private", "/a/+p", "/a/+p/@c"));
  EXPECT_EQ(ListingsOf(u"/a/+p"), 0U);
  EXPECT_EQ(Listings(), 4U);
}

TEST_F(PathRefreshing, ReadsTheNearestEntryAboveWhatIsNoEntry) {
  storage.WithFiles({u"/a/+p/new.x"});

  EXPECT_EQ(First(*RefreshAfter({u"/a/+p/new.x"}).path, u"p/new"), "/a/+p: new.x");
  EXPECT_EQ(Listings(), 1U);
}

TEST_F(PathRefreshing, ReadsAnEntryThatIsAnnouncedWhereItReallyIs) {
  storage.WithFiles({u"/b/new.x"});

  EXPECT_EQ(First(*RefreshAfter({u"/b"}).path, u"new"), "/link: new.x");
}

TEST_F(PathRefreshing, UnderstandsAliasesOfSchemes) {
  const auto alias = VornixStorageSystem::MountAlias(u"other", u"memory");
  PathRefresher aliased(ReadPath({InMemory(u"/a", u"other")}), VornixStorageSystem::GetStorageSystemReference());
  storage.WithFiles({u"/a/new.x"});
  Announce(InMemory(u"/a"));
  SessionEvents()->dispatch();

  EXPECT_EQ(First(*aliased.Refresh().path, u"new"), "/a: new.x");
}

TEST_F(PathRefreshing, IgnoresWhatConcernsNoEntry) {
  class OtherEvent final : public Event {
    [[nodiscard]] OtherEvent* clone() const override { return new OtherEvent(*this); }
  };
  SessionEvents()->post(boost::make_shared<OtherEvent>(), 0);
  AnnounceText(u"no identifier");
  AnnounceText(u"memory:///x%zz");

  EXPECT_EQ(RefreshAfter({u"/elsewhere", u"/"}).doubted, 0U);
  EXPECT_EQ(counting->GetCount(), 0U);
}

TEST_F(PathRefreshing, ReadsAMissingFolderWhenItHasCome) {
  ASSERT_THAT(path->GetProblems(), SizeIs(1));
  storage.WithFiles({u"/missing/+p/new.x"});

  const PathRefresh refresh = RefreshAfter({u"/missing"});

  EXPECT_EQ(First(*refresh.path, u"p/new"), "/missing/+p: new.x");
  EXPECT_THAT(refresh.path->GetProblems(), IsEmpty());
}

TEST_F(PathRefreshing, MakesAFolderThatHasGoneAnEntryWithoutItems) {
  storage.GetProvider().Rename(InMemory(u"/a"), InMemory(u"/away"));

  const PathRefresh gone = RefreshAfter({u"/a"});

  EXPECT_EQ(First(*gone.path, u"f"), "/link: f.x");
  EXPECT_THAT(*gone.path->GetMainEntries(), SizeIs(3));
  EXPECT_THAT(AllShown(gone.path->GetProblems()),
              ElementsAre("0 /a: there is no such folder", "2 /missing: there is no such folder"));

  storage.GetProvider().Rename(InMemory(u"/away"), InMemory(u"/a"));
  const PathRefresh back = RefreshAfter({u"/a"});

  EXPECT_EQ(First(*back.path, u"p/c/m"), "/a/+p/@c: m.x");
}

TEST_F(PathRefreshing, ReadsInDepthWhatHasBecomeAnotherFolder) {
  storage.WithFiles({u"/c/+p/old.x"});
  storage.WithFiles({u"/d/+p/new.x"});
  storage.WithLink(u"/moving", u"/c");
  PathRefresher moving(storage.Path({u"/moving"}), VornixStorageSystem::GetStorageSystemReference());
  storage.GetProvider().Remove(InMemory(u"/moving"));
  storage.WithLink(u"/moving", u"/d");
  Announce(InMemory(u"/moving"));
  SessionEvents()->dispatch();

  const PathRefresh refresh = moving.Refresh();

  EXPECT_EQ(First(*refresh.path, u"p/new"), "/moving/+p: new.x");
  EXPECT_EQ(First(*refresh.path, u"p/old"), "none");
}

TEST_F(PathRefreshing, ReportsALoopThatAFreshScanWouldReport) {
  storage.WithLink(u"/a/+p/+loop", u"/a");

  for (const std::vector<std::u16string>& announced : {std::vector<std::u16string>{u"/a/+p"}, {u"/a", u"/a/+p"}}) {
    const PathRefresh refresh = RefreshAfter(announced);
    EXPECT_THAT(AllShown(refresh.path->GetProblems()),
                ElementsAre("0 /a/+p/+loop: it leads back to a folder that encloses it",
                            "2 /missing: there is no such folder"));
    EXPECT_TRUE(storage.Entry(u"/a")->HoldsTheSameAs(static_cast<const FolderEntry&>(*EntryAt(*refresh.path, u"/a"))));
  }
}

TEST_F(PathRefreshing, KeepsWhatStorageRefusesAsAProblem) {
  const auto failing = storage.Through<foundation::storage::fakes::FailingStorageProvider>();
  failing->Plan({.operation = StorageOperation::List, .location = InMemory(u"/a/+p")});

  const PathRefresh refresh = RefreshAfter({u"/a/+p"});

  EXPECT_EQ(First(*refresh.path, u"p/p"), "none");
  EXPECT_EQ(First(*refresh.path, u"f"), "/a: f.x");
  EXPECT_THAT(refresh.path->GetProblems(), SizeIs(2));
}

TEST_F(PathRefreshing, GathersNothingOnceItIsGone) {
  refresher.reset();

  Announce(InMemory(u"/a"));

  EXPECT_EQ(SessionEvents()->dispatch(), 1U);
  EXPECT_EQ(counting->GetCount(), 0U);
}

TEST_F(PathRefreshing, ConcernsEachMainFolderThatHoldsTheEntry) {
  const auto twice = storage.Path({u"/a", u"/a/+p"});
  PathRefresher both(twice, VornixStorageSystem::GetStorageSystemReference());
  storage.WithFiles({u"/a/+p/new.x"});
  Announce(InMemory(u"/a/+p"));
  SessionEvents()->dispatch();

  const PathRefresh refresh = both.Refresh();

  EXPECT_THAT(refresh.changed, SizeIs(2));
  EXPECT_EQ(refresh.path->FindAllInScope(kEveryKind, Wanted{u"new", {u".x"}}.Target(), kNative).size(), 2U);
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
