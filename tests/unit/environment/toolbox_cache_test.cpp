// What a cache holds, what of it is touched, and by which list it is recognised.

#include <gmock/gmock.h>

#include <chrono>
#include <fakes/counting_storage_provider.hpp>
#include <fakes/failing_storage_provider.hpp>

#include "toolbox_caches.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::fakes::CountingStorageProvider;
using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::fakes::StorageOperation;
using testing::ElementsAre;
using testing::IsEmpty;

class ToolboxCacheTest : public testing::Test {
 protected:
  using Paths = std::vector<std::u16string>;

  static AbsoluteIRI File() { return InMemory(u"/cache/toolbox"); }

  [[nodiscard]] MemoryStorage& Memory() { return memory_; }

  [[nodiscard]] std::string Bytes() const { return ReadWholeFile(memory_.GetProvider(), File()).value(); }
  void SetBytes(const std::string& bytes) { memory_.GetProvider().AddFile(u"/cache/toolbox", bytes); }

  // Many folders with many files each, so that the cache has many pages.
  Paths MakeLargeTree() {
    Paths folders;
    for (char16_t folder = u'a'; folder <= u'z'; ++folder) {
      folders.push_back(std::u16string(u"/t/") + folder);
      for (char16_t file = u'a'; file <= u'z'; ++file) {
        const std::u16string name = std::u16string(60, folder) + std::u16string(60, file);
        memory_.WithFiles({folders.back() + u"/" + name + u".x", folders.back() + u"/private/" + name + u".y"});
      }
    }
    return folders;
  }

 private:
  MemoryStorage memory_;
};

Texts LocationsOf(const ToolboxCache& cache) {
  Texts locations;
  for (const auto& folder : cache.ExamineFolders()) locations.push_back(Shown(folder.location));
  return locations;
}

bool IsRefused(const std::function<void()>& ask) {
  try {
    ask();
    return false;
  } catch (const ToolboxCacheError&) {
    return true;
  }
}

TEST_F(ToolboxCacheTest, TellsWhatItHolds) {
  Memory().WithFiles({u"/t/m/f.x", u"/t/m/g.x", u"/t/m/@c/c.x", u"/t/n/f.x"});
  const auto before = std::chrono::system_clock::now();
  WriteCache(File(), InMemory(u"/t"), InMemory(Paths{u"/t/m", u"/t/n"}));
  const auto after = std::chrono::system_clock::now();

  const auto cache = OpenCache(File());
  EXPECT_EQ(cache.CountFolders(), 2U);
  EXPECT_EQ(cache.CountEntries(), 3U);
  EXPECT_EQ(cache.CountNames(), 5U);  // four files and a class folder
  EXPECT_EQ(cache.GetRoot(), InMemory(u"/t"));
  EXPECT_EQ(cache.GetSize(), Bytes().size());
  EXPECT_EQ(cache.GetTrust(), CacheTrust::Proven);
  EXPECT_LE(before, cache.GetTimeOfWriting());
  EXPECT_GE(after, cache.GetTimeOfWriting());
}

TEST_F(ToolboxCacheTest, OpensWithoutLookingAtTheRecords) {
  const Paths folders = MakeLargeTree();
  WriteCache(File(), InMemory(u"/t"), InMemory(folders));
  const std::string bytes = Bytes();
  std::string damaged = bytes;
  for (std::size_t page = 2; page <= LastPageOf(bytes); ++page) damaged = WithDamageIn(damaged, page);
  SetBytes(damaged);

  const auto cache = OpenCache(File());
  EXPECT_EQ(cache.CountFolders(), folders.size());
  EXPECT_TRUE(IsRefused([&] { static_cast<void>(cache.GetMainEntries()); }));
}

