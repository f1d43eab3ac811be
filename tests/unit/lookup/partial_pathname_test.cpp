// Whether folder names, compared from the end, name a place inside an entry's folder.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <foundation/storage/vfs/exception.hpp>
#include <functional>
#include <list>
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
using support::EntryPtr;
using support::FakeBehaviour;
using support::FakeEntry;
using support::InjectedFailure;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using Names = std::vector<std::u16string>;

EntryPtr EntryAt(const std::u16string& iri, const FakeBehaviour& behaviour = {}) {
  return FakeEntry::Create(AbsoluteIRI(iri), PathEntryType::Main, support::Folder("unnamed"), behaviour);
}

bool Matches(const Names& partial, const EntryPtr& entry,
             FilenameMatchingPolicy policy = FilenameMatchingPolicy::CaseSensitive) {
  return DoesPartialPathnameMatchPathEntryIRI(partial, entry, policy);
}

bool Matches(const Names& partial, const std::u16string& folder,
             FilenameMatchingPolicy policy = FilenameMatchingPolicy::CaseSensitive) {
  return Matches(partial, EntryAt(u"file://" + folder), policy);
}

TEST(PartialPathname, MatchesTheLastFoldersOfAPath) {
  EXPECT_TRUE(Matches({u"c"}, u"/a/b/c"));
  EXPECT_TRUE(Matches({u"b", u"c"}, u"/a/b/c"));
  EXPECT_TRUE(Matches({u"a", u"b", u"c"}, u"/a/b/c"));
}

TEST(PartialPathname, DoesNotMatchFoldersThatAreNotTheLastOnes) {
  EXPECT_FALSE(Matches({u"b"}, u"/a/b/c"));
  EXPECT_FALSE(Matches({u"a", u"c"}, u"/a/b/c"));
  EXPECT_FALSE(Matches({u"x", u"c"}, u"/a/b/c"));
}

TEST(PartialPathname, DoesNotMatchWhenItIsLongerThanTheFolder) {
  EXPECT_FALSE(Matches({u"a", u"b"}, u"/b"));
  EXPECT_FALSE(Matches({u"", u"b"}, u"/b"));
  EXPECT_FALSE(Matches({u"b"}, u"/"));
}

TEST(PartialPathname, ComparesWholeNames) {
  EXPECT_FALSE(Matches({u"oo"}, u"/a/foo"));
  EXPECT_FALSE(Matches({u"foo"}, u"/a/oo"));
}

TEST(PartialPathname, MayLeaveTheMarkOfAPackageOrAClassOut) {
  EXPECT_TRUE(Matches({u"pkg"}, u"/a/+pkg"));
  EXPECT_TRUE(Matches({u"+pkg"}, u"/a/+pkg"));
  EXPECT_TRUE(Matches({u"Cls"}, u"/a/@Cls"));
  EXPECT_TRUE(Matches({u"@Cls"}, u"/a/@Cls"));
  EXPECT_TRUE(Matches({u"pkg", u"Cls"}, u"/a/+pkg/@Cls"));
  EXPECT_TRUE(Matches({u"+pkg", u"Cls"}, u"/a/+pkg/@Cls"));
}

TEST(PartialPathname, MayNotAddAMark) {
  EXPECT_FALSE(Matches({u"@Cls"}, u"/a/Cls"));
  EXPECT_FALSE(Matches({u"+Cls"}, u"/a/@Cls"));
  EXPECT_FALSE(Matches({u"Cls"}, u"/a/@@Cls"));
}

TEST(PartialPathname, MustNameEveryPackageUpToTheFirstPlainFolder) {
  EXPECT_FALSE(Matches({u"f"}, u"/a/+pkg/f"));
  EXPECT_TRUE(Matches({u"pkg", u"f"}, u"/a/+pkg/f"));
  EXPECT_FALSE(Matches({u"inner"}, u"/a/+outer/+inner"));
  EXPECT_TRUE(Matches({u"outer", u"inner"}, u"/a/+outer/+inner"));
}

