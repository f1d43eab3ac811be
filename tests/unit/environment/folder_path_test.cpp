#include <gmock/gmock.h>

#include <search_path_environment/folder_path.hpp>

#include "memory_storage.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::vfs::CanonicalAbsoluteIRI;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(FolderPath, ListsItsMainEntriesInTheOrderGiven) {
  MemoryStorage storage;
  storage.WithFolders({u"/b", u"/a", u"/c"});

  const auto path = storage.Path({u"/b", u"/a", u"/c"});

  EXPECT_THAT(AllShown(*path->GetMainEntries()), ElementsAre("/b", "/a", "/c"));
  EXPECT_EQ(path->GetMainEntries(), path->GetMainEntries()) << "the vector is shared";
}

TEST(FolderPath, KeepsARepeatedFolderAtItsFirstPlaceAndReportsTheRepeat) {
  MemoryStorage storage;
  storage.WithFolders({u"/a", u"/b"});

  const auto path = storage.Path({u"/a", u"/b", u"/a/", u"/x/../b", u"/a"});

  EXPECT_THAT(AllShown(*path->GetMainEntries()), ElementsAre("/a", "/b"));
  EXPECT_THAT(AllShown(path->GetProblems()),
              ElementsAre("2 /a: it stands earlier on the path", "3 /b: it stands earlier on the path",
                          "4 /a: it stands earlier on the path"));
  EXPECT_EQ(path->GetProblems()[0].kind, ProblemKind::Repeated);
  EXPECT_FALSE(path->GetProblems()[0].error);
}

TEST(FolderPath, CountsPositionsOnThePathAsItWasGiven) {
  MemoryStorage storage;
  storage.WithFolders({u"/a"});

  const auto path = storage.Path({u"/a", u"/a", u"/missing"});

  EXPECT_THAT(AllShown(path->GetProblems()),
              ElementsAre("1 /a: it stands earlier on the path", "2 /missing: there is no such folder"));
}

TEST(FolderPath, TellsWhereEachMainEntryStandsOnThePathAsItWasGiven) {
  MemoryStorage storage;
  storage.WithFolders({u"/a", u"/b", u"/c"});

  const auto path = storage.Path({u"/a", u"/a", u"/b", u"/a", u"/c"});

  EXPECT_THAT(path->GetPositions(), ElementsAre(0, 2, 4));
}

TEST(FolderPath, KeepsTwoSpellingsOfOneFolderApart) {
  MemoryStorage storage;
  storage.WithFiles({u"/real/f"}).WithLink(u"/link", u"/real");

  const auto path = storage.Path({u"/link", u"/real"});

  EXPECT_THAT(AllShown(*path->GetMainEntries()), ElementsAre("/link", "/real"));
  EXPECT_THAT(path->GetProblems(), IsEmpty());
}

TEST(FolderPath, AnswersEveryQuestionThoughItIsEmpty) {
  MemoryStorage storage;
  const auto stranger = storage.WithFolders({u"/m"}).Entry(u"/m");
  const auto path = storage.Path({});

  EXPECT_THAT(*path->GetMainEntries(), IsEmpty());
  EXPECT_THAT(path->GetMethodEntries(), IsEmpty());
  EXPECT_THAT(path->GetMethodEntriesByName(kEveryKind, u"c", kCaseInsensitive), IsEmpty());
  EXPECT_THAT(path->GetPartiallyMatchingEntries(kEveryKind, u"m", kNative), IsEmpty());
  EXPECT_FALSE(path->FindFirstInScope(kEveryKind, Exactly(u"f").Target(), kCaseInsensitive));
  EXPECT_THAT(path->FindAllInScope(kEveryKind, Exactly(u"f").Target(), kNative), IsEmpty());
  EXPECT_FALSE(path->ForEachEntry(kEveryKind, [](const EntryPtr&) { return true; }));
  EXPECT_FALSE(path->ConcurrentForEachEntry(kEveryKind, [](const EntryPtr&) { return true; }));
  EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(InMemory(u"/m"), kCaseInsensitive), nullptr);
  EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(InMemory(u"/m"), u"")), nullptr);
  EXPECT_FALSE(path->IsEntryOnPath(*stranger));
  EXPECT_FALSE(path->FirstEntryIsBeforeSecondOnPath(*stranger, *stranger));
  EXPECT_THAT(path->GetProblems(), IsEmpty());
}

TEST(FolderPath, ListsItsMethodEntriesInWalkOrder) {
  MemoryStorage storage;
  storage.WithFolders({u"/a/+p/@c", u"/a/private", u"/b/@d/resources", u"/b/resources", u"/a/@z"});

  const auto path = storage.Path({u"/b", u"/a"});

  EXPECT_THAT(AllShown(path->GetMethodEntries()),
              ElementsAre("/b/resources", "/b/@d", "/b/@d/resources", "/a/private", "/a/@z", "/a/+p", "/a/+p/@c"));
}

