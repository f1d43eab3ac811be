#include <gmock/gmock.h>

#include <search_path_environment/folder_path.hpp>

#include "memory_storage.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string First(const FolderPath& path, const Wanted& wanted, FilenameMatchingPolicy policy = kNative,
                  SearchScope scope = kEveryKind) {
  return Shown(path.FindFirstInScope(scope, wanted.Target(), policy));
}

Texts All(const FolderPath& path, const Wanted& wanted, FilenameMatchingPolicy policy = kNative,
          SearchScope scope = kEveryKind) {
  return AllShown(path.FindAllInScope(scope, wanted.Target(), policy));
}

TEST(FolderPathLookup, FindsTheFileOfTheFirstEntryThatHasOne) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/other", u"/b/f.x", u"/c/f.x"});

  EXPECT_EQ(First(*storage.Path({u"/a", u"/b", u"/c"}), {u"f", {u".x"}}), "/b: f.x");
  EXPECT_EQ(First(*storage.Path({u"/c", u"/b", u"/a"}), {u"f", {u".x"}}), "/c: f.x");
}

TEST(FolderPathLookup, PutsPathOrderAboveTheOrderOfExtensionsAndTheSpelling) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f.y", u"/b/f.x", u"/a/G.x", u"/b/g.x"});
  const auto path = storage.Path({u"/a", u"/b"});

  EXPECT_EQ(First(*path, {u"f", {u".x", u".y"}}), "/a: f.y");
  EXPECT_EQ(First(*path, {u"g", {u".x"}}, kCaseInsensitive), "/a: G.x");
}

TEST(FolderPathLookup, LooksOnlyIntoEntriesInScope) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/+p/f", u"/a/private/f", u"/b/f", u"/b/resources/f"});
  const auto path = storage.Path({u"/a", u"/b"});

  EXPECT_EQ(First(*path, Exactly(u"f"), kNative, Only(PathEntryType::Main)), "/b: f");
  EXPECT_EQ(First(*path, Exactly(u"f"), kNative, Only(PathEntryType::Package)), "/a/+p: f");
  EXPECT_EQ(First(*path, Exactly(u"f"), kNative, kNoKind), "none");
  EXPECT_THAT(All(*path, Exactly(u"f")), ElementsAre("/a/private: f", "/a/+p: f", "/b: f", "/b/resources: f"));
}

TEST(FolderPathLookup, FindsAllInWalkOrderThenByExtensionThenByName) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f.x", u"/a/f.y", u"/a/F.y", u"/a/@c/f.x", u"/b/f.y", u"/b/f"});
  const auto path = storage.Path({u"/b", u"/a"});

  EXPECT_THAT(All(*path, {u"f", {u".y", u".x"}}, kCaseInsensitive),
              ElementsAre("/b: f.y", "/a: F.y", "/a: f.y", "/a: f.x", "/a/@c: f.x"));
  EXPECT_THAT(All(*path, {u"f", {u".x", u".y"}}), ElementsAre("/b: f.y", "/a: f.x", "/a: f.y", "/a/@c: f.x"));
  EXPECT_THAT(All(*path, {u"f", {u".y", u".Y", u".y"}}, kCaseInsensitive),
              ElementsAre("/b: f.y", "/a: F.y", "/a: f.y"));
}

TEST(FolderPathLookup, FindsAFileHoweverItsNameIsCut) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/data.tar.gz", u"/b/data.gz"});
  const auto path = storage.Path({u"/b", u"/a"});

  for (const auto policy : {kCaseSensitive, kCaseInsensitive, kNative}) {
    EXPECT_EQ(First(*path, {u"data", {u".tar.gz"}}, policy), "/a: data.tar.gz");
    EXPECT_EQ(First(*path, {u"data.tar", {u".gz"}}, policy), "/a: data.tar.gz");
    EXPECT_EQ(First(*path, {u"data.tar.gz", {u""}}, policy), "/a: data.tar.gz");
    EXPECT_THAT(All(*path, {u"data", {u".tar.gz", u".gz"}}, policy), ElementsAre("/b: data.gz", "/a: data.tar.gz"));
  }
}

TEST(FolderPathLookup, IgnoresLetterCaseWhereEitherThePolicyOrTheFolderDoes) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/Foo.X"});
  const auto path = storage.Path({u"/a"});

  EXPECT_EQ(First(*path, {u"foo", {u".x"}}, kCaseSensitive), "none");
  EXPECT_EQ(First(*path, {u"foo", {u".x"}}, kNative), "none");
  EXPECT_EQ(First(*path, {u"foo", {u".x"}}, kUnknownPolicy), "none");
  EXPECT_EQ(First(*path, {u"foo", {u".x"}}, kCaseInsensitive), "/a: Foo.X");
}

