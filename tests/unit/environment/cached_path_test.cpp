// What of a cached path is proven and what is read, and what storage is asked for it.

#include <gmock/gmock.h>

#include <fakes/counting_storage_provider.hpp>
#include <fakes/failing_storage_provider.hpp>

#include "toolbox_caches.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::fakes::CountingStorageProvider;
using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::fakes::StorageOperation;
using testing::ElementsAre;

class CachedPathTest : public testing::Test {
 protected:
  using Paths = std::vector<std::u16string>;

  static AbsoluteIRI File() { return InMemory(u"/cache/toolbox"); }

  [[nodiscard]] MemoryStorage& Memory() { return memory_; }
  [[nodiscard]] foundation::storage::vfs::MemoryStorageProvider& Provider() { return memory_.GetProvider(); }

  // Writes the cache of the path over `folders`, and gives that path.
  std::shared_ptr<const FolderPath> Write(const Paths& folders) {
    folders_ = InMemory(folders);
    return WriteCache(File(), InMemory(u"/"), folders_);
  }
  [[nodiscard]] std::shared_ptr<const CachedPath> Path(CacheTrust trust = CacheTrust::Proven) const {
    return PathFrom(OpenCache(File(), trust), folders_);
  }
  [[nodiscard]] const std::vector<AbsoluteIRI>& Folders() const { return folders_; }

 private:
  MemoryStorage memory_;
  std::vector<AbsoluteIRI> folders_;
};

TEST_F(CachedPathTest, ListsNoFolderThatIsProven) {
  Memory().WithFiles({u"/m/f.x", u"/m/private/g.x", u"/n/@c/c.x"});
  Write({u"/m", u"/missing", u"/n"});
  const auto counting = Memory().Through<CountingStorageProvider>();

  const auto path = Path();
  EXPECT_EQ(FileFor(*path, u"g.x"), "/m/private: g.x");
  EXPECT_THAT(Walk(*path), ElementsAre("/m", "/m/private", "/missing", "/n", "/n/@c"));
  EXPECT_EQ(path->CountRead(), 0U);
  EXPECT_TRUE(path->IsWhole());
  EXPECT_EQ(counting->GetCount(StorageOperation::List), 0U);
}

TEST_F(CachedPathTest, AsksStorageNothingWhenTheCacheIsTrustedBlindly) {
  Memory().WithFiles({u"/m/f.x", u"/n/@c/c.x"});
  Write({u"/m", u"/missing", u"/n"});
  const auto counting = Memory().Through<CountingStorageProvider>();

  const auto path = Path(CacheTrust::Blind);
  EXPECT_EQ(FileFor(*path, u"f.x"), "/m: f.x");
  EXPECT_THAT(Walk(*path), ElementsAre("/m", "/missing", "/n", "/n/@c"));
  EXPECT_EQ(counting->GetCount(), counting->GetCount(StorageOperation::Map));
}

TEST_F(CachedPathTest, ReadsTheFolderThatChangedAndNoOther) {
  Memory().WithFiles({u"/m/f.x", u"/n/g.x", u"/o/h.x"});
  Write({u"/m", u"/n", u"/o"});
  Provider().Remove(InMemory(u"/n/g.x"));
  Memory().WithFiles({u"/n/h.x", u"/n/private/f.x"});
  const auto counting = Memory().Through<CountingStorageProvider>();

  const auto path = Path();
  EXPECT_EQ(path->CountRead(), 1U);
  EXPECT_EQ(FileFor(*path, u"f.x"), "/m: f.x");
  EXPECT_EQ(FileFor(*path, u"g.x"), "none");
  EXPECT_EQ(FileFor(*path, u"h.x"), "/n: h.x");
  EXPECT_THAT(Walk(*path), ElementsAre("/m", "/n", "/n/private", "/o"));
  EXPECT_EQ(counting->GetCount(StorageOperation::List), 2U);  // of /n and what is in it
}

TEST_F(CachedPathTest, ReadsAFolderWhenOneBelowItChanged) {
  Memory().WithFiles({u"/m/+p/+q/f.x"});
  Write({u"/m"});
  Memory().WithFiles({u"/m/+p/+q/g.x"});
  const auto path = Path();
  EXPECT_EQ(path->CountRead(), 1U);
  EXPECT_EQ(FileFor(*path, u"g.x"), "/m/+p/+q: g.x");
}