TEST(PartialPathname, MayLeaveEnclosingClassPrivateAndResourcesFoldersOut) {
  EXPECT_TRUE(Matches({u"b"}, u"/a/@C/b"));
  EXPECT_TRUE(Matches({u"b"}, u"/a/private/b"));
  EXPECT_TRUE(Matches({u"b"}, u"/a/resources/b"));
  EXPECT_TRUE(Matches({u"b"}, u"/@C/private/resources/b"));
}

TEST(PartialPathname, LooksForPackagesThroughThoseFolders) {
  EXPECT_FALSE(Matches({u"b"}, u"/a/+pkg/@C/b"));
  EXPECT_FALSE(Matches({u"private"}, u"/a/+pkg/@C/private"));
  EXPECT_FALSE(Matches({u"b"}, u"/+pkg/resources/private/@C/b"));
}

TEST(PartialPathname, NeedsNoPackageBeyondTheFirstPlainFolder) { EXPECT_TRUE(Matches({u"b"}, u"/+pkg/a/b")); }

TEST(PartialPathname, TakesAFolderThatOnlyResemblesPrivateForAPlainOne) {
  EXPECT_TRUE(Matches({u"b"}, u"/+pkg/Private/b", FilenameMatchingPolicy::CaseInsensitive));
}

TEST(PartialPathname, WithoutNamesAsksOnlyForPackages) {
  EXPECT_TRUE(Matches({}, u"/a"));
  EXPECT_TRUE(Matches({}, u"/"));
  EXPECT_TRUE(Matches({}, u"/+pkg/a"));
  EXPECT_TRUE(Matches({}, u"/a/@C/private"));
  EXPECT_TRUE(Matches({}, u"/@C"));
  EXPECT_FALSE(Matches({}, u"/a/+pkg"));
  EXPECT_FALSE(Matches({}, u"/a/+pkg/@C/private"));
}

TEST(PartialPathname, ComparesLetterCaseAsTheEntryDoesUnderThePolicy) {
  EXPECT_FALSE(Matches({u"cls"}, u"/a/@Cls", FilenameMatchingPolicy::CaseSensitive));
  EXPECT_TRUE(Matches({u"cls"}, u"/a/@Cls", FilenameMatchingPolicy::CaseInsensitive));
  EXPECT_FALSE(Matches({u"cls"}, u"/a/@Cls", FilenameMatchingPolicy::Native));
  EXPECT_TRUE(
      Matches({u"cls"}, EntryAt(u"file:///a/@Cls", {.ignoresCaseNatively = true}), FilenameMatchingPolicy::Native));
}

TEST(PartialPathname, AsksTheEntryForItsComparatorUnderTheCallersPolicy) {
  const auto log = std::make_shared<CallLog>();

  EXPECT_TRUE(Matches({u"a"}, EntryAt(u"file:///a", {.log = log}), FilenameMatchingPolicy::CaseInsensitive));

  const auto calls = log->GetCalls();
  ASSERT_THAT(log->GetOperations(), ElementsAre("/a GetFilenameComparator"));
  EXPECT_EQ(calls[0].policy, FilenameMatchingPolicy::CaseInsensitive);
}

TEST(PartialPathname, ReadsAFileFolderAsItsNativePath) {
  EXPECT_TRUE(Matches({u"a b", u"50%"}, u"/a%20b/50%25"));
  EXPECT_TRUE(Matches({u"\xDCFF"}, u"/%FF"));
}

TEST(PartialPathname, ReadsAFolderOfAnotherSchemeAsItsWholeIdentifierDecoded) {
  EXPECT_TRUE(Matches({u"a#b"}, EntryAt(u"memory:///x/a%23b")));
  EXPECT_TRUE(Matches({u"memory:", u"x"}, EntryAt(u"memory:///x")));
  EXPECT_TRUE(Matches({u"host", u"x"}, EntryAt(u"memory://host/x")));
  EXPECT_TRUE(Matches({u"a", u"b"}, EntryAt(u"memory:///a%2Fb"))) << "once decoded, it separates";
}

TEST(PartialPathname, IsReadFromAnyBidirectionalRange) {
  const std::list<std::u16string> listed = {u"b", u"c"};
  const std::u16string array[] = {u"a", u"b", u"c"};

  EXPECT_TRUE(DoesPartialPathnameMatchPathEntryIRI(listed, EntryAt(u"file:///a/b/c"), FilenameMatchingPolicy::Native));
  EXPECT_TRUE(DoesPartialPathnameMatchPathEntryIRI(array, EntryAt(u"file:///a/b/c"), FilenameMatchingPolicy::Native));
}

