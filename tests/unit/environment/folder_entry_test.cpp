#include <gmock/gmock.h>

#include <search_path_environment/folder_entry.hpp>

#include "memory_storage.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(FolderEntry, ListsItsFilesByFullNameCodeUnitByCodeUnit) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/b.x", u"/m/a.y", u"/m/a", u"/m/B.x", u"/m/a-b", u"/m/\u00E4", u"/m/a.x"});

  const auto entry = storage.Entry(u"/m");

  EXPECT_THAT(AllShown(*entry->GetItems()), ElementsAre("B.x", "a", "a-b", "a.x", "a.y", "b.x", "\u00E4"));
}

TEST(FolderEntry, CutsAnExtensionAtTheLastDotUnlessItComesFirst) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/.hidden", u"/m/a.tar.gz", u"/m/end.", u"/m/plain"});

  std::vector<std::u16string> baseNames;
  std::vector<std::u16string> extensions;
  const auto items = storage.Entry(u"/m")->GetItems();
  for (const auto& item : *items) {
    baseNames.push_back(item->baseName);
    extensions.push_back(item->extension);
  }

  EXPECT_THAT(baseNames, ElementsAre(u".hidden", u"a.tar", u"end", u"plain"));
  EXPECT_THAT(extensions, ElementsAre(u"", u".gz", u".", u""));
}

TEST(FolderEntry, TellsItsNamesAsItsItemsDo) {
  for (const auto& wide : {std::u16string(u"/m/plain"), std::u16string(u"/m/\u4E16.x")}) {
    MemoryStorage storage;
    storage.WithFiles({u"/m/.hidden", u"/m/a.tar.gz", u"/m/end.", wide});
    const auto entry = storage.Entry(u"/m");

    std::vector<std::pair<std::u16string, std::u16string>> names;
    entry->ForEachName(
        [&](std::u16string_view baseName, std::u16string_view extension) { names.emplace_back(baseName, extension); });
    std::vector<std::pair<std::u16string, std::u16string>> items;
    const auto held = entry->GetItems();
    for (const auto& item : *held) items.emplace_back(item->baseName, item->extension);
    EXPECT_EQ(names, items);
    EXPECT_EQ(names.size(), 4U);
  }
}

TEST(FolderEntry, TellsItsItemsWhereTheyAre) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/+p/f"});

  const auto package = storage.Entry(u"/m")->GetChildren().at(0);

  EXPECT_EQ(package->GetItems()->at(0)->folderIRI, InMemory(u"/m/+p"));
  EXPECT_EQ(package->FindFirst(Exactly(u"f").Target(), kNative)->folderIRI, InMemory(u"/m/+p"));
}

TEST(FolderEntry, IsMainWhateverTheFolderIsCalled) {
  MemoryStorage storage;
  storage.WithFolders({u"/+p/+q", u"/@c/@d", u"/private/private", u"/resources/@e"});

  for (const auto* folder : {u"/+p", u"/@c", u"/private", u"/resources", u"/"}) {
    EXPECT_EQ(storage.Entry(folder)->GetEntryType(), PathEntryType::Main);
  }
  EXPECT_THAT(Walk(*storage.Entry(u"/@c")), ElementsAre("/@c", "/@c/@d"));
  EXPECT_THAT(Walk(*storage.Entry(u"/private")), ElementsAre("/private", "/private/private"));
  EXPECT_THAT(Walk(*storage.Entry(u"/resources")), ElementsAre("/resources", "/resources/@e"));
}

TEST(FolderEntry, GroupsTheSpecialSubfoldersDirectlyBelowItByNameAndKind) {
  MemoryStorage storage;
  storage.WithFolders({u"/m/private", u"/m/resources", u"/m/@d", u"/m/@c", u"/m/+q/@inner", u"/m/+p/+deep", u"/m/@B"});

  const auto entry = storage.Entry(u"/m");

  EXPECT_EQ(Shown(entry->GetPrivateEntry()), "/m/private");
  EXPECT_EQ(Shown(entry->GetSecondSingleEntry()), "/m/resources");
  EXPECT_THAT(AllShown(*entry->GetFirstEntryGroup()), ElementsAre("/m/@B", "/m/@c", "/m/@d"));
  EXPECT_THAT(AllShown(*entry->GetSecondEntryGroup()), ElementsAre("/m/+p", "/m/+q"));
  EXPECT_THAT(*entry->GetThirdEntryGroup(), IsEmpty());
}