TEST(FolderPathLookup, ComparesInEachFolderAsThatFolderDoes) {
  MemoryStorage exact;
  exact.WithFiles({u"/a/FOO", u"/b/foo"});
  MemoryStorage ignoringCase(NameComparison::IgnoreCase, u"loose");
  ignoringCase.WithFiles({u"/loose/Foo"});

  const auto path = ReadPath({InMemory(u"/a"), InMemory(u"/loose", u"loose"), InMemory(u"/b")});

  EXPECT_THAT(All(*path, Exactly(u"foo"), kNative), ElementsAre("/loose: Foo", "/b: foo"));
  EXPECT_THAT(All(*path, Exactly(u"foo"), kUnknownPolicy), ElementsAre("/loose: Foo", "/b: foo"));
  EXPECT_THAT(All(*path, Exactly(u"foo"), kCaseSensitive), ElementsAre("/b: foo"));
  EXPECT_THAT(All(*path, Exactly(u"foo"), kCaseInsensitive), ElementsAre("/a: FOO", "/loose: Foo", "/b: foo"));
}

TEST(FolderPathLookup, MatchesNothingWithAnEmptyBaseNameOrWithoutExtensions) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/.hidden", u"/a/f"});
  const auto path = storage.Path({u"/a"});

  for (const auto policy : {kCaseSensitive, kCaseInsensitive, kNative}) {
    EXPECT_EQ(First(*path, {u"", {u".hidden", u"f", u""}}, policy), "none");
    EXPECT_THAT(All(*path, {u"", {u".hidden", u"f", u""}}, policy), IsEmpty());
    EXPECT_EQ(First(*path, {u"f", {}}, policy), "none");
  }
}

TEST(FolderPathLookup, MatchesThePartBeforeTheLastSeparatorWithTheEntry) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f", u"/a/+p/f", u"/a/+p/@c/f", u"/a/@c/f", u"/b/a/f"});
  const auto path = storage.Path({u"/a", u"/b/a"});

  EXPECT_EQ(First(*path, Exactly(u"+p/f")), "/a/+p: f");
  EXPECT_EQ(First(*path, Exactly(u"p/f")), "/a/+p: f");
  EXPECT_EQ(First(*path, Exactly(u"c/f")), "/a/@c: f");
  EXPECT_EQ(First(*path, Exactly(u"p/c/f")), "/a/+p/@c: f");
  EXPECT_EQ(First(*path, Exactly(u"p//@c/f")), "/a/+p/@c: f");
  EXPECT_THAT(All(*path, Exactly(u"a/f")), ElementsAre("/a: f", "/b/a: f"));
  EXPECT_THAT(All(*path, Exactly(u"b/a/f")), ElementsAre("/b/a: f"));
  EXPECT_EQ(First(*path, Exactly(u"nowhere/f")), "none");
}

TEST(FolderPathLookup, WantsEveryPackageNamedThatEnclosesTheFile) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/+p/+q/f"});
  const auto path = storage.Path({u"/a"});

  EXPECT_EQ(First(*path, Exactly(u"q/f")), "none");
  EXPECT_EQ(First(*path, Exactly(u"p/q/f")), "/a/+p/+q: f");
}

TEST(FolderPathLookup, TakesALeadingSeparatorForTheBeginningOfTheWholePath) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f", u"/b/a/f", u"/f", u"/a/+p/f"});
  const auto path = storage.Path({u"/b/a", u"/a", u"/"});

  EXPECT_THAT(All(*path, Exactly(u"/a/f")), ElementsAre("/a: f"));
  EXPECT_THAT(All(*path, Exactly(u"//a//f")), ElementsAre("/a: f"));
  EXPECT_THAT(All(*path, Exactly(u"/f")), ElementsAre("/: f"));
  EXPECT_THAT(All(*path, Exactly(u"/a/+p/f")), ElementsAre("/a/+p: f"));
  EXPECT_THAT(All(*path, Exactly(u"/a/p/f")), IsEmpty()) << "a whole path is spelled as it is";
  EXPECT_THAT(All(*path, Exactly(u"/A/F"), kCaseInsensitive), ElementsAre("/a: f"));
}

TEST(FolderPathLookup, MatchesNothingWithATrailingSeparator) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f", u"/a/+p/f", u"/f"});
  const auto path = storage.Path({u"/a", u"/"});

  for (const auto* name : {u"f/", u"/a/", u"a/", u"/", u"//", u"p/f//"}) {
    EXPECT_EQ(First(*path, {name, {u"", u"f", u".x"}}), "none");
    EXPECT_THAT(All(*path, {name, {u"", u"f", u".x"}}), IsEmpty());
  }
}

