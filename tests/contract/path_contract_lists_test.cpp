// Which entries a path has, and how they belong together.

#include <algorithm>

#include "path_contract.hpp"

namespace Quorvex::PathManagement::contract {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::NotNull;
using testing::UnorderedElementsAre;

std::vector<EntryPtr> ChildrenOf(const IPathEntry& entry) {
  std::vector<EntryPtr> children = {entry.GetPrivateEntry(), entry.GetSecondSingleEntry()};
  for (const auto& group : {entry.GetFirstEntryGroup(), entry.GetSecondEntryGroup(), entry.GetThirdEntryGroup()}) {
    children.insert(children.end(), group->begin(), group->end());
  }
  std::erase(children, nullptr);
  return children;
}

TEST_P(PathContract, ListsItsFoldersInTheOrderGiven) {
  EXPECT_THAT(Shown(*Path().GetMainEntries()), ElementsAre("/a", "/b", "/c", "/d"));
  for (const EntryPtr& entry : MainEntries()) EXPECT_EQ(entry->GetEntryType(), PathEntryType::Main);
}

TEST_P(PathContract, KeepsTheOrderGivenEvenIfNamesWouldSortOtherwise) {
  const PathPtr path = Make({Folder("/z"), Folder("/m"), Folder("/A"), Folder("/k")});

  const std::vector<EntryPtr> mainEntries = *path->GetMainEntries();

  std::vector<std::u16string> names;
  for (const EntryPtr& entry : mainEntries) names.push_back(entry->GetAbsoluteIRI().getName());
  EXPECT_THAT(names, ElementsAre(u"z", u"m", u"A", u"k"));
}

TEST_P(PathContract, ListsTheSpecialSubfoldersOfAllFolders) {
  EXPECT_THAT(Shown(Path().GetMethodEntries()),
              UnorderedElementsAre("/a/private", "/a/resources", "/a/@Cls", "/a/@Cls/private", "/a/+pkg",
                                   "/a/+pkg/@Cls", "/a/+pkg/+sub", "/b/@Cls", "/b/@Other", "/d/private"));
}

TEST_P(PathContract, ListsMethodEntriesInPathOrder) {
  const std::vector<EntryPtr> entries = Path().GetMethodEntries();

  EXPECT_TRUE(std::is_sorted(entries.begin(), entries.end(), [this](const EntryPtr& left, const EntryPtr& right) {
    return Path().FirstEntryIsBeforeSecondOnPath(*left, *right);
  }));
}

TEST_P(PathContract, GivesTheSameEntriesWheneverItIsAsked) {
  EXPECT_EQ(*Path().GetMainEntries(), *Path().GetMainEntries());
  EXPECT_EQ(Path().GetMethodEntries(), Path().GetMethodEntries());
}

TEST_P(PathContract, HasEveryEntryThatItLists) {
  for (const EntryPtr& entry : MainEntries()) EXPECT_TRUE(Path().IsEntryOnPath(*entry)) << Shown(entry);
  for (const EntryPtr& entry : Path().GetMethodEntries()) EXPECT_TRUE(Path().IsEntryOnPath(*entry)) << Shown(entry);
}

TEST_P(PathContract, HasNoEntryOfAnotherPathEvenWithTheSameFolders) {
  const PathPtr other = Make(SampleContent());
  const std::vector<EntryPtr> strangers = *other->GetMainEntries();

  for (const EntryPtr& stranger : strangers) EXPECT_FALSE(Path().IsEntryOnPath(*stranger));
  for (const EntryPtr& stranger : other->GetMethodEntries()) EXPECT_FALSE(Path().IsEntryOnPath(*stranger));
}

TEST_P(PathContract, CountsAMainEntryAsItsOwnAndAsNobodysChild) {
  for (const EntryPtr& entry : MainEntries()) {
    EXPECT_EQ(Path().GetMainEntryForEntry(*entry), entry) << Shown(entry);
    EXPECT_EQ(Path().GetParentEntryForEntry(*entry), nullptr) << Shown(entry);
  }
}

TEST_P(PathContract, KnowsTheMainEntryOfEachMethodEntry) {
  for (const EntryPtr& entry : Path().GetMethodEntries()) {
    const std::string place = Shown(entry);
    EXPECT_EQ(Shown(Path().GetMainEntryForEntry(*entry)), place.substr(0, place.find('/', 1)));
    EXPECT_THAT(*Path().GetMainEntries(), Contains(Path().GetMainEntryForEntry(*entry)));
  }
}

TEST_P(PathContract, KnowsTheEntryThatEnclosesAMethodEntry) {
  for (const EntryPtr& entry : Path().GetMethodEntries()) {
    const EntryPtr parent = Path().GetParentEntryForEntry(*entry);

    ASSERT_THAT(parent, NotNull()) << Shown(entry);
    EXPECT_EQ(parent->GetAbsoluteIRI(), entry->GetAbsoluteIRI().getParent());
    EXPECT_THAT(ChildrenOf(*parent), Contains(entry)) << Shown(entry);
    EXPECT_EQ(Path().GetMainEntryForEntry(*parent), Path().GetMainEntryForEntry(*entry)) << Shown(entry);
  }
}

TEST_P(PathContract, HasEveryEntryThatItsEntriesHold) {
  for (const EntryPtr& entry : Entries()) {
    for (const EntryPtr& child : ChildrenOf(*entry)) {
      EXPECT_THAT(Path().GetMethodEntries(), Contains(child)) << Shown(child);
      EXPECT_EQ(Path().GetParentEntryForEntry(*child), entry) << Shown(child);
    }
  }
}

TEST_P(PathContract, LeavesItsEntriesToWhoHoldsThem) {
  PathPtr path = Make(SampleContent());
  const auto mainEntries = path->GetMainEntries();
  const std::vector<EntryPtr> methodEntries = path->GetMethodEntries();

  path.reset();

  EXPECT_EQ(mainEntries->front()->GetAbsoluteIRI().getName(), u"a");
  EXPECT_THAT(mainEntries->front()->FindFirst(Wanted{u"foo"}.Target(), kCaseSensitive), NotNull());
  for (const EntryPtr& entry : methodEntries) EXPECT_THAT(entry->GetItems(), NotNull());
}

TEST_P(PathContract, SelectsClassFoldersByTheirNameAndTheKindOfWhatHoldsThem) {
  const auto select = [this](SearchScope scope) {
    return Shown(Path().GetMethodEntriesByName(scope, u"Cls", kCaseSensitive));
  };

  EXPECT_THAT(select(MainScope), ElementsAre("/a/@Cls", "/b/@Cls"));
  EXPECT_THAT(select(Only(PathEntryType::Package)), ElementsAre("/a/+pkg/@Cls"));
  EXPECT_THAT(select(VisibleScope), ElementsAre("/a/@Cls", "/a/+pkg/@Cls", "/b/@Cls"));
  EXPECT_THAT(select(Only(PathEntryType::Class)), IsEmpty());
  EXPECT_THAT(select(kNoKind), IsEmpty());
}

TEST_P(PathContract, SelectsNoClassFolderByAnyOtherName) {
  for (const FilenameMatchingPolicy policy : kEachPolicy) {
    for (const auto& name : {u"", u"@Cls", u"Cl", u"Class", u"pkg", u"private", u"a", u"foo"}) {
      EXPECT_THAT(Path().GetMethodEntriesByName(kEveryKind, name, policy), IsEmpty());
    }
  }
}

TEST_P(PathContract, SelectsClassFoldersInAnyLetterCaseOnlyWhenAskedTo) {
  EXPECT_THAT(Path().GetMethodEntriesByName(MainScope, u"cLS", kCaseSensitive), IsEmpty());
  EXPECT_EQ(Path().GetMethodEntriesByName(MainScope, u"cLS", kCaseInsensitive),
            Path().GetMethodEntriesByName(MainScope, u"Cls", kCaseSensitive));
}

TEST_P(PathContract, MatchesPartialPathnamesAgainstTheEndsOfItsFolders) {
  const auto match = [this](const std::u16string& partial, SearchScope scope = kEveryKind) {
    return Shown(Path().GetPartiallyMatchingEntries(scope, partial, kCaseSensitive));
  };

  EXPECT_THAT(match(u"a"), ElementsAre("/a"));
  EXPECT_THAT(match(u"pkg"), ElementsAre("/a/+pkg"));
  EXPECT_THAT(match(u"a/+pkg"), ElementsAre("/a/+pkg"));
  EXPECT_THAT(match(u"pkg/sub"), ElementsAre("/a/+pkg/+sub"));
  EXPECT_THAT(match(u"pkg/Cls"), ElementsAre("/a/+pkg/@Cls"));
  EXPECT_THAT(match(u"Cls"), ElementsAre("/a/@Cls", "/b/@Cls"));
  EXPECT_THAT(match(u"private"), UnorderedElementsAre("/a/private", "/a/@Cls/private", "/d/private"));
  EXPECT_THAT(match(u"private", MainScope), IsEmpty());
  EXPECT_THAT(match(u"sub"), IsEmpty()) << "an enclosing package must be named";
  EXPECT_THAT(match(u"plain"), IsEmpty()) << "a plain subfolder is no entry";
  EXPECT_THAT(match(u"nowhere"), IsEmpty());
}

TEST_P(PathContract, MatchesPartialPathnamesInAnyLetterCaseOnlyWhenAskedTo) {
  EXPECT_THAT(Path().GetPartiallyMatchingEntries(kEveryKind, u"PKG", kCaseSensitive), IsEmpty());
  EXPECT_THAT(Shown(Path().GetPartiallyMatchingEntries(kEveryKind, u"PKG", kCaseInsensitive)), ElementsAre("/a/+pkg"));
}

TEST_P(PathContract, MatchesPartialPathnamesInPathOrderAndInTheScope) {
  for (const PathEntryType kind : kEachKind) {
    for (const auto& partial : {u"private", u"Cls", u"pkg/Cls", u"a", u"d"}) {
      const auto entries = Path().GetPartiallyMatchingEntries(Only(kind), partial, kNative);
      for (const EntryPtr& entry : entries) EXPECT_EQ(entry->GetEntryType(), kind) << Shown(entry);
      EXPECT_TRUE(std::is_sorted(entries.begin(), entries.end(), [this](const EntryPtr& left, const EntryPtr& right) {
        return Path().FirstEntryIsBeforeSecondOnPath(*left, *right);
      }));
    }
  }
}

TEST_P(PathContract, HasNothingToListWithoutFolders) {
  const PathPtr path = Make({});

  ASSERT_THAT(path->GetMainEntries(), NotNull());
  EXPECT_THAT(*path->GetMainEntries(), IsEmpty());
  EXPECT_THAT(path->GetMethodEntries(), IsEmpty());
  EXPECT_THAT(path->GetMethodEntriesByName(kEveryKind, u"Cls", kNative), IsEmpty());
  EXPECT_THAT(path->GetPartiallyMatchingEntries(kEveryKind, u"a", kNative), IsEmpty());
}

TEST_P(PathContract, HasNoEntryWithoutFolders) { EXPECT_FALSE(Make({})->IsEntryOnPath(*At("/a"))); }

}  // namespace
}  // namespace Quorvex::PathManagement::contract