TEST(FolderEntry, HasEmptyGroupsAndNoSingleEntriesWithoutSpecialSubfolders) {
  MemoryStorage storage;
  storage.WithFolders({u"/m/plain"});

  const auto entry = storage.Entry(u"/m");

  EXPECT_EQ(entry->GetPrivateEntry(), nullptr);
  EXPECT_EQ(entry->GetSecondSingleEntry(), nullptr);
  EXPECT_THAT(*entry->GetFirstEntryGroup(), IsEmpty());
  EXPECT_THAT(*entry->GetSecondEntryGroup(), IsEmpty());
  EXPECT_THAT(*entry->GetThirdEntryGroup(), IsEmpty());
}

TEST(FolderEntry, KnowsTheKindsOfItsSubfolders) {
  MemoryStorage storage;
  storage.WithFolders({u"/m/private", u"/m/resources", u"/m/@c", u"/m/+p"});

  std::vector<PathEntryType> kinds;
  storage.Entry(u"/m")->ForEachEntryInScope(kEveryKind, [&](const EntryPtr& entry) {
    kinds.push_back(entry->GetEntryType());
    return false;
  });

  EXPECT_THAT(kinds, ElementsAre(PathEntryType::Main, PathEntryType::Private, PathEntryType::Resources,
                                 PathEntryType::Class, PathEntryType::Package));
}

// Main and package folders hold packages and classes; main, package and class folders hold private and resources.
TEST(FolderEntry, FollowsSpecialSubfoldersOnlyWhereTheyMean) {
  MemoryStorage storage;
  for (const std::u16string outer : {u"/m", u"/m/+p", u"/m/@c", u"/m/private", u"/m/resources"}) {
    storage.WithFolders({outer + u"/private", outer + u"/resources", outer + u"/@c", outer + u"/+p"});
  }

  EXPECT_THAT(Walk(*storage.Entry(u"/m")),
              ElementsAre("/m", "/m/private", "/m/resources", "/m/@c", "/m/@c/private", "/m/@c/resources", "/m/+p",
                          "/m/+p/private", "/m/+p/resources", "/m/+p/@c", "/m/+p/+p"));
}

TEST(FolderEntry, IgnoresPlainSubfoldersAndWhatLiesInThem) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/sub/f", u"/m/sub/+p/f", u"/m/Private/f", u"/m/RESOURCES/f", u"/m/privates/f", u"/m/a+/f"});

  const auto entry = storage.Entry(u"/m");

  EXPECT_THAT(Walk(*entry), ElementsAre("/m"));
  EXPECT_THAT(*entry->GetItems(), IsEmpty());
}

TEST(FolderEntry, TakesAFileWithASpecialNameForAFile) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/+p", u"/m/@c", u"/m/private", u"/m/resources"});

  const auto entry = storage.Entry(u"/m");

  EXPECT_THAT(AllShown(*entry->GetItems()), ElementsAre("+p", "@c", "private", "resources"));
  EXPECT_THAT(Walk(*entry), ElementsAre("/m"));
}

TEST(FolderEntry, WalksPrivateThenResourcesThenClassesThenPackagesEachInDepth) {
  MemoryStorage storage;
  storage.WithFolders({u"/m/+a/@z", u"/m/+a/private", u"/m/@c/resources", u"/m/@b", u"/m/resources", u"/m/private",
                       u"/m/+A/+n/@k", u"/m/@c/private"});

  EXPECT_THAT(Walk(*storage.Entry(u"/m")),
              ElementsAre("/m", "/m/private", "/m/resources", "/m/@b", "/m/@c", "/m/@c/private", "/m/@c/resources",
                          "/m/+A", "/m/+A/+n", "/m/+A/+n/@k", "/m/+a", "/m/+a/private", "/m/+a/@z"));
}

TEST(FolderEntry, VisitsOnlyKindsInScopeButLooksBelowTheOthers) {
  MemoryStorage storage;
  storage.WithFolders({u"/m/+p/@c/private", u"/m/@d"});
  const auto entry = storage.Entry(u"/m");

  EXPECT_THAT(Walk(*entry, Only(PathEntryType::Class)), ElementsAre("/m/@d", "/m/+p/@c"));
  EXPECT_THAT(Walk(*entry, Only(PathEntryType::Private)), ElementsAre("/m/+p/@c/private"));
  EXPECT_THAT(Walk(*entry, Only(PathEntryType::Auxiliary)), IsEmpty());
  EXPECT_THAT(Walk(*entry, kNoKind), IsEmpty());
}

TEST(FolderEntry, StopsItsWalkWhenTheCallbackSaysSo) {
  MemoryStorage storage;
  storage.WithFolders({u"/m/@a", u"/m/@b", u"/m/@c"});
  Texts visited;

  const bool stopped = storage.Entry(u"/m")->ForEachEntryInScope(kEveryKind, [&](const EntryPtr& entry) {
    visited.push_back(Shown(entry));
    return visited.back() == "/m/@b";
  });

  EXPECT_TRUE(stopped);
  EXPECT_THAT(visited, ElementsAre("/m", "/m/@a", "/m/@b"));
  EXPECT_FALSE(storage.Entry(u"/m")->ForEachEntryInScope(kEveryKind, [](const EntryPtr&) { return false; }));
}

