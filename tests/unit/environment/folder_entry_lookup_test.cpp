#include <gmock/gmock.h>

#include <search_path_environment/folder_entry.hpp>

#include "memory_storage.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string First(const FolderEntry& entry, const Wanted& wanted, FilenameMatchingPolicy policy = kCaseSensitive) {
  return Shown(entry.FindFirst(wanted.Target(), policy));
}

Texts All(const FolderEntry& entry, const Wanted& wanted, FilenameMatchingPolicy policy = kCaseSensitive) {
  return AllShown(entry.FindAll(wanted.Target(), policy));
}

TEST(FolderEntryLookup, PrefersTheExtensionThatStandsFirstInTheList) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/f.a", u"/m/f.b", u"/m/f"});
  const auto entry = storage.Entry(u"/m");

  EXPECT_EQ(First(*entry, {u"f", {u".b", u".a"}}), "f.b");
  EXPECT_EQ(First(*entry, {u"f", {u".c", u".a", u".b"}}), "f.a");
  EXPECT_EQ(First(*entry, {u"f", {u"", u".a"}}), "f");
}

TEST(FolderEntryLookup, FindsNothingWithoutAnExtensionToTry) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/f", u"/m/f.a"});

  EXPECT_EQ(First(*storage.Entry(u"/m"), {u"f", {}}), "none");
  EXPECT_THAT(All(*storage.Entry(u"/m"), {u"f", {}}), IsEmpty());
}

TEST(FolderEntryLookup, FindsAFileHoweverItsNameIsCut) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/archive.tar.gz"});
  const auto entry = storage.Entry(u"/m");

  for (const auto policy : {kCaseSensitive, kCaseInsensitive, kNative}) {
    EXPECT_EQ(First(*entry, {u"archive", {u".tar.gz"}}, policy), "archive.tar.gz");
    EXPECT_EQ(First(*entry, {u"archive.tar", {u".gz"}}, policy), "archive.tar.gz");
    EXPECT_EQ(First(*entry, {u"archive.tar.gz", {u""}}, policy), "archive.tar.gz");
    EXPECT_EQ(First(*entry, {u"arch", {u"ive.tar.gz"}}, policy), "archive.tar.gz");
  }
  EXPECT_EQ(First(*entry, {u"archive", {u".gz"}}), "none");
}

TEST(FolderEntryLookup, MatchesNothingWithAnEmptyBaseName) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/.hidden", u"/m/f"});
  const auto entry = storage.Entry(u"/m");

  for (const auto policy : {kCaseSensitive, kCaseInsensitive, kNative}) {
    EXPECT_EQ(First(*entry, {u"", {u".hidden", u"f", u""}}, policy), "none");
    EXPECT_THAT(All(*entry, {u"", {u".hidden", u"f", u""}}, policy), IsEmpty());
  }
  EXPECT_EQ(First(*entry, Exactly(u".hidden")), ".hidden");
}

TEST(FolderEntryLookup, FindsNoFolders) {
  MemoryStorage storage;
  storage.WithFolders({u"/m/plain", u"/m/+p", u"/m/private"});
  const auto entry = storage.Entry(u"/m");

  EXPECT_EQ(First(*entry, Exactly(u"plain")), "none");
  EXPECT_EQ(First(*entry, Exactly(u"+p")), "none");
  EXPECT_EQ(First(*entry, Exactly(u"private")), "none");
}

TEST(FolderEntryLookup, DoesNotLookBelowItself) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/private/f", u"/m/+p/g"});
  const auto entry = storage.Entry(u"/m");

  EXPECT_EQ(First(*entry, Exactly(u"f")), "none");
  EXPECT_EQ(First(*entry, Exactly(u"+p/g")), "none");
}

TEST(FolderEntryLookup, TellsLetterCasesApartOnlyUnderAPolicyThatDoes) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/Stra\u00DFe.X"});
  const auto entry = storage.Entry(u"/m");
  const Wanted wanted{u"STRASSE", {u".x"}};

  EXPECT_EQ(First(*entry, wanted, kCaseSensitive), "none");
  EXPECT_EQ(First(*entry, wanted, kNative), "none");
  EXPECT_EQ(First(*entry, wanted, kUnknownPolicy), "none");
  EXPECT_EQ(First(*entry, wanted, kCaseInsensitive), "Stra\u00DFe.X");
}