TEST(PartialPathname, MatchesFoldersOfAnyDepth) {
  Names names;
  std::u16string folder;
  for (int depth = 0; depth < 100; ++depth) {
    names.push_back(u"a name that is too long to stand inside the string");
    folder += u"/" + names.back();
  }

  EXPECT_TRUE(Matches(names, folder));
  names.insert(names.begin(), u"one more");
  EXPECT_FALSE(Matches(names, folder));
}

/// Hands out a comparator that remembers its questions and answers as equality does.
struct RecordedComparator {
  std::shared_ptr<std::vector<std::pair<std::u16string, std::u16string>>> asked =
      std::make_shared<std::vector<std::pair<std::u16string, std::u16string>>>();
  FakeBehaviour behaviour{.comparator = std::make_shared<const FilenameComparator>(
                              [questions = asked](const std::u16string& wanted, const std::u16string& folder) {
                                questions->emplace_back(wanted, folder);
                                return wanted == folder;
                              })};
};

TEST(PartialPathname, ComparesFromTheEndTheWantedNameWithTheFolders) {
  const RecordedComparator comparator;

  EXPECT_TRUE(Matches({u"b", u"c"}, EntryAt(u"file:///a/b/c", comparator.behaviour)));
  EXPECT_THAT(*comparator.asked, ElementsAre(Pair(u"c", u"c"), Pair(u"b", u"b")));
}

TEST(PartialPathname, ComparesAMarkedFolderAsItIsThenWithoutItsMark) {
  const RecordedComparator comparator;

  EXPECT_TRUE(Matches({u"+p", u"C"}, EntryAt(u"file:///+p/@C", comparator.behaviour)));
  EXPECT_THAT(*comparator.asked, ElementsAre(Pair(u"C", u"@C"), Pair(u"C", u"C"), Pair(u"+p", u"+p")));
}

TEST(PartialPathname, StopsAtTheFirstDifference) {
  const RecordedComparator comparator;

  EXPECT_FALSE(Matches({u"a", u"x"}, EntryAt(u"file:///a/b", comparator.behaviour)));
  EXPECT_THAT(*comparator.asked, ElementsAre(Pair(u"x", u"b")));
}

TEST(PartialPathname, ComparesNothingWhenThereAreNoNames) {
  const RecordedComparator comparator;

  EXPECT_TRUE(Matches({}, EntryAt(u"file:///a", comparator.behaviour)));
  EXPECT_THAT(*comparator.asked, IsEmpty());
}

TEST(PartialPathname, FailsWhenTheEntryHasNoComparator) {
  const FakeBehaviour withNull{.comparator = nullptr};
  const FakeBehaviour withEmpty{.comparator = std::make_shared<const FilenameComparator>()};

  EXPECT_THROW(Matches({u"a"}, EntryAt(u"file:///a", withNull)), std::bad_function_call);
  EXPECT_THROW(Matches({u"a"}, EntryAt(u"file:///a", withEmpty)), std::bad_function_call);
}

TEST(PartialPathname, LetsFailuresOfTheEntryAndOfItsComparatorPass) {
  const auto log = std::make_shared<CallLog>();
  log->FailNext("/a GetFilenameComparator");
  const FakeBehaviour throwing{
      .comparator = std::make_shared<const FilenameComparator>(
          [](const std::u16string&, const std::u16string&) -> bool { throw InjectedFailure("comparator"); })};

  EXPECT_THROW(Matches({u"a"}, EntryAt(u"file:///a", {.log = log})), InjectedFailure);
  EXPECT_THROW(Matches({u"a"}, EntryAt(u"file:///a", throwing)), InjectedFailure);
}

TEST(PartialPathname, LetsTheFailureOfAFolderWithoutTextPass) {
  EXPECT_THROW(Matches({u"a"}, EntryAt(u"file:///x%2Fa")), foundation::storage::vfs::Exception);
}

}  // namespace
}  // namespace Quorvex::PathManagement
