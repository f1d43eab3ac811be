// All files with wanted extensions, of one entry or of a whole path.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <search_path_utilities/composite_paths.hpp>
#include <search_path_utilities/lookup.hpp>
#include <string>
#include <support/fake_path.hpp>
#include <support/mock_path.hpp>
#include <support/texts_of.hpp>
#include <utility>
#include <vector>

#include "asked.hpp"

namespace Quorvex::PathManagement::lookup_tests {
namespace {

using support::APath;
using support::CallLog;
using support::EntryPtr;
using support::FilesOf;
using support::Folder;
using support::InjectedFailure;
using support::MockPath;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::NiceMock;
using testing::Pair;

using Extensions = std::vector<std::u16string>;

constexpr auto kExactly = FilenameMatchingPolicy::CaseSensitive;

/// The entry of a folder "/a" with these files.
EntryPtr EntryWith(const std::vector<const char*>& files, APath path = {}) {
  Folder folder("/a");
  for (const char* const file : files) folder.WithFile(file);
  return path.With(folder).Build()->EntryAt("/a");
}

std::vector<std::string> FilesIn(const EntryPtr& entry, const Extensions& extensions,
                                 FilenameMatchingPolicy policy = kExactly) {
  return FilesOf(FindFilesByExtensions(entry, extensions, policy));
}

TEST(FindFilesByExtensions, ListsTheFilesOfAnEntryInTheEntrysOwnOrder) {
  const EntryPtr entry = EntryWith({"c.vnx", "a.x", "b.vnx", "d.y"});

  EXPECT_THAT(FilesIn(entry, {u".vnx"}), ElementsAre("/a/b.vnx", "/a/c.vnx"));
  EXPECT_THAT(FilesIn(entry, {u".vnx", u".x"}), ElementsAre("/a/a.x", "/a/b.vnx", "/a/c.vnx")) << "not by extension";
}

TEST(FindFilesByExtensions, NamesTheEntryThatHoldsEachFile) {
  const EntryPtr entry = EntryWith({"a.vnx"});

  const auto found = FindFilesByExtensions(entry, {u".vnx"}, kExactly);

  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found.front().GetPathEntry(), entry);
  EXPECT_EQ(found.front().GetPathItem(), entry->GetItems()->front()) << "the very item";
}

TEST(FindFilesByExtensions, ComparesExtensionsWhole) {
  const EntryPtr entry = EntryWith({"a.vnx", "b.vn", "c.tar.vnx", "vnx", "d.", "e"});

  EXPECT_THAT(FilesIn(entry, {u".vnx"}), ElementsAre("/a/a.vnx", "/a/c.tar.vnx"));
  EXPECT_THAT(FilesIn(entry, {u"vnx"}), IsEmpty());
  EXPECT_THAT(FilesIn(entry, {u".tar.vnx"}), IsEmpty());
  EXPECT_THAT(FilesIn(entry, {u"."}), ElementsAre("/a/d."));
  EXPECT_THAT(FilesIn(entry, {u""}), ElementsAre("/a/e", "/a/vnx"));
}

TEST(FindFilesByExtensions, ListsAFileOnceForEachTimeThatItsExtensionIsWanted) {
  const EntryPtr entry = EntryWith({"a.vnx", "b.vnx", "c.x"});

  EXPECT_THAT(FilesIn(entry, {u".vnx", u".x", u".vnx"}),
              ElementsAre("/a/a.vnx", "/a/a.vnx", "/a/b.vnx", "/a/b.vnx", "/a/c.x"));
}

TEST(FindFilesByExtensions, ListsAFileOnceForEachWantedExtensionThatThePolicyTakesForItsOwn) {
  const EntryPtr entry = EntryWith({"a.vnx", "b.VNX"});

  EXPECT_THAT(FilesIn(entry, {u".vnx", u".VNX"}, FilenameMatchingPolicy::CaseInsensitive),
              ElementsAre("/a/a.vnx", "/a/a.vnx", "/a/b.VNX", "/a/b.VNX"));
  EXPECT_THAT(FilesIn(entry, {u".vnx", u".VNX"}), ElementsAre("/a/a.vnx", "/a/b.VNX"));
}

TEST(FindFilesByExtensions, LeavesLetterCaseToTheEntry) {
  EXPECT_THAT(FilesIn(EntryWith({"a.VNX"}), {u".vnx"}, FilenameMatchingPolicy::Native), IsEmpty());
  EXPECT_THAT(FilesIn(EntryWith({"a.VNX"}, APath().IgnoringCase()), {u".vnx"}, FilenameMatchingPolicy::Native),
              ElementsAre("/a/a.VNX"));
}

TEST(FindFilesByExtensions, ComparesEachWantedExtensionWithEachItemsInThatOrder) {
  std::vector<std::pair<std::u16string, std::u16string>> asked;
  const auto comparator = std::make_shared<const FilenameComparator>(
      [&asked](const std::u16string& wanted, const std::u16string& extension) {
        asked.emplace_back(wanted, extension);
        return wanted == u".2";
      });
  const EntryPtr entry = EntryWith({"a.x", "b.y"}, APath().Comparing(comparator));

  EXPECT_THAT(FilesIn(entry, {u".1", u".2", u".3"}), ElementsAre("/a/a.x", "/a/b.y"));
  EXPECT_THAT(asked, ElementsAre(Pair(u".1", u".x"), Pair(u".2", u".x"), Pair(u".3", u".x"), Pair(u".1", u".y"),
                                 Pair(u".2", u".y"), Pair(u".3", u".y")));
}

TEST(FindFilesByExtensions, AsksAnEntryOnceForItsComparatorAndThenForItsItems) {
  const auto log = std::make_shared<CallLog>();
  const EntryPtr entry = EntryWith({"a.vnx", "b.vnx", "c.x"}, APath().Recording("path", log));

  static_cast<void>(FindFilesByExtensions(entry, {u".vnx", u".x"}, kPolicy));

  EXPECT_THAT(log->GetOperations(), ElementsAre("/a GetFilenameComparator", "/a GetItems"));
  EXPECT_EQ(log->GetCalls().front().policy, kPolicy);
}

TEST(FindFilesByExtensions, FetchesTheItemsEvenWhenNoExtensionIsWanted) {
  const auto log = std::make_shared<CallLog>();
  const EntryPtr entry = EntryWith({"a.vnx"}, APath().Recording("path", log));

  EXPECT_THAT(FilesIn(entry, {}), IsEmpty());
  EXPECT_THAT(log->GetOperations(), ElementsAre("/a GetFilenameComparator", "/a GetItems"));
}

TEST(FindFilesByExtensions, FindsNothingInAnEntryWithoutItems) {
  EXPECT_THAT(FilesIn(EntryWith({}), {u".vnx"}), IsEmpty());
}

TEST(FindFilesByExtensions, FailsWithoutAComparatorOnlyWhenThereIsSomethingToCompare) {
  for (const auto& none : {std::shared_ptr<const FilenameComparator>(), std::make_shared<const FilenameComparator>()}) {
    const APath path = APath().Comparing(none);

    EXPECT_THROW(FilesIn(EntryWith({"a.vnx"}, path), {u".vnx"}), std::bad_function_call);
    EXPECT_THAT(FilesIn(EntryWith({"a.vnx"}, path), {}), IsEmpty());
    EXPECT_THAT(FilesIn(EntryWith({}, path), {u".vnx"}), IsEmpty());
  }
}

TEST(FindFilesByExtensions, LetsFailuresOfTheEntryAndOfItsComparatorPass) {
  const auto log = std::make_shared<CallLog>();
  const EntryPtr entry = EntryWith({"a.vnx"}, APath().Recording("path", log));
  const auto failing = std::make_shared<const FilenameComparator>(
      [](const std::u16string&, const std::u16string&) -> bool { throw InjectedFailure("comparator"); });

  log->FailNext("/a GetFilenameComparator");
  EXPECT_THROW(FilesIn(entry, {u".vnx"}), InjectedFailure);
  log->FailNext("/a GetItems");
  EXPECT_THROW(FilesIn(entry, {u".vnx"}), InjectedFailure);
  EXPECT_THROW(FilesIn(EntryWith({"a.vnx"}, APath().Comparing(failing)), {u".vnx"}), InjectedFailure);
}

/// /a with a class and a private folder, then /b; each with files of both extensions.
std::shared_ptr<const support::FakePath> TwoFolders(const std::shared_ptr<CallLog>& log) {
  return APath()
      .Recording("path", log)
      .With(Folder("/a")
                .WithFile("foo.vnx")
                .WithFile("foo.x")
                .WithClass(Folder("Cls").WithFile("foo.vnx"))
                .With(Folder("private").WithFile("foo.x")))
      .With(Folder("/b").WithFile("bar.x").WithFile("foo.vnx"))
      .Build();
}

TEST(FindFilesByExtensionsOnPath, ListsByEntryThenByItemThenByExtension) {
  const auto path = TwoFolders(std::make_shared<CallLog>());

  EXPECT_THAT(FilesOf(FindFilesByExtensions(*path, VisibleScope, {u".x", u".vnx", u".x"}, kExactly)),
              ElementsAre("/a/foo.vnx", "/a/foo.x", "/a/foo.x", "/a/private/foo.x", "/a/private/foo.x",
                          "/a/@Cls/foo.vnx", "/b/bar.x", "/b/bar.x", "/b/foo.vnx"));
}

TEST(FindFilesByExtensionsOnPath, ListsFilesThatOthersHide) {
  const auto path = TwoFolders(std::make_shared<CallLog>());

  EXPECT_THAT(FilesOf(FindFilesByExtensions(*path, MainScope, {u".vnx"}, kExactly)),
              ElementsAre("/a/foo.vnx", "/b/foo.vnx"));
}

TEST(FindFilesByExtensionsOnPath, LooksIntoTheEntriesThatOneWalkInTheVeryScopeVisits) {
  const auto log = std::make_shared<CallLog>();
  const auto path = TwoFolders(log);

  static_cast<void>(FindFilesByExtensions(*path, MainScope, {u".vnx"}, kPolicy));

  EXPECT_THAT(log->GetOperations(), ElementsAre("path.ForEachEntry", "/a GetFilenameComparator", "/a GetItems",
                                                "/b GetFilenameComparator", "/b GetItems"));
  EXPECT_THAT(log->GetCalls().front(), AskedInScope(MainScope));
  EXPECT_EQ(log->GetCalls().back().operation, "/b GetItems");
  EXPECT_EQ(log->GetCalls()[3].policy, kPolicy);
}

TEST(FindFilesByExtensionsOnPath, FetchesTheItemsOfEveryEntryEvenWhenNoExtensionIsWanted) {
  const auto log = std::make_shared<CallLog>();

  EXPECT_THAT(FindFilesByExtensions(*TwoFolders(log), MainScope, {}, kPolicy), IsEmpty());
  EXPECT_THAT(log->GetOperations(), testing::IsSupersetOf({"/a GetItems", "/b GetItems"}));
}

TEST(FindFilesByExtensionsOnPath, ListsTheFilesOfAnEntryAsOftenAsTheWalkVisitsIt) {
  const auto path = APath().With(Folder("/a").WithFile("foo.vnx")).Build();
  const ConcatenatedPath twice(path, path);

  EXPECT_THAT(FilesOf(FindFilesByExtensions(twice, VisibleScope, {u".vnx"}, kExactly)),
              ElementsAre("/a/foo.vnx", "/a/foo.vnx"));
}

TEST(FindFilesByExtensionsOnPath, NeverStopsTheWalk) {
  const auto entry = EntryWith({"a.vnx"});
  NiceMock<MockPath> path;
  ON_CALL(path, ForEachEntry).WillByDefault([&](SearchScope, const PathEntryCallback& visit) {
    EXPECT_FALSE(visit(entry));
    EXPECT_FALSE(visit(EntryWith({})));
    return true;
  });
  EXPECT_CALL(path, ConcurrentForEachEntry).Times(0);

  EXPECT_THAT(FilesOf(FindFilesByExtensions(path, MainScope, {u".vnx"}, kExactly)), ElementsAre("/a/a.vnx"));
}

TEST(FindFilesByExtensionsOnPath, FindsNothingOnAnEmptyPath) {
  EXPECT_THAT(FindFilesByExtensions(*APath().Build(), VisibleScope, {u".vnx"}, kExactly), IsEmpty());
}

TEST(FindFilesByExtensionsOnPath, LetsFailuresOfTheWalkAndOfAnEntryPass) {
  const auto log = std::make_shared<CallLog>();
  const auto path = TwoFolders(log);

  for (const char* const operation : {"path.ForEachEntry", "/b GetItems", "/b GetFilenameComparator"}) {
    log->FailNext(operation);
    EXPECT_THROW(static_cast<void>(FindFilesByExtensions(*path, MainScope, {u".vnx"}, kExactly)), InjectedFailure);
  }
}

TEST(FindFilesByExtensionsOnPath, SeesNothingOfAMaskedFolder) {
  const auto path = TwoFolders(std::make_shared<CallLog>());

  EXPECT_THAT(
      FilesOf(FindFilesByExtensions(MultiMaskedPath(path, {path->EntryAt("/a")}), VisibleScope, {u".vnx"}, kExactly)),
      ElementsAre("/b/foo.vnx"));
}

}  // namespace
}  // namespace Quorvex::PathManagement::lookup_tests