TEST_F(ToolboxCacheTest, TouchesAFewPagesForALookup) {
  const auto folders = InMemory(MakeLargeTree());
  WriteCache(File(), InMemory(u"/t"), folders);
  const std::string bytes = Bytes();
  const std::u16string name = std::u16string(60, u'q') + std::u16string(60, u'k');

  // A page is touched when damage to it is noticed.
  std::size_t touched = 0;
  for (std::size_t page = 1; page <= LastPageOf(bytes); ++page) {
    SetBytes(WithDamageIn(bytes, page));
    const bool isRefused = IsRefused([&] {
      const auto path = PathFrom(OpenCache(File(), CacheTrust::Blind), folders);
      EXPECT_EQ(FileFor(*path, name + u".x"), "/t/q: " + std::string(60, 'q') + std::string(60, 'k') + ".x");
    });
    if (isRefused) ++touched;
  }
  EXPECT_GT(LastPageOf(bytes), 40U);
  EXPECT_GE(touched, 3U);   // the index, the record and the names
  EXPECT_LE(touched, 12U);  // each of which may straddle a page's end
}

TEST_F(ToolboxCacheTest, MakesTheEntriesThatAreAskedForAndEachOnce) {
  Memory().WithFiles({u"/m/f.x", u"/n/g.x", u"/n/private/h.x", u"/o/i.x"});
  const auto folders = InMemory(Paths{u"/m", u"/n", u"/o"});
  WriteCache(File(), InMemory(u"/"), folders);
  const auto counting = Memory().Through<CountingStorageProvider>();
  const auto path = PathFrom(OpenCache(File()), folders);
  counting->Reset();

  // An entry that comes to life asks where its folder really is.
  const auto first = path->FindFirstInScope(kEveryKind, Exactly(u"g.x").Target(), kCaseSensitive);
  EXPECT_EQ(counting->GetCount(StorageOperation::CanonicalLocation, folders[1]), 1U);
  const auto second = path->FindFirstInScope(kEveryKind, Exactly(u"g.x").Target(), kCaseSensitive);
  EXPECT_EQ(FileFor(*path, u"h.x"), "/n/private: h.x");
  EXPECT_EQ(first->GetPathEntry(), second->GetPathEntry());
  EXPECT_EQ(counting->GetCount(), 1U);

  EXPECT_EQ(path->GetMainEntries()->at(1), first->GetPathEntry());
  EXPECT_EQ(path->GetWhole()->GetMainEntries()->at(1), first->GetPathEntry());
  EXPECT_EQ(counting->GetCount(StorageOperation::CanonicalLocation, folders[1]), 1U);
  EXPECT_EQ(counting->GetCount(), folders.size());
}

TEST_F(ToolboxCacheTest, IsRecognisedByTheBytesOfItsList) {
  WriteCache(File(), InMemory(u"/"), InMemory(Paths{u"/m", u"/n"}));
  const auto cache = OpenCache(File());
  EXPECT_TRUE(cache.HoldsListFrom("the list"));
  EXPECT_FALSE(cache.HoldsListFrom("the lisT"));
  EXPECT_FALSE(cache.HoldsListFrom("the list "));
  EXPECT_FALSE(cache.HoldsListFrom(""));
}

TEST_F(ToolboxCacheTest, IsNotRecognisedByAnEmptyOrigin) {
  const FolderEntryFactory entries(Session());
  const auto path = FolderPathFactory().CreateFolderPath(DistinctFolders(InMemory(Paths{u"/m"})), entries);
  WriteToolboxCacheFile(File(), InMemory(u"/"), entries);
  const auto cache = OpenCache(File());
  EXPECT_FALSE(cache.HoldsListFrom(""));
  EXPECT_TRUE(cache.HoldsList(InMemory(Paths{u"/m"})));
}

TEST_F(ToolboxCacheTest, IsRecognisedByItsList) {
  Memory().WithFolders({u"/m", u"/n"}).WithLink(u"/link", u"/m");
  const auto folders = InMemory(Paths{u"/m", u"/n", u"/m", u"/link"});
  WriteCache(File(), InMemory(u"/"), folders);
  const auto cache = OpenCache(File());
  EXPECT_EQ(cache.CountFolders(), 2U);
  EXPECT_TRUE(cache.HoldsList(folders));
  EXPECT_FALSE(cache.HoldsList(InMemory(Paths{u"/m", u"/n"})));
  EXPECT_FALSE(cache.HoldsList(InMemory(Paths{u"/n", u"/m", u"/m", u"/link"})));
  EXPECT_FALSE(cache.HoldsList(InMemory(Paths{u"/m", u"/n", u"/link", u"/m"})));
  EXPECT_FALSE(cache.HoldsList({}));
}