TEST(FolderEntryLookup, ComparesNativelyAsTheStorageDoes) {
  MemoryStorage storage(NameComparison::IgnoreCase);
  storage.WithFiles({u"/m/Foo.x"});
  const auto entry = storage.Entry(u"/m");
  const Wanted wanted{u"fOO", {u".X"}};

  EXPECT_EQ(First(*entry, wanted, kNative), "Foo.x");
  EXPECT_EQ(First(*entry, wanted, kUnknownPolicy), "Foo.x");
  EXPECT_EQ(First(*entry, wanted, kCaseInsensitive), "Foo.x");
  EXPECT_EQ(First(*entry, wanted, kCaseSensitive), "none");
  EXPECT_TRUE(entry->ComparesExactly(kCaseSensitive));
  EXPECT_FALSE(entry->ComparesExactly(kNative));
  EXPECT_FALSE(entry->ComparesExactly(kUnknownPolicy));
}

TEST(FolderEntryLookup, PrefersTheExactSpellingWithinOneExtension) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/FOO.x", u"/m/Foo.x", u"/m/foo.x"});
  const auto entry = storage.Entry(u"/m");

  EXPECT_EQ(First(*entry, {u"foo", {u".x"}}, kCaseInsensitive), "foo.x");
  EXPECT_EQ(First(*entry, {u"Foo", {u".x"}}, kCaseInsensitive), "Foo.x");
  EXPECT_EQ(First(*entry, {u"fOO", {u".x"}}, kCaseInsensitive), "FOO.x") << "the first in name order";
}

TEST(FolderEntryLookup, PutsTheOrderOfExtensionsAboveTheSpelling) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/FOO.a", u"/m/foo.b"});

  EXPECT_EQ(First(*storage.Entry(u"/m"), {u"foo", {u".a", u".b"}}, kCaseInsensitive), "FOO.a");
}

TEST(FolderEntryLookup, FindsAllByExtensionThenByNameEachOnce) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/FOO.a", u"/m/foo.a", u"/m/foo.b", u"/m/Foo.b", u"/m/foo", u"/m/bar.a"});
  const auto entry = storage.Entry(u"/m");

  EXPECT_THAT(All(*entry, {u"foo", {u".b", u".a"}}), ElementsAre("foo.b", "foo.a"));
  EXPECT_THAT(All(*entry, {u"foo", {u".b", u".a"}}, kCaseInsensitive), ElementsAre("Foo.b", "foo.b", "FOO.a", "foo.a"));
  EXPECT_THAT(All(*entry, {u"foo", {u".A", u".a", u".B", u".A"}}, kCaseInsensitive),
              ElementsAre("FOO.a", "foo.a", "Foo.b", "foo.b"));
  EXPECT_THAT(All(*entry, {u"foo", {u".a", u".a"}}), ElementsAre("foo.a"));
}

TEST(FolderEntryLookup, HandsOutAComparatorThatFollowsThePolicy) {
  MemoryStorage exact;
  const auto tellingApart = exact.WithFolders({u"/m"}).Entry(u"/m");

  EXPECT_FALSE((*tellingApart->GetFilenameComparator(kCaseSensitive))(u"a", u"A"));
  EXPECT_FALSE((*tellingApart->GetFilenameComparator(kNative))(u"a", u"A"));
  EXPECT_FALSE((*tellingApart->GetFilenameComparator(kUnknownPolicy))(u"a", u"A"));
  EXPECT_TRUE((*tellingApart->GetFilenameComparator(kCaseInsensitive))(u"a\u00DF", u"AsS"));
  EXPECT_FALSE((*tellingApart->GetFilenameComparator(kCaseInsensitive))(u"a", u"b"));
  EXPECT_TRUE((*tellingApart->GetFilenameComparator(kCaseSensitive))(u"a", u"a"));
}

TEST(FolderEntryLookup, HandsOutAComparatorThatFollowsTheStorage) {
  MemoryStorage ignoringCase(NameComparison::IgnoreCase);
  const auto entry = ignoringCase.WithFolders({u"/m"}).Entry(u"/m");

  EXPECT_TRUE((*entry->GetFilenameComparator(kNative))(u"a", u"A"));
  EXPECT_TRUE((*entry->GetFilenameComparator(kUnknownPolicy))(u"a", u"A"));
  EXPECT_FALSE((*entry->GetFilenameComparator(kCaseSensitive))(u"a", u"A"));
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