TEST(FolderEntry, HandsItselfOutAsTheVeryObjectThatOthersHold) {
  MemoryStorage storage;
  storage.WithFolders({u"/m/private"});
  const auto entry = storage.Entry(u"/m");

  std::vector<EntryPtr> visited;
  entry->ForEachEntryInScope(kEveryKind, [&](const EntryPtr& each) {
    visited.push_back(each);
    return false;
  });

  EXPECT_THAT(visited, ElementsAre(EntryPtr(entry), entry->GetPrivateEntry()));
}

TEST(FolderEntry, SharesItsItemsAsLongAsSomebodyHoldsThem) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/a", u"/m/b"});
  const auto entry = storage.Entry(u"/m");

  auto items = entry->GetItems();
  const std::weak_ptr<const FolderEntry::Items> watched = items;
  EXPECT_EQ(entry->GetItems(), items);

  items.reset();
  EXPECT_TRUE(watched.expired()) << "the entry must not keep what nobody uses";
  EXPECT_THAT(AllShown(*entry->GetItems()), ElementsAre("a", "b"));
}

TEST(FolderEntry, LetsAnItemOutliveTheListAndTheEntry) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/first.x", u"/m/second.y"});
  auto entry = storage.Entry(u"/m");

  const ItemPtr item = entry->GetItems()->at(1);
  entry.reset();

  EXPECT_EQ(Shown(item), "second.y");
  EXPECT_EQ(item->folderIRI, InMemory(u"/m"));
}

TEST(FolderEntry, LetsASubfolderOutliveTheFolderItWasReadWith) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/private/f"});

  const EntryPtr inside = storage.Entry(u"/m")->GetPrivateEntry();

  EXPECT_THAT(AllShown(*inside->GetItems()), ElementsAre("f"));
}

TEST(FolderEntry, KeepsItsContentWhateverHappensToTheFolder) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/old"});
  const auto entry = storage.Entry(u"/m");

  storage.WithFiles({u"/m/new"});
  storage.GetProvider().Remove(InMemory(u"/m/old"));

  EXPECT_THAT(AllShown(*entry->GetItems()), ElementsAre("old"));
  EXPECT_THAT(AllShown(*storage.Entry(u"/m")->GetItems()), ElementsAre("new"));
}

TEST(FolderEntry, FollowsLinksToFilesAndFoldersAndKeepsTheSpellingOfTheLink) {
  MemoryStorage storage;
  storage.WithFiles({u"/elsewhere/file.x", u"/elsewhere/folder/inside"});
  storage.WithLink(u"/m/link.y", u"/elsewhere/file.x").WithLink(u"/m/+p", u"../elsewhere/folder");

  const auto entry = storage.Entry(u"/m");

  EXPECT_THAT(AllShown(*entry->GetItems()), ElementsAre("link.y"));
  ASSERT_THAT(AllShown(entry->GetChildren()), ElementsAre("/m/+p"));
  EXPECT_THAT(AllShown(*entry->GetChildren()[0]->GetItems()), ElementsAre("inside"));
  EXPECT_EQ(entry->GetChildren()[0]->GetCanonicalLocation(), InMemory(u"/elsewhere/folder"));
}

TEST(FolderEntry, LeavesOutLinksThatLeadNowhere) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/f"}).WithLink(u"/m/dangling", u"/nothing").WithLink(u"/m/+dangling", u"/nothing");

  const auto entry = storage.Entry(u"/m");

  EXPECT_THAT(AllShown(*entry->GetItems()), ElementsAre("f"));
  EXPECT_THAT(Walk(*entry), ElementsAre("/m"));
  EXPECT_THAT(AllShown(entry->GetProblems()), IsEmpty());
}

TEST(FolderEntry, KeepsTheSpellingItWasAskedForAndKnowsWhereItReallyIs) {
  MemoryStorage storage;
  storage.WithFolders({u"/real/@c"}).WithLink(u"/link", u"/real");

  const auto entry = storage.Entry(u"/link");

  EXPECT_EQ(entry->GetAbsoluteIRI(), InMemory(u"/link"));
  EXPECT_EQ(entry->GetCanonicalLocation(), InMemory(u"/real"));
  EXPECT_EQ(entry->GetChildren().at(0)->GetAbsoluteIRI(), InMemory(u"/link/@c"));
  EXPECT_EQ(entry->GetChildren().at(0)->GetCanonicalLocation(), InMemory(u"/real/@c"));
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