TEST_F(ToolboxCacheTest, HoldsAPathWithoutFolders) {
  WriteCache(File(), InMemory(u"/"), {});
  const auto cache = OpenCache(File());
  cache.Check();
  EXPECT_TRUE(cache.HoldsList({}));
  const auto path = PathFrom(cache, {});
  ASSERT_NE(path, nullptr);
  EXPECT_EQ(FileFor(*path, u"f.x"), "none");
  EXPECT_THAT(*path->GetMainEntries(), IsEmpty());
}

TEST_F(ToolboxCacheTest, LendsItsRecordsToAnotherList) {
  Memory().WithFiles({u"/m/f.x", u"/n/g.x", u"/o/f.x"});
  WriteCache(File(), InMemory(u"/"), InMemory(Paths{u"/m", u"/n"}));
  const auto counting = Memory().Through<CountingStorageProvider>();

  const auto cache = OpenCache(File());
  const auto path =
      FolderPathFactory().CreateFolderPath(InMemory(Paths{u"/o", u"/n", u"/m"}), FolderEntryFactory(Session(), cache));
  EXPECT_EQ(counting->GetCount(StorageOperation::List), 1U);
  EXPECT_EQ(counting->GetCount(StorageOperation::List, InMemory(u"/o")), 1U);
  EXPECT_EQ(FileFor(*path, u"f.x"), "/o: f.x");
  EXPECT_EQ(FileFor(*path, u"g.x"), "/n: g.x");
  EXPECT_EQ(path->GetMainEntries()->at(2), cache.GetMainEntries().at(0));
}

TEST_F(ToolboxCacheTest, RefusesAFolderItDoesNotHoldWhenItIsTrustedBlindly) {
  WriteCache(File(), InMemory(u"/"), InMemory(Paths{u"/m"}));
  const FolderEntryFactory entries(Session(), OpenCache(File(), CacheTrust::Blind));
  EXPECT_EQ(Shown(entries.CreateMainEntry(InMemory(u"/m"))), "/m");
  try {
    static_cast<void>(entries.CreateMainEntry(InMemory(u"/n")));
    FAIL() << "a folder came from nowhere";
  } catch (const ToolboxCacheError& error) {
    EXPECT_EQ(error.GetRefusal(), CacheRefusal::OtherFolders);
    EXPECT_STREQ(error.what(), "it does not hold the folder \"memory:///n\"");
  }
}

TEST_F(ToolboxCacheTest, LeavesOutFoldersThatAreNotBelowTheRoot) {
  Memory().WithFolders({u"/t/m", u"/n", u"/tt"});
  const auto folders = InMemory(Paths{u"/n", u"/t/m", u"/tt"});
  WriteCache(File(), InMemory(u"/t"), folders);
  const auto cache = OpenCache(File());
  EXPECT_THAT(LocationsOf(cache), ElementsAre("/t/m"));
  EXPECT_FALSE(cache.HoldsListFrom("the list"));
  EXPECT_FALSE(cache.HoldsList(folders));
  EXPECT_FALSE(cache.HoldsList(InMemory(Paths{u"/t/m"})));
  EXPECT_EQ(PathFrom(cache, folders), nullptr);
}

TEST_F(ToolboxCacheTest, HoldsEveryFolderBelowTheRootOfAll) {
  Memory().WithFiles({u"/f.x", u"/m/n/g.x"});
  const auto folders = InMemory(Paths{u"/m/n", u"/"});
  WriteCache(File(), InMemory(u"/"), folders);
  const auto cache = OpenCache(File());
  EXPECT_THAT(LocationsOf(cache), ElementsAre("/m/n", "/"));
  EXPECT_EQ(FileFor(*PathFrom(cache, folders), u"f.x"), "/: f.x");
  EXPECT_EQ(FileFor(*PathFrom(cache, folders), u"g.x"), "/m/n: g.x");
}

