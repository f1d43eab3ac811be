// Finding files by name.

#include <algorithm>

#include "path_contract.hpp"

namespace Quorvex::PathManagement::contract {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::NotNull;

const std::vector<Wanted>& PlainLookups() {
  static const std::vector<Wanted> lookups = {{u"foo"},
                                              {u"FOO", {u".VNX"}},
                                              {u"foo", {u".x", u".vnx"}},
                                              {u"foo.vnx", {u""}},
                                              {u"fo", {u"o.vnx"}},
                                              {u"twice", {u".x", u".vnx"}},
                                              {u"twice", {u".vnx", u".x", u".vnx"}},
                                              {u"late", {u".vnx", u".x"}},
                                              {u"method"},
                                              {u"secret"},
                                              {u"picture"},
                                              {u"lost"},
                                              {u"missing"},
                                              {u"", {u"foo.vnx", u""}},
                                              {u"foo", {}}};
  return lookups;
}

std::vector<Wanted> EveryLookup() {
  std::vector<Wanted> lookups = PlainLookups();
  for (const auto& name : {u"a/foo", u"pkg/inner", u"+pkg/inner", u"Cls/method", u"CLS/METHOD", u"pkg/Cls/foo",
                           u"private/secret", u"plain/lost", u"nowhere/foo", u"pkg/", u"/", u"/foo"}) {
    lookups.push_back({name});
  }
  return lookups;
}

const std::vector<SearchScope>& EachScope() {
  static const std::vector<SearchScope> scopes = {kEveryKind,
                                                  MainScope,
                                                  VisibleScope,
                                                  Only(PathEntryType::Package),
                                                  Only(PathEntryType::Class),
                                                  Only(PathEntryType::Private),
                                                  Only(PathEntryType::Resources),
                                                  kNoKind};
  return scopes;
}

/// Calls `check(wanted, scope, policy)` with all there is.
template <class Check>
void WithEach(const std::vector<Wanted>& lookups, const Check& check) {
  for (const Wanted& wanted : lookups) {
    SCOPED_TRACE(testing::PrintToString(wanted));
    for (const SearchScope scope : EachScope()) {
      for (const FilenameMatchingPolicy policy : kEachPolicy) check(wanted, scope, policy);
    }
  }
}

TEST_P(PathContract, FindsFirstWhatComesFirstOfAllThatItFinds) {
  WithEach(EveryLookup(), [&](const Wanted& wanted, SearchScope scope, FilenameMatchingPolicy policy) {
    const auto first = Path().FindFirstInScope(scope, wanted.Target(), policy);
    const auto all = Path().FindAllInScope(scope, wanted.Target(), policy);

    ASSERT_EQ(first.has_value(), !all.empty());
    if (!first) return;
    EXPECT_TRUE(*first == all.front()) << Shown(*first) << " and " << Shown(all.front());
  });
}

TEST_P(PathContract, FindsFilesInTheEntriesThatHoldThemInPathOrder) {
  WithEach(PlainLookups(), [&](const Wanted& wanted, SearchScope scope, FilenameMatchingPolicy policy) {
    std::vector<EntryPtr> expected = EntriesIn(scope);
    std::erase_if(expected,
                  [&](const EntryPtr& entry) { return entry->FindFirst(wanted.Target(), policy) == nullptr; });

    std::vector<EntryPtr> holders;
    for (const FoundItem& found : Path().FindAllInScope(scope, wanted.Target(), policy)) {
      holders.push_back(found.GetPathEntry());
    }
    holders.erase(std::unique(holders.begin(), holders.end()), holders.end());

    EXPECT_EQ(Shown(holders), Shown(expected));
    EXPECT_EQ(holders, expected);
  });
}

TEST_P(PathContract, FindsFirstWhatTheFirstEntryFindsFirst) {
  WithEach(PlainLookups(), [&](const Wanted& wanted, SearchScope scope, FilenameMatchingPolicy policy) {
    const auto found = Path().FindFirstInScope(scope, wanted.Target(), policy);
    if (!found) return;

    const auto item = found->GetPathEntry()->FindFirst(wanted.Target(), policy);
    ASSERT_THAT(item, NotNull());
    EXPECT_TRUE(*found == FoundItem(item, found->GetPathEntry())) << Shown(found);
  });
}

TEST_P(PathContract, FindsItemsOfItsOwnEntriesInTheScope) {
  WithEach(EveryLookup(), [&](const Wanted& wanted, SearchScope scope, FilenameMatchingPolicy policy) {
    for (const FoundItem& found : Path().FindAllInScope(scope, wanted.Target(), policy)) {
      const EntryPtr entry = found.GetPathEntry();
      const auto items = entry->GetItems();

      EXPECT_TRUE(Path().IsEntryOnPath(*entry)) << Shown(found);
      EXPECT_TRUE(scope.Contains(entry->GetEntryType())) << Shown(found);
      EXPECT_EQ(found.GetPathItem()->folderIRI, entry->GetAbsoluteIRI());
      EXPECT_TRUE(std::any_of(items->begin(), items->end(), [&](const auto& item) {
        return FoundItem(item, entry) == found;
      })) << Shown(found);
    }
  });
}

TEST_P(PathContract, FindsEachFileOnce) {
  WithEach(EveryLookup(), [&](const Wanted& wanted, SearchScope scope, FilenameMatchingPolicy policy) {
    const auto all = Path().FindAllInScope(scope, wanted.Target(), policy);

    for (const FoundItem& found : all) EXPECT_EQ(std::count(all.begin(), all.end(), found), 1) << Shown(found);
  });
}

TEST_P(PathContract, ComparesNativelyOneWayOrTheOtherAndSoUnderPoliciesItDoesNotKnow) {
  constexpr auto unknown = static_cast<FilenameMatchingPolicy>(77);
  for (const Wanted& wanted : EveryLookup()) {
    const auto find = [&](FilenameMatchingPolicy policy) {
      return Shown(Path().FindAllInScope(VisibleScope, wanted.Target(), policy));
    };

    EXPECT_THAT(find(kNative), testing::AnyOf(find(kCaseSensitive), find(kCaseInsensitive)));
    EXPECT_EQ(find(unknown), find(kNative));
  }
}

TEST_P(PathContract, FindsTheFirstFileOfANameAmongMainEntries) {
  EXPECT_EQ(Shown(Path().FindFirstInScope(MainScope, Wanted{u"foo"}.Target(), kCaseSensitive)), "/a/foo.vnx");
  EXPECT_THAT(Shown(Path().FindAllInScope(MainScope, Wanted{u"foo"}.Target(), kCaseSensitive)),
              ElementsAre("/a/foo.vnx", "/d/foo.vnx"));
}

TEST_P(PathContract, FindsFilesInAnyLetterCaseOnlyWhenAskedTo) {
  EXPECT_EQ(Shown(Path().FindFirstInScope(MainScope, Wanted{u"FOO"}.Target(), kCaseSensitive)), "/b/FOO.vnx");
  EXPECT_THAT(Shown(Path().FindAllInScope(MainScope, Wanted{u"FOO"}.Target(), kCaseInsensitive)),
              ElementsAre("/a/foo.vnx", "/b/FOO.vnx", "/d/foo.vnx"));
}

TEST_P(PathContract, FindsAnEarlierFolderBeforeAnEarlierExtension) {
  const Wanted wanted{u"late", {u".vnx", u".x"}};

  EXPECT_THAT(Shown(Path().FindAllInScope(MainScope, wanted.Target(), kNative)),
              ElementsAre("/b/late.x", "/d/late.vnx"));
}

TEST_P(PathContract, FindsFilesOfOneFolderInTheOrderOfTheExtensions) {
  EXPECT_THAT(Shown(Path().FindAllInScope(MainScope, Wanted{u"twice", {u".x", u".vnx"}}.Target(), kNative)),
              ElementsAre("/a/twice.x", "/a/twice.vnx"));
  EXPECT_THAT(Shown(Path().FindAllInScope(MainScope, Wanted{u"twice", {u".vnx", u".x"}}.Target(), kNative)),
              ElementsAre("/a/twice.vnx", "/a/twice.x"));
}

TEST_P(PathContract, FindsAFullFileNameHoweverNameAndExtensionAreCut) {
  for (const Wanted& wanted :
       std::vector<Wanted>{{u"secret.vnx", {u""}}, {u"secret", {u".vnx"}}, {u"s", {u"ecret.vnx"}}}) {
    EXPECT_EQ(Shown(Path().FindFirstInScope(VisibleScope, wanted.Target(), kNative)), "/a/private/secret.vnx");
  }
}

TEST_P(PathContract, FindsNoResourcesAmongWhatIsVisible) {
  EXPECT_EQ(Shown(Path().FindFirstInScope(VisibleScope, Wanted{u"picture"}.Target(), kNative)), "none");
  EXPECT_EQ(Shown(Path().FindFirstInScope(kEveryKind, Wanted{u"picture"}.Target(), kNative)),
            "/a/resources/picture.vnx");
}

TEST_P(PathContract, FindsAFileBelowThePartialPathnameThatStandsBeforeItsName) {
  const auto find = [this](const std::u16string& name, FilenameMatchingPolicy policy = kCaseSensitive) {
    return Shown(Path().FindAllInScope(VisibleScope, Wanted{name}.Target(), policy));
  };

  EXPECT_THAT(find(u"a/foo"), ElementsAre("/a/foo.vnx"));
  EXPECT_THAT(find(u"pkg/inner"), ElementsAre("/a/+pkg/inner.vnx"));
  EXPECT_THAT(find(u"+pkg/sub/deep"), ElementsAre("/a/+pkg/+sub/deep.vnx"));
  EXPECT_THAT(find(u"Cls/method"), ElementsAre("/a/@Cls/method.vnx", "/b/@Cls/method.vnx"));
  EXPECT_THAT(find(u"CLS/method"), IsEmpty());
  EXPECT_THAT(find(u"CLS/METHOD", kCaseInsensitive), ElementsAre("/a/@Cls/method.vnx", "/b/@Cls/method.vnx"));
  EXPECT_THAT(find(u"plain/lost"), IsEmpty());
}

TEST_P(PathContract, FindsNothingForAnEmptyNameOrWithoutExtensions) {
  for (const Wanted& wanted : std::vector<Wanted>{
           {u"", {u"foo.vnx", u".vnx", u""}}, {u"pkg/", {u"foo.vnx", u".vnx", u""}}, {u"/", {u""}}, {u"foo", {}}}) {
    EXPECT_EQ(Shown(Path().FindFirstInScope(kEveryKind, wanted.Target(), kNative)), "none");
    EXPECT_THAT(Path().FindAllInScope(kEveryKind, wanted.Target(), kNative), IsEmpty());
  }
}

TEST_P(PathContract, FindsNothingWithoutFolders) {
  const PathPtr path = Make({});

  EXPECT_FALSE(path->FindFirstInScope(kEveryKind, Wanted{u"foo"}.Target(), kNative).has_value());
  EXPECT_THAT(path->FindAllInScope(kEveryKind, Wanted{u"foo"}.Target(), kNative), IsEmpty());
}

}  // namespace
}  // namespace Quorvex::PathManagement::contract