TEST_F(CachedPathTest, IsNotMadeWhenAFolderIsAnotherOne) {
  Memory().WithFolders({u"/m", u"/n"});
  Write({u"/m", u"/n"});
  Provider().Remove(InMemory(u"/n"));
  Memory().WithLink(u"/n", u"/m");  // and so the list repeats itself
  EXPECT_EQ(Path(), nullptr);
}

TEST_F(CachedPathTest, IsNotMadeWhenAMissingFolderCame) {
  Memory().WithFolders({u"/m"});
  Write({u"/m", u"/n"});
  EXPECT_NE(Path(), nullptr);
  Memory().WithFolders({u"/n"});
  EXPECT_EQ(Path(), nullptr);
}

TEST_F(CachedPathTest, IsNotMadeWhenALinkLeadsAMissingFolderElsewhere) {
  Memory().WithFolders({u"/a", u"/b"}).WithLink(u"/link", u"/a");
  Write({u"/link/missing", u"/b/missing"});
  EXPECT_NE(Path(), nullptr);
  Provider().Remove(InMemory(u"/link"));
  Memory().WithLink(u"/link", u"/b");
  EXPECT_EQ(Path(), nullptr);
}

TEST_F(CachedPathTest, FollowsALinkedFileThatWent) {
  Memory().WithFiles({u"/else/f.x"}).WithLink(u"/m/f.x", u"/else/f.x");
  Write({u"/m"});
  EXPECT_EQ(FileFor(*Path(), u"f.x"), "/m: f.x");
  Provider().Remove(InMemory(u"/else/f.x"));
  EXPECT_EQ(FileFor(*Path(), u"f.x"), "none");
}

TEST_F(CachedPathTest, FollowsALinkToASpecialFolder) {
  Memory().WithFiles({u"/else/f.x"}).WithLink(u"/m/private", u"/else");
  Write({u"/m"});
  EXPECT_EQ(Path()->CountRead(), 0U);
  Memory().WithFiles({u"/else/g.x"});
  const auto path = Path();
  EXPECT_EQ(path->CountRead(), 1U);
  EXPECT_EQ(FileFor(*path, u"g.x"), "/m/private: g.x");
}

// Neither the folder nor the link is touched when a folder on the way is moved and a link put into its place.
TEST_F(CachedPathTest, KnowsWhereALinkedFolderReallyIsNow) {
  Memory().WithFiles({u"/a/b/f.x"}).WithLink(u"/m/private", u"/a/b");
  Write({u"/m"});
  Provider().Rename(InMemory(u"/a"), InMemory(u"/c"));
  Memory().WithLink(u"/a", u"/c");

  const auto found = Path()->FindFirstInScope(kEveryKind, Exactly(u"f.x").Target(), kCaseSensitive);
  ASSERT_TRUE(found);
  EXPECT_EQ(Shown(static_cast<const FolderEntry&>(*found->GetPathEntry()).GetCanonicalLocation()), "/c/b");
}

TEST_F(CachedPathTest, ReadsAFolderThatWasInTroubleAgainAndAgain) {
  Memory().WithFiles({u"/m/f.x", u"/n/g.x"});
  const auto failing = Memory().Through<FailingStorageProvider>();
  failing->Plan({.operation = StorageOperation::List,
                 .location = InMemory(u"/m"),
                 .error = std::make_error_code(std::errc::permission_denied)});
  Write({u"/m", u"/n"});
  failing->Clear();

  for (int i = 0; i < 2; ++i) {
    const auto path = Path();
    EXPECT_EQ(path->CountRead(), 1U);
    EXPECT_EQ(FileFor(*path, u"f.x"), "/m: f.x");
    EXPECT_THAT(path->GetProblems(), testing::IsEmpty());
  }
  EXPECT_THAT(AllShown(Path(CacheTrust::Blind)->GetProblems()), testing::SizeIs(1));
}