TEST(FolderPath, WalksTheEntriesInScopeUntilTheCallbackStopsIt) {
  MemoryStorage storage;
  storage.WithFolders({u"/a/@c", u"/a/+p/@d", u"/b/@e"});
  const auto path = storage.Path({u"/a", u"/b"});

  EXPECT_THAT(Walk(*path), ElementsAre("/a", "/a/@c", "/a/+p", "/a/+p/@d", "/b", "/b/@e"));
  EXPECT_THAT(Walk(*path, Only(PathEntryType::Class)), ElementsAre("/a/@c", "/a/+p/@d", "/b/@e"));
  EXPECT_THAT(Walk(*path, kNoKind), IsEmpty());

  Texts visited;
  const auto stopAtTheSecond = [&visited](const EntryPtr& entry) {
    visited.push_back(Shown(entry));
    return visited.size() == 2;
  };
  EXPECT_TRUE(path->ForEachEntry(Only(PathEntryType::Class), stopAtTheSecond));
  EXPECT_THAT(visited, ElementsAre("/a/@c", "/a/+p/@d"));
  EXPECT_FALSE(path->ForEachEntry(kEveryKind, [](const EntryPtr&) { return false; }));
}

TEST(FolderPath, VisitsTheSameEntriesConcurrently) {
  MemoryStorage storage;
  storage.WithFolders({u"/a/@c", u"/b/+p"});
  const auto path = storage.Path({u"/a", u"/b"});

  Texts visited;
  const bool stopped = path->ConcurrentForEachEntry(kEveryKind, [&visited](const EntryPtr& entry) {
    visited.push_back(Shown(entry));
    return false;
  });

  EXPECT_FALSE(stopped);
  EXPECT_THAT(visited, testing::UnorderedElementsAre("/a", "/a/@c", "/b", "/b/+p"));
  EXPECT_TRUE(path->ConcurrentForEachEntry(kEveryKind, [](const EntryPtr&) { return true; }));
}

TEST(FolderPath, KnowsTheMainEntryAndTheParentOfEachEntry) {
  MemoryStorage storage;
  storage.WithFolders({u"/a/+p/@c/private"});
  const auto path = storage.Path({u"/other", u"/a"});

  const auto main = path->GetMainEntries()->at(1);
  const auto methods = path->GetMethodEntries();
  ASSERT_THAT(AllShown(methods), ElementsAre("/a/+p", "/a/+p/@c", "/a/+p/@c/private"));

  EXPECT_EQ(path->GetMainEntryForEntry(*main), main);
  EXPECT_EQ(path->GetParentEntryForEntry(*main), nullptr);
  for (const auto& entry : methods) EXPECT_EQ(path->GetMainEntryForEntry(*entry), main);
  EXPECT_EQ(path->GetParentEntryForEntry(*methods[0]), main);
  EXPECT_EQ(path->GetParentEntryForEntry(*methods[1]), methods[0]);
  EXPECT_EQ(path->GetParentEntryForEntry(*methods[2]), methods[1]);
}

TEST(FolderPath, HasItsEntriesAndNoOthersAtTheSamePlace) {
  MemoryStorage storage;
  storage.WithFolders({u"/a/@c"});
  const auto path = storage.Path({u"/a"});
  const auto twin = storage.Path({u"/a"});

  EXPECT_TRUE(path->IsEntryOnPath(*path->GetMainEntries()->at(0)));
  EXPECT_TRUE(path->IsEntryOnPath(*path->GetMethodEntries()[0]));
  EXPECT_FALSE(path->IsEntryOnPath(*twin->GetMainEntries()->at(0)));
  EXPECT_FALSE(path->IsEntryOnPath(*twin->GetMethodEntries()[0]));
}

TEST(FolderPath, HasNeitherMainEntryNorParentForAStranger) {
  MemoryStorage storage;
  storage.WithFolders({u"/a/@c"});
  const auto path = storage.Path({u"/a"});
  const auto twin = storage.Path({u"/a"});

  EXPECT_EQ(path->GetMainEntryForEntry(*twin->GetMethodEntries()[0]), nullptr);
  EXPECT_EQ(path->GetParentEntryForEntry(*twin->GetMethodEntries()[0]), nullptr);
}