TEST(FolderPathLookup, NeverLooksIntoPlainSubfolders) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/sub/f"});
  const auto path = storage.Path({u"/a"});

  EXPECT_EQ(First(*path, Exactly(u"f")), "none");
  EXPECT_EQ(First(*path, Exactly(u"sub/f")), "none");
  EXPECT_EQ(First(*path, Exactly(u"/a/sub/f")), "none");
}

TEST(FolderPathLookup, ReturnsTheEntryItselfAndAnItemThatTellsWhereItIs) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/+p/name.tar.gz"});
  const auto path = storage.Path({u"/a"});

  const auto found = path->FindFirstInScope(kEveryKind, Wanted{u"name", {u".tar.gz"}}.Target(), kNative);

  ASSERT_TRUE(found);
  EXPECT_EQ(found->GetPathEntry(), path->GetMethodEntries()[0]);
  EXPECT_EQ(found->GetPathItem()->baseName, u"name.tar");
  EXPECT_EQ(found->GetPathItem()->extension, u".gz");
  EXPECT_EQ(found->GetPathItem()->folderIRI, InMemory(u"/a/+p"));
}

TEST(FolderPathLookup, GivesTheEntriesThatAPartialPathnameNames) {
  MemoryStorage storage;
  storage.WithFolders({u"/a/+p/@c", u"/a/@c", u"/x/a"});
  const auto path = storage.Path({u"/a", u"/x/a"});
  const auto matching = [&path](const std::u16string& text, SearchScope scope = kEveryKind) {
    return AllShown(path->GetPartiallyMatchingEntries(scope, text, kNative));
  };

  EXPECT_THAT(matching(u"a"), ElementsAre("/a", "/x/a"));
  EXPECT_THAT(matching(u"a/"), ElementsAre("/a", "/x/a"));
  EXPECT_THAT(matching(u"x/a"), ElementsAre("/x/a"));
  EXPECT_THAT(matching(u"c"), ElementsAre("/a/@c"));
  EXPECT_THAT(matching(u"p/c"), ElementsAre("/a/+p/@c"));
  EXPECT_THAT(matching(u"p/c", Only(PathEntryType::Main)), IsEmpty());
  EXPECT_THAT(matching(u"/a"), ElementsAre("/a"));
  EXPECT_THAT(matching(u"/a/+p/"), ElementsAre("/a/+p"));
  EXPECT_THAT(matching(u"A"), IsEmpty());
}

TEST(FolderPathLookup, GivesEveryEntryOutsidePackagesForAnEmptyPartialPathname) {
  MemoryStorage storage;
  storage.WithFolders({u"/a/+p/@c", u"/a/@c/private"});
  const auto path = storage.Path({u"/a"});

  EXPECT_THAT(AllShown(path->GetPartiallyMatchingEntries(kEveryKind, u"", kNative)),
              ElementsAre("/a", "/a/@c", "/a/@c/private"));
}

TEST(FolderPathLookup, FindsAPartialPathnameAmongManyFoldersThatHoldTheFile) {
  MemoryStorage storage;
  std::vector<std::u16string> folders;
  for (std::size_t number = 0; number < 50; ++number) {
    const std::string digits = std::to_string(number);
    const std::u16string name(digits.begin(), digits.end());
    folders.push_back(u"/f" + name);
    storage.WithFiles({folders.back() + u"/+p" + name + u"/init.x", folders.back() + u"/+common/init.x"});
  }
  const auto path = storage.Path(folders);
  const auto first = [&](const std::u16string& name, FilenameMatchingPolicy policy) {
    return Shown(path->FindFirstInScope(kEveryKind, Wanted{name, {u".x"}}.Target(), policy));
  };

  EXPECT_EQ(first(u"p37/init", kNative), "/f37/+p37: init.x");
  EXPECT_EQ(first(u"+p37/init", kCaseSensitive), "/f37/+p37: init.x");
  EXPECT_EQ(first(u"P37/INIT", kCaseInsensitive), "/f37/+p37: init.x");
  EXPECT_EQ(first(u"P37/init", kNative), "none");
  EXPECT_EQ(first(u"f9/common/init", kNative), "/f9/+common: init.x");
  EXPECT_EQ(first(u"common/init", kNative), "/f0/+common: init.x");
  EXPECT_EQ(first(u"p37/other", kNative), "none");
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