TEST_F(CachedPathTest, ReadsAFolderAboutWhichStorageDoesNotAnswer) {
  Memory().WithFiles({u"/m/f.x"});
  Write({u"/m"});
  const auto failing = Memory().Through<FailingStorageProvider>();
  failing->Plan({.operation = StorageOperation::Stat, .location = InMemory(u"/m")});
  const auto path = Path();
  EXPECT_EQ(path->CountRead(), 1U);
  EXPECT_EQ(FileFor(*path, u"f.x"), "/m: f.x");
}

TEST_F(CachedPathTest, TellsOfFoldersThatAreListedAgain) {
  Memory().WithFolders({u"/m", u"/n"}).WithLink(u"/link", u"/m");
  const auto read = Write({u"/m", u"/m", u"/n", u"/link"});
  const auto path = Path();
  EXPECT_EQ(path->CountRead(), 0U);
  EXPECT_THAT(AllShown(path->GetProblems()), testing::SizeIs(2));
  EXPECT_EQ(AllShown(path->GetProblems()), AllShown(read->GetProblems()));
  EXPECT_EQ(AllShown(path->GetWhole()->GetProblems()), AllShown(read->GetProblems()));
  EXPECT_EQ(path->GetWhole()->GetPositions(), read->GetPositions());
}

TEST_F(CachedPathTest, IsNotMadeWhenALaterSpellingMeansAnotherFolder) {
  Memory().WithFolders({u"/m", u"/n"}).WithLink(u"/link", u"/m");
  Write({u"/m", u"/link"});
  EXPECT_NE(Path(), nullptr);
  Provider().Remove(InMemory(u"/link"));
  EXPECT_EQ(Path(), nullptr);
  Memory().WithLink(u"/link", u"/n");
  EXPECT_EQ(Path(), nullptr);
}

// Which of them are one is told by where links lead, and no single question tells that.
TEST_F(CachedPathTest, IsNotMadeWhenMissingFoldersWereOne) {
  Memory().WithFolders({u"/m"}).WithLink(u"/link", u"/m");
  Write({u"/m/missing", u"/link/missing"});
  EXPECT_EQ(OpenCache(File()).CountFolders(), 1U);
  EXPECT_EQ(Path(), nullptr);
  EXPECT_NE(Path(CacheTrust::Blind), nullptr);
}

TEST_F(CachedPathTest, AsksAboutNoFolderBehindTheOneThatDecides) {
  Memory().WithFiles({u"/m/a.x", u"/n/b.x", u"/o/c.x", u"/p/b.x"});
  Write({u"/m", u"/n", u"/o", u"/p"});
  const auto counting = Memory().Through<CountingStorageProvider>();

  const auto cache = OpenCache(File());
  const Wanted wanted = Exactly(u"b.x");
  const std::size_t count = CachedPath::CountDeciding(cache, wanted.Target());
  EXPECT_EQ(count, 2U);
  counting->Reset();
  const auto path = PathFrom(cache, Folders(), count);
  EXPECT_FALSE(path->IsWhole());
  EXPECT_EQ(FileFor(*path, u"b.x"), "/n: b.x");
  EXPECT_EQ(counting->GetCount(StorageOperation::Stat, InMemory(u"/m")), 1U);
  EXPECT_EQ(counting->GetCount(StorageOperation::Stat, InMemory(u"/n")), 1U);
  EXPECT_EQ(counting->GetCount(StorageOperation::CanonicalLocation, InMemory(u"/n")), 1U);
  EXPECT_EQ(counting->GetCount(), 3U);
  EXPECT_THAT(Walk(*path), ElementsAre("/m", "/n"));
}

TEST_F(CachedPathTest, FindsAFileThatCameIntoAFolderBeforeTheOneThatDecides) {
  Memory().WithFiles({u"/m/a.x", u"/n/b.x", u"/o/c.x"});
  Write({u"/m", u"/n", u"/o"});
  Memory().WithFiles({u"/m/b.x"});
  EXPECT_EQ(FileFor(*PathFrom(OpenCache(File()), Folders(), 2), u"b.x"), "/m: b.x");
}