TEST(FolderPath, OrdersEntriesByTheirMainEntryOnly) {
  MemoryStorage storage;
  storage.WithFolders({u"/a/@c", u"/b/@d"});
  const auto path = storage.Path({u"/b", u"/a"});
  const auto& b = *path->GetMainEntries()->at(0);
  const auto& a = *path->GetMainEntries()->at(1);
  const auto& d = *path->GetMethodEntries()[0];
  const auto& c = *path->GetMethodEntries()[1];

  EXPECT_TRUE(path->FirstEntryIsBeforeSecondOnPath(b, a));
  EXPECT_TRUE(path->FirstEntryIsBeforeSecondOnPath(d, a));
  EXPECT_TRUE(path->FirstEntryIsBeforeSecondOnPath(b, c));
  EXPECT_TRUE(path->FirstEntryIsBeforeSecondOnPath(d, c));
  EXPECT_FALSE(path->FirstEntryIsBeforeSecondOnPath(a, b));
  EXPECT_FALSE(path->FirstEntryIsBeforeSecondOnPath(c, d));
  EXPECT_FALSE(path->FirstEntryIsBeforeSecondOnPath(b, d));
  EXPECT_FALSE(path->FirstEntryIsBeforeSecondOnPath(d, b));
  EXPECT_FALSE(path->FirstEntryIsBeforeSecondOnPath(d, d));
}

TEST(FolderPath, PutsItsEntriesBeforeStrangersAndNoStrangerBeforeAnother) {
  MemoryStorage storage;
  storage.WithFolders({u"/a", u"/b"});
  const auto path = storage.Path({u"/a"});
  const auto& own = *path->GetMainEntries()->at(0);
  const auto stranger = storage.Entry(u"/a");
  const auto other = storage.Entry(u"/b");

  EXPECT_TRUE(path->FirstEntryIsBeforeSecondOnPath(own, *stranger));
  EXPECT_FALSE(path->FirstEntryIsBeforeSecondOnPath(*stranger, own));
  EXPECT_FALSE(path->FirstEntryIsBeforeSecondOnPath(*stranger, *other));
  EXPECT_FALSE(path->FirstEntryIsBeforeSecondOnPath(*other, *stranger));
}

TEST(FolderPath, FindsAnEntryByTheSpellingOnThePath) {
  MemoryStorage storage;
  storage.WithFolders({u"/a/+p/@c", u"/b"});
  const auto path = storage.Path({u"/a", u"/b"});

  for (const auto* folder : {u"/a", u"/a/+p", u"/a/+p/@c", u"/b"}) {
    const auto entry = path->GetPathEntryFromAbsoluteIRI(InMemory(folder), kCaseSensitive);
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->GetAbsoluteIRI(), InMemory(folder));
    EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(InMemory(folder), u"shown")), entry);
  }
  EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(InMemory(u"/a/+p/x"), kCaseInsensitive), nullptr);
  EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(InMemory(u"/x"), u"")), nullptr);
}

TEST(FolderPath, FindsAnEntryByThePlaceThatItsLinkLeadsTo) {
  MemoryStorage storage;
  storage.WithFolders({u"/real/@c"}).WithLink(u"/link", u"/real");
  const auto path = storage.Path({u"/link"});

  EXPECT_EQ(Shown(path->GetPathEntryFromAbsoluteIRI(InMemory(u"/real"), kCaseSensitive)), "/link");
  EXPECT_EQ(Shown(path->GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(InMemory(u"/real/@c"), u""))), "/link/@c");
}

TEST(FolderPath, PrefersTheEntrySpelledSoToTheOneThatALinkLeadsTo) {
  MemoryStorage storage;
  storage.WithFolders({u"/real"}).WithLink(u"/link", u"/real");
  const auto path = storage.Path({u"/link", u"/real"});

  EXPECT_EQ(Shown(path->GetPathEntryFromAbsoluteIRI(InMemory(u"/real"), kNative)), "/real");
  EXPECT_EQ(Shown(path->GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(InMemory(u"/real"), u""))), "/real");
}

TEST(FolderPath, PrefersAMainEntryToAMethodEntryOfTheSameFolder) {
  MemoryStorage storage;
  storage.WithFolders({u"/a/+p"});
  const auto path = storage.Path({u"/a", u"/a/+p"});

  const auto found = path->GetPathEntryFromAbsoluteIRI(InMemory(u"/a/+p"), kNative);

  EXPECT_EQ(found, path->GetMainEntries()->at(1));
  EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(InMemory(u"/a/+p"), u"")), found);
  EXPECT_TRUE(path->IsEntryOnPath(*path->GetMethodEntries()[0])) << "the other is on the path, too";
}

