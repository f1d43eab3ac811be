// Whether folder names, compared strictly from the end, name a folder given as text or as an entry.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <foundation/storage/vfs/exception.hpp>
#include <functional>
#include <memory>
#include <search_path_utilities/lookup.hpp>
#include <string>
#include <support/fake_entry.hpp>
#include <utility>
#include <vector>

namespace Quorvex::PathManagement {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using support::CallLog;
using support::FakeBehaviour;
using support::FakeEntry;
using testing::ElementsAre;

using Names = std::vector<std::u16string>;
using Comparison = std::function<bool(const std::u16string&, const std::u16string&)>;

const Comparison equal = std::equal_to<std::u16string>();
const Comparison always = [](const std::u16string&, const std::u16string&) { return true; };

bool Matches(const Names& partial, const std::u16string& folder, const Comparison& comparator = equal) {
  return DoesPartialPathnameStrictlyMatchPathString(partial, folder, comparator);
}

std::shared_ptr<const FakeEntry> EntryAt(const std::u16string& iri, const FakeBehaviour& behaviour = {}) {
  return FakeEntry::Create(AbsoluteIRI(iri), PathEntryType::Main, support::Folder("unnamed"), behaviour);
}

bool MatchesEntry(const Names& partial, const IPathEntry& entry,
                  FilenameMatchingPolicy policy = FilenameMatchingPolicy::Native) {
  return DoesPartialPathnameStrictlyMatchPathEntryIRI(partial, entry, policy);
}

TEST(StrictPartialPathname, MatchesTheLastFoldersBelowAPlainOne) {
  EXPECT_TRUE(Matches({u"c"}, u"/a/b/c"));
  EXPECT_TRUE(Matches({u"b", u"c"}, u"/a/b/c"));
  EXPECT_FALSE(Matches({u"a", u"c"}, u"/a/b/c"));
  EXPECT_FALSE(Matches({u"b"}, u"/a/b/c"));
}

TEST(StrictPartialPathname, MatchesTheWholeText) {
  EXPECT_TRUE(Matches({u"a", u"b", u"c"}, u"/a/b/c"));
  EXPECT_TRUE(Matches({u"+p", u"@C"}, u"+p/@C"));
  EXPECT_TRUE(Matches({}, u""));
  EXPECT_TRUE(Matches({}, u"//"));
}

TEST(StrictPartialPathname, DoesNotMatchWhenItIsLongerThanTheFolder) {
  EXPECT_FALSE(Matches({u"a", u"b"}, u"b"));
  EXPECT_FALSE(Matches({u"", u"b"}, u"/b"));
  EXPECT_FALSE(Matches({u"b"}, u""));
}

TEST(StrictPartialPathname, CountsNeitherARootNorEmptyNamesAsFolders) {
  EXPECT_TRUE(Matches({u"a", u"b"}, u"//a///b/"));
  EXPECT_TRUE(Matches({u"a", u"b"}, u"a/b"));
}

TEST(StrictPartialPathname, WantsAPackageWithItsMark) {
  EXPECT_TRUE(Matches({u"+pkg"}, u"/a/+pkg"));
  EXPECT_FALSE(Matches({u"pkg"}, u"/a/+pkg"));
  EXPECT_FALSE(Matches({u"@pkg"}, u"/a/+pkg"));
  EXPECT_FALSE(Matches({u"+pkg"}, u"/a/pkg"));
}

TEST(StrictPartialPathname, TakesAClassWithOrWithoutItsMark) {
  EXPECT_TRUE(Matches({u"@Cls"}, u"/a/@Cls"));
  EXPECT_TRUE(Matches({u"Cls"}, u"/a/@Cls"));
  EXPECT_FALSE(Matches({u"+Cls"}, u"/a/@Cls"));
  EXPECT_FALSE(Matches({u"@Cls"}, u"/a/Cls"));
  EXPECT_TRUE(Matches({u"@@Cls"}, u"/a/@@Cls"));
  EXPECT_FALSE(Matches({u"@Cls"}, u"/a/@@Cls"));
}

TEST(StrictPartialPathname, ComparesPackagesClassesAndPrivateFoldersExactlyWhateverTheComparator) {
  EXPECT_FALSE(Matches({u"+PKG"}, u"/a/+pkg", always));
  EXPECT_FALSE(Matches({u"cls"}, u"/a/@Cls", always));
  EXPECT_FALSE(Matches({u"@cls"}, u"/a/@Cls", always));
  EXPECT_FALSE(Matches({u"Private"}, u"/a/private", always));
  EXPECT_TRUE(Matches({u"private"}, u"/a/private", always));
}

TEST(StrictPartialPathname, LeavesEveryOtherNameToTheComparator) {
  EXPECT_TRUE(Matches({u"x"}, u"/a/plain", always));
  EXPECT_TRUE(Matches({u"x"}, u"/a/resources", always));
  EXPECT_TRUE(Matches({u"x"}, u"/a/Private", always));
  EXPECT_FALSE(Matches({u"Plain"}, u"/a/plain"));
}

TEST(StrictPartialPathname, AsksTheComparatorFromTheEndWithTheWantedNameFirst) {
  Names asked;
  const Comparison recorded = [&](const std::u16string& wanted, const std::u16string& folder) {
    asked.push_back(wanted + u"=" + folder);
    return true;
  };

  EXPECT_TRUE(Matches({u"x", u"+p", u"private", u"y"}, u"/a/+p/private/c", recorded));
  EXPECT_THAT(asked, ElementsAre(u"y=c", u"x=a"));
}

TEST(StrictPartialPathname, StopsAtTheFirstDifference) {
  Names asked;
  const Comparison recorded = [&](const std::u16string& wanted, const std::u16string&) {
    asked.push_back(wanted);
    return false;
  };

  EXPECT_FALSE(Matches({u"a", u"x"}, u"/a/b", recorded));
  EXPECT_THAT(asked, ElementsAre(u"x"));
}

TEST(StrictPartialPathname, MustStartRightBelowAPlainFolder) {
  EXPECT_FALSE(Matches({u"f"}, u"/a/+pkg/f"));
  EXPECT_FALSE(Matches({u"b"}, u"/a/@C/b"));
  EXPECT_FALSE(Matches({u"b"}, u"/a/private/b"));
  EXPECT_FALSE(Matches({u"b"}, u"/a/resources/b"));
  EXPECT_TRUE(Matches({u"b"}, u"/a/Resources/b"));
  EXPECT_TRUE(Matches({u"+pkg", u"f"}, u"/a/+pkg/f"));
}

TEST(StrictPartialPathname, WithoutNamesWantsAPlainFolder) {
  EXPECT_TRUE(Matches({}, u"/+pkg/a"));
  EXPECT_FALSE(Matches({}, u"/a/+pkg"));
  EXPECT_FALSE(Matches({}, u"/a/@C"));
  EXPECT_FALSE(Matches({}, u"/a/private"));
  EXPECT_FALSE(Matches({}, u"/a/resources"));
}

TEST(StrictPartialPathname, FailsOnlyWhenAnEmptyComparatorIsNeeded) {
  EXPECT_THROW(Matches({u"a"}, u"/a", Comparison()), std::bad_function_call);
  EXPECT_TRUE(Matches({u"+p"}, u"/+p", Comparison()));
  EXPECT_TRUE(Matches({}, u"/a", Comparison()));
}

TEST(StrictPartialPathname, ComparesAnEntrysFolderAsTheEntryDoesUnderThePolicy) {
  const auto matches = [](const Names& partial, FilenameMatchingPolicy policy) {
    return MatchesEntry(partial, *EntryAt(u"file:///x/a%20b/@Cls"), policy);
  };

  EXPECT_TRUE(matches({u"a b", u"Cls"}, FilenameMatchingPolicy::CaseSensitive));
  EXPECT_FALSE(matches({u"A b", u"Cls"}, FilenameMatchingPolicy::CaseSensitive));
  EXPECT_TRUE(matches({u"A b", u"Cls"}, FilenameMatchingPolicy::CaseInsensitive));
  EXPECT_FALSE(matches({u"a b", u"cls"}, FilenameMatchingPolicy::CaseInsensitive));
}

TEST(StrictPartialPathname, ReadsAnEntrysFolderOfAnotherSchemeAsItsWholeIdentifierDecoded) {
  EXPECT_TRUE(MatchesEntry({u"memory:", u"a#b"}, *EntryAt(u"memory:///a%23b")));
}

TEST(StrictPartialPathname, AsksTheEntryForItsComparatorUnderTheCallersPolicy) {
  const auto log = std::make_shared<CallLog>();

  EXPECT_TRUE(MatchesEntry({u"a"}, *EntryAt(u"file:///a", {.log = log}), FilenameMatchingPolicy::CaseInsensitive));

  ASSERT_THAT(log->GetOperations(), ElementsAre("/a GetFilenameComparator"));
  EXPECT_EQ(log->GetCalls()[0].policy, FilenameMatchingPolicy::CaseInsensitive);
}

TEST(StrictPartialPathname, FailsWhenTheEntryHasNoComparator) {
  const auto matches = [](const FakeBehaviour& behaviour) {
    return MatchesEntry({u"a"}, *EntryAt(u"file:///a", behaviour));
  };

  EXPECT_THROW(matches({.comparator = nullptr}), std::bad_function_call);
  EXPECT_THROW(matches({.comparator = std::make_shared<const FilenameComparator>()}), std::bad_function_call);
}

TEST(StrictPartialPathname, LetsTheFailureOfAFolderWithoutTextPass) {
  EXPECT_THROW(MatchesEntry({u"a"}, *EntryAt(u"file:///x%2Fa")), foundation::storage::vfs::Exception);
}

}  // namespace
}  // namespace Quorvex::PathManagement