TEST_F(CachedPathTest, NeedsEveryFolderForWhatNoMainFolderHolds) {
  Memory().WithFiles({u"/m/a.x", u"/n/private/b.x", u"/n/@b/b.x", u"/o/c.x"});
  Write({u"/m", u"/n", u"/o"});
  const auto cache = OpenCache(File());
  EXPECT_EQ(CachedPath::CountDeciding(cache, Exactly(u"b.x").Target()), 3U);
  EXPECT_EQ(CachedPath::CountDeciding(cache, Exactly(u"none").Target()), 3U);
  EXPECT_EQ(CachedPath::CountDeciding(cache, Exactly(u"n/a.x").Target()), 3U);
  EXPECT_EQ(CachedPath::CountDeciding(cache, Exactly(u"a.x").Target()), 1U);
}

TEST_F(CachedPathTest, ReadsThePathAnewWhenTheIndexIsDamaged) {
  Memory().WithFiles({u"/m/f.x", u"/n/g.x"});
  Write({u"/m", u"/n"});
  const std::string bytes = ReadWholeFile(Provider(), File()).value();
  const auto buckets = HeaderOf(bytes).sections.at(static_cast<std::size_t>(cache::Section::Buckets));
  // The first bucket begins where there is no posting.
  Provider().AddFile(u"/cache/toolbox", Resealed(bytes, [&buckets](std::string& file) {
                       file.replace(buckets.offset, 4, "\xFF\xFF\xFF\x7F");
                     }));
  const auto path = Path();
  EXPECT_EQ(FileFor(*path, u"f.x"), "/m: f.x");
  EXPECT_EQ(FileFor(*path, u"g.x"), "/n: g.x");
  EXPECT_EQ(FileFor(*path, u"h.x"), "none");
  EXPECT_THAT(Walk(*path), ElementsAre("/m", "/n"));
}

TEST_F(CachedPathTest, KeepsTheEntriesThatWereHandedOutWhenDamageShows) {
  Memory().WithFiles({u"/m/f.x", u"/n/g.x"});
  Write({u"/m", u"/n"});
  const std::string bytes = ReadWholeFile(Provider(), File()).value();
  Provider().AddFile(u"/cache/toolbox", Resealed(bytes, [&](std::string& file) {
                       const auto entries =
                           HeaderOf(bytes).sections.at(static_cast<std::size_t>(cache::Section::Entries));
                       cache::EntryRow row{};
                       std::memcpy(&row, file.data() + entries.offset + sizeof(row), sizeof(row));
                       row.nameCount += 1;  // which shows when the entry comes to life
                       std::memcpy(file.data() + entries.offset + sizeof(row), &row, sizeof(row));
                     }));
  std::size_t times = 0;
  const auto path = CachedPath::Make(OpenCache(File()), 2, [&](const PathManagement::IPathEntryFactory& entries) {
    ++times;
    return FolderPathFactory().CreateFolderPath(Folders(), entries);
  });
  const auto before = path->FindFirstInScope(kEveryKind, Exactly(u"f.x").Target(), kCaseSensitive);
  EXPECT_EQ(times, 0U);
  EXPECT_EQ(FileFor(*path, u"g.x"), "/n: g.x");
  EXPECT_EQ(times, 1U);
  const auto after = path->FindFirstInScope(kEveryKind, Exactly(u"f.x").Target(), kCaseSensitive);
  EXPECT_EQ(before->GetPathEntry(), after->GetPathEntry());
  EXPECT_TRUE(path->IsEntryOnPath(*before->GetPathEntry()));
  EXPECT_EQ(times, 1U);
}

TEST_F(CachedPathTest, IsOfProofsThatWereRenewedWhenItsFoldersWereReadAgain) {
  Memory().WithFiles({u"/m/f.x", u"/m/private/g.x"});
  const FolderEntryFactory entries(Session());
  const auto list = InMemory(Paths{u"/m"});
  const auto first = FolderPathFactory().CreateFolderPath(DistinctFolders(list, Session()), entries);
  for (const auto* const file : {u"/m/h.x", u"/m/private/h.x"}) {
    Memory().WithFiles({file});
    Provider().Remove(InMemory(file));
  }
  const auto second = FolderPathFactory().CreateFolderPath(DistinctFolders(list, Session()), entries);
  ASSERT_EQ(*first->GetMainEntries(), *second->GetMainEntries());
  WriteToolboxCacheFile(File(), InMemory(u"/"), entries);

  const auto path = PathFrom(OpenCache(File()), list);
  EXPECT_EQ(path->CountRead(), 0U);
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