TEST(FolderPath, IgnoresLetterCaseInALocationOnlyUnderAPolicyThatDoes) {
  MemoryStorage storage;
  storage.WithFolders({u"/Folder/@Class"});
  const auto path = storage.Path({u"/Folder"});

  EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(InMemory(u"/folder/@CLASS"), kCaseSensitive), nullptr);
  EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(InMemory(u"/folder/@CLASS"), kNative), nullptr);
  EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(InMemory(u"/folder/@CLASS"), kUnknownPolicy), nullptr);
  EXPECT_EQ(Shown(path->GetPathEntryFromAbsoluteIRI(InMemory(u"/folder/@CLASS"), kCaseInsensitive)), "/Folder/@Class");
}

TEST(FolderPath, ComparesLocationsNativelyAsTheStorageDoes) {
  MemoryStorage storage(NameComparison::IgnoreCase);
  storage.WithFolders({u"/Folder"});
  const auto path = storage.Path({u"/Folder"});

  EXPECT_EQ(Shown(path->GetPathEntryFromAbsoluteIRI(InMemory(u"/FOLDER"), kNative)), "/Folder");
  EXPECT_EQ(Shown(path->GetPathEntryFromAbsoluteIRI(InMemory(u"/FOLDER"), kUnknownPolicy)), "/Folder");
  EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(InMemory(u"/FOLDER"), kCaseSensitive), nullptr);
}

TEST(FolderPath, PrefersTheExactSpellingOfALocation) {
  MemoryStorage storage;
  storage.WithFolders({u"/FOLDER", u"/Folder"});
  const auto path = storage.Path({u"/FOLDER", u"/Folder"});

  EXPECT_EQ(Shown(path->GetPathEntryFromAbsoluteIRI(InMemory(u"/Folder"), kCaseInsensitive)), "/Folder");
  EXPECT_EQ(Shown(path->GetPathEntryFromAbsoluteIRI(InMemory(u"/folder"), kCaseInsensitive)), "/FOLDER");
}

TEST(FolderPath, GivesTheClassFoldersOfANameInPathOrder) {
  MemoryStorage storage;
  storage.WithFolders({u"/a/@c", u"/a/+p/@c", u"/a/@other", u"/b/@c", u"/b/@C"});
  const auto path = storage.Path({u"/b", u"/a"});
  const auto classes = [&path](SearchScope scope, const std::u16string& name, FilenameMatchingPolicy policy) {
    return AllShown(path->GetMethodEntriesByName(scope, name, policy));
  };

  EXPECT_THAT(classes(kEveryKind, u"c", kNative), ElementsAre("/b/@c", "/a/@c", "/a/+p/@c"));
  EXPECT_THAT(classes(kEveryKind, u"c", kCaseInsensitive), ElementsAre("/b/@C", "/b/@c", "/a/@c", "/a/+p/@c"));
  EXPECT_THAT(classes(Only(PathEntryType::Main), u"c", kNative), ElementsAre("/b/@c", "/a/@c"));
  EXPECT_THAT(classes(Only(PathEntryType::Package), u"c", kNative), ElementsAre("/a/+p/@c"));
  EXPECT_THAT(classes(Only(PathEntryType::Class), u"c", kNative), IsEmpty());
  EXPECT_THAT(classes(kEveryKind, u"@c", kNative), IsEmpty()) << "the name stands without its mark";
  EXPECT_THAT(classes(kEveryKind, u"p", kNative), IsEmpty()) << "packages are no class folders";
}

TEST(FolderPath, SelectsNoClassFolderByAnEmptyName) {
  MemoryStorage storage;
  storage.WithFolders({u"/a/@"});
  const auto path = storage.Path({u"/a"});

  EXPECT_THAT(AllShown(path->GetMethodEntries()), ElementsAre("/a/@"));
  EXPECT_THAT(path->GetMethodEntriesByName(kEveryKind, u"", kCaseInsensitive), IsEmpty());
  EXPECT_THAT(path->GetMethodEntriesByName(kEveryKind, u"", kNative), IsEmpty());
}

TEST(FolderPath, ComparesTheNamesOfClassFoldersAsTheFolderAboveThemDoes) {
  MemoryStorage storage(NameComparison::IgnoreCase);
  storage.WithFolders({u"/a/@Class"});
  const auto path = storage.Path({u"/a"});

  EXPECT_THAT(AllShown(path->GetMethodEntriesByName(kEveryKind, u"cLASS", kNative)), ElementsAre("/a/@Class"));
  EXPECT_THAT(path->GetMethodEntriesByName(kEveryKind, u"cLASS", kCaseSensitive), IsEmpty());
}

TEST(FolderPath, DoesNotTakeAMainFolderForAClassFolder) {
  MemoryStorage storage;
  storage.WithFolders({u"/a/@c"});
  const auto path = storage.Path({u"/a/@c"});

  EXPECT_THAT(path->GetMethodEntriesByName(kEveryKind, u"c", kNative), IsEmpty());
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