TEST_F(ToolboxCacheTest, HoldsAFolderThatIsItsRoot) {
  Memory().WithFiles({u"/m/f.x"});
  const auto folders = InMemory(Paths{u"/m"});
  WriteCache(File(), InMemory(u"/m"), folders);
  const auto cache = OpenCache(File());
  EXPECT_TRUE(cache.HoldsList(folders));
  EXPECT_THAT(LocationsOf(cache), ElementsAre("/m"));
  EXPECT_EQ(FileFor(*PathFrom(cache, folders), u"f.x"), "/m: f.x");
}

TEST_F(ToolboxCacheTest, HoldsTheEntriesOfAFactoryThatMadeNoPathByLocation) {
  Memory().WithFolders({u"/m", u"/n"});
  const FolderEntryFactory entries(Session());
  const std::vector<EntryPtr> kept = {entries.CreateMainEntry(InMemory(u"/n")),
                                      entries.CreateMainEntry(InMemory(u"/m"))};
  WriteToolboxCacheFile(File(), InMemory(u"/"), entries);
  const auto cache = OpenCache(File());
  EXPECT_THAT(LocationsOf(cache), ElementsAre("/m", "/n"));
  EXPECT_FALSE(cache.HoldsList(InMemory(Paths{u"/m", u"/n"})));
  EXPECT_EQ(PathFrom(cache, InMemory(Paths{u"/m", u"/n"})), nullptr);
}

TEST_F(ToolboxCacheTest, TellsHowEachFolderStandsToItsRecord) {
  Memory().WithFolders({u"/proven", u"/changed", u"/below/private", u"/another", u"/went", u"/trouble"});
  const auto failing = Memory().Through<FailingStorageProvider>();
  failing->Plan({.operation = StorageOperation::List,
                 .location = InMemory(u"/trouble"),
                 .error = std::make_error_code(std::errc::permission_denied)});
  WriteCache(
      File(), InMemory(u"/"),
      InMemory(Paths{u"/proven", u"/changed", u"/below", u"/another", u"/went", u"/came", u"/missing", u"/trouble"}));
  Memory().WithFiles({u"/changed/f.x", u"/below/private/f.x"}).WithFolders({u"/came"});
  for (const auto* const folder : {u"/another", u"/went"}) Memory().GetProvider().Remove(InMemory(folder));
  Memory().WithFolders({u"/another"});

  std::vector<std::pair<Standing, bool>> standings;
  for (const auto& folder : OpenCache(File()).ExamineFolders()) {
    standings.emplace_back(folder.standing, folder.canBeProven);
  }
  EXPECT_THAT(standings, ElementsAre(std::pair(Standing::Proven, true), std::pair(Standing::Changed, true),
                                     std::pair(Standing::Changed, true), std::pair(Standing::Another, true),
                                     std::pair(Standing::Another, true), std::pair(Standing::Another, true),
                                     std::pair(Standing::Proven, true), std::pair(Standing::Changed, false)));
}

TEST_F(ToolboxCacheTest, KeepsItsBytesWhenAnotherTakesItsPlace) {
  Memory().WithFiles({u"/m/f.x"});
  const auto folders = InMemory(Paths{u"/m"});
  WriteCache(File(), InMemory(u"/"), folders);
  const auto cache = OpenCache(File(), CacheTrust::Blind);
  Memory().GetProvider().Remove(InMemory(u"/m/f.x"));
  WriteCache(File(), InMemory(u"/"), folders);

  EXPECT_EQ(FileFor(*PathFrom(cache, folders), u"f.x"), "/m: f.x");
  EXPECT_EQ(FileFor(*PathFrom(OpenCache(File(), CacheTrust::Blind), folders), u"f.x"), "none");
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
