#include <deque>
#include <foundation/storage/vfs/exception.hpp>
#include <list>
#include <range/v3/view/filter.hpp>
#include <stdexcept>
#include <support/storage_matchers.hpp>
#include <type_traits>
#include <variant>

#include "main_path_test.hpp"

namespace Quorvex::PathManagement {
namespace {

using current_working_folder::FailedToAbsolutizeException;
using current_working_folder::ICurrentWorkingFolder;
using support::FoldersAt;
using support::MessagesOf;
using support::NamesOf;
using testing::ElementsAre;
using testing::IsEmpty;

// Identifiers.

class RemoveIRIsFromVornixPathTest : public MainPathTest {
 protected:
  Notification Remove(std::string_view names) {
    const FolderList folders = FoldersAt(names);
    return RemoveIRIsFromVornixPath(folders, manager_);
  }
};

TEST_F(RemoveIRIsFromVornixPathTest, HasTheAgreedSignature) {
  EXPECT_TRUE((std::is_same_v<decltype(&RemoveIRIsFromVornixPath),
                              Notification (*)(const FolderRange&, IMainSearchPathManager&)>));
}

TEST_F(RemoveIRIsFromVornixPathTest, TakesFoldersOffThePath) {
  PathIs("a b c d");

  EXPECT_TRUE(Remove("d b").IsEmpty());

  EXPECT_EQ(Path(), "a c");
}

TEST_F(RemoveIRIsFromVornixPathTest, TakesAnythingFromOneFolderToAll) {
  PathIs("a b c");

  static_cast<void>(Remove("a"));
  EXPECT_EQ(Path(), "b c");

  static_cast<void>(Remove("b c"));
  EXPECT_EQ(Path(), "");
}

TEST_F(RemoveIRIsFromVornixPathTest, TakesEveryOccurrenceAndKeepsTheOtherRepeats) {
  PathIs("a x a y x");

  EXPECT_TRUE(Remove("a").IsEmpty());

  EXPECT_EQ(Path(), "x y x");
}

TEST_F(RemoveIRIsFromVornixPathTest, ToleratesAFolderGivenTwice) {
  PathIs("a x a");

  EXPECT_TRUE(Remove("a a a").IsEmpty());

  EXPECT_EQ(Path(), "x");
}

TEST_F(RemoveIRIsFromVornixPathTest, RemovesNothingWhenOneFolderIsNotOnThePath) {
  PathIs("a b");

  EXPECT_THAT(MessagesOf(Remove("a gone")), ElementsAre("VORNIX:rmpath DirNotFound(memory:///gone)"));

  EXPECT_EQ(Path(), "a b");
  EXPECT_THAT(manager_.GetCalls(), ElementsAre("GetMainPathFolders"));
}

TEST_F(RemoveIRIsFromVornixPathTest, WarnsOfEachMentionOfAMissingFolderInOrder) {
  PathIs("a b");

  EXPECT_THAT(MessagesOf(Remove("z a y z b")),
              ElementsAre("VORNIX:rmpath DirNotFound(memory:///z)", "VORNIX:rmpath DirNotFound(memory:///y)",
                          "VORNIX:rmpath DirNotFound(memory:///z)"));
}

TEST_F(RemoveIRIsFromVornixPathTest, NamesAMissingFolderByItsTextAndNothingElse) {
  const FolderList missing = {AbsoluteIRI(u"file:///no%25 such/\u00E9"), AbsoluteIRI(u"memory:///50%25 off")};

  const Notification warnings = RemoveIRIsFromVornixPath(missing, manager_);

  ASSERT_EQ(warnings.GetMessages().size(), 2U);
  const auto& first = warnings.GetMessages()[0].GetArguments();
  const auto& second = warnings.GetMessages()[1].GetArguments();
  ASSERT_EQ(first.size(), 1U);
  ASSERT_EQ(second.size(), 1U);
  EXPECT_EQ(std::get<std::u16string>(first[0]), u"/no% such/\u00E9");
  EXPECT_EQ(std::get<std::u16string>(first[0]), GetStringFromIRI(missing[0]));
  EXPECT_EQ(std::get<std::u16string>(second[0]), u"memory:///50% off");
  EXPECT_EQ(std::get<std::u16string>(second[0]), GetStringFromIRI(missing[1]));
}

TEST_F(RemoveIRIsFromVornixPathTest, LetsTheFailurePassOfAMissingFolderWithoutText) {
  PathIs("a");

  EXPECT_THAT([&] { return Remove("a file:///a%2Fb"); },
              foundation::storage::vfs::FailsAbout(u"file:///a%2Fb",
                                                   "cannot convert \"file:///a%2Fb\": a name in it holds '/'"));

  EXPECT_EQ(Path(), "a");
}

TEST_F(RemoveIRIsFromVornixPathTest, NeedsNoTextOfAFolderThatIsOnThePath) {
  PathIs("file:///a%2Fb x");

  EXPECT_TRUE(Remove("file:///a%2Fb").IsEmpty());

  EXPECT_EQ(Path(), "x");
}

TEST_F(RemoveIRIsFromVornixPathTest, TellsFoldersApartByTheirIdentifiersAlone) {
  const auto alias = foundation::storage::vfs::VornixStorageSystem::MountAlias(u"alias", u"memory");
  PathIs("a alias:///a A a%2Fb file:///a");

  EXPECT_TRUE(Remove("a").IsEmpty());
  EXPECT_EQ(Path(), "alias:///a A a%2Fb file:///a");

  EXPECT_THAT(MessagesOf(Remove("a A a/b")),
              ElementsAre("VORNIX:rmpath DirNotFound(memory:///a)", "VORNIX:rmpath DirNotFound(memory:///a/b)"));
}

TEST_F(RemoveIRIsFromVornixPathTest, ReadsTheListOnceAndInstallsTheNewOneOnceAsARemoval) {
  PathIs("a b");

  static_cast<void>(Remove("a"));

  EXPECT_THAT(manager_.GetCalls(), ElementsAre("GetMainPathFolders", "SetMainPathForRemoval"));
}

TEST_F(RemoveIRIsFromVornixPathTest, InstallsTheListUnchangedWhenNothingIsGiven) {
  PathIs("y x y");

  EXPECT_TRUE(Remove("").IsEmpty());

  EXPECT_THAT(manager_.GetCalls(), ElementsAre("GetMainPathFolders", "SetMainPathForRemoval"));
  EXPECT_EQ(Path(), "y x y");
}

TEST_F(RemoveIRIsFromVornixPathTest, InstallsAnEmptyListForAnEmptyPath) {
  EXPECT_TRUE(Remove("").IsEmpty());

  EXPECT_THAT(manager_.GetCalls(), ElementsAre("GetMainPathFolders", "SetMainPathForRemoval"));
  EXPECT_EQ(Path(), "");
}

TEST_F(RemoveIRIsFromVornixPathTest, ReturnsWhatTheManagerHasToSay) {
  PathIs("a");
  LetManagerWarn();

  EXPECT_THAT(MessagesOf(Remove("a")), ElementsAre("manager busy()"));

  EXPECT_EQ(Path(), "");
}

TEST_F(RemoveIRIsFromVornixPathTest, HandsTheManagerANotificationWithoutMessages) {
  bool wasEmpty = false;
  manager_.BeforeInstalling(
      [&](const FolderRange&, const Notification& notification) { wasEmpty = notification.IsEmpty(); });

  static_cast<void>(Remove(""));

  EXPECT_TRUE(wasEmpty);
}

TEST_F(RemoveIRIsFromVornixPathTest, DropsAChangeThatIsRefusedAsRecursive) {
  PathIs("a x");
  LetManagerThrow(RecursivePathChangeException());

  EXPECT_TRUE(Remove("a").IsEmpty());

  EXPECT_EQ(Path(), "a x");
}

TEST_F(RemoveIRIsFromVornixPathTest, DropsAChangeThatIsRefusedAsRecursiveWhileTheListIsComputed) {
  PathIs("a x y");
  LetManagerThrowWhileReading(RecursivePathChangeException());

  EXPECT_TRUE(Remove("a").IsEmpty());

  EXPECT_EQ(firstRead_, u"memory:///x");
  EXPECT_EQ(Path(), "a x y");
}

TEST_F(RemoveIRIsFromVornixPathTest, ReturnsWhatTheManagerSaidBeforeItRefused) {
  PathIs("a x");
  LetManagerWarnAndThrow(RecursivePathChangeException());

  EXPECT_THAT(MessagesOf(Remove("a")), ElementsAre("manager busy()"));

  EXPECT_EQ(Path(), "a x");
}

TEST_F(RemoveIRIsFromVornixPathTest, LetsEveryOtherExceptionOfInstallingPass) {
  PathIs("a x");

  LetManagerThrow(std::runtime_error("no"));
  EXPECT_THROW(Remove("a"), std::runtime_error);

  LetManagerThrowWhileReading(FailedToAbsolutizeException(4));
  EXPECT_THROW(Remove("a"), FailedToAbsolutizeException);

  EXPECT_EQ(Path(), "a x");
}

TEST_F(RemoveIRIsFromVornixPathTest, LetsEveryExceptionOfAskingForTheListPass) {
  manager_.FailToAnswerWith(std::make_exception_ptr(std::runtime_error("no")));
  EXPECT_THROW(Remove("a"), std::runtime_error);

  // Only the change can be refused as recursive.
  manager_.FailToAnswerWith(std::make_exception_ptr(RecursivePathChangeException()));
  EXPECT_THROW(Remove("a"), RecursivePathChangeException);

  EXPECT_THAT(manager_.GetCalls(), ElementsAre("GetMainPathFolders", "GetMainPathFolders"));
}

TEST_F(RemoveIRIsFromVornixPathTest, HandsOverTheOldListsOwnFoldersNotCopies) {
  PathIs("a x a y");
  const auto old = manager_.GetMainPathFolders();
  std::vector<const AbsoluteIRI*> read;
  manager_.BeforeInstalling([&](const FolderRange& folders, const Notification&) {
    for (const AbsoluteIRI& folder : folders) read.push_back(&folder);
  });

  static_cast<void>(Remove("a"));

  EXPECT_THAT(read, ElementsAre(&old->at(1), &old->at(3)));
}

TEST_F(RemoveIRIsFromVornixPathTest, HoldsTheOldListUntilTheManagerIsDone) {
  PathIs("a x a y");
  const std::weak_ptr<const FolderList> old = manager_.GetMainPathFolders();
  bool isHeld = false;
  std::string read;
  manager_.BeforeInstalling([&](const FolderRange& folders, const Notification&) {
    manager_.Replace({});
    isHeld = !old.expired();
    read = NamesOf({folders.begin(), folders.end()});
  });

  static_cast<void>(Remove("a"));

  EXPECT_TRUE(isHeld);
  EXPECT_EQ(read, "x y");
  EXPECT_TRUE(old.expired());
}

TEST_F(RemoveIRIsFromVornixPathTest, LetsTheManagerReadTheNewListAgain) {
  PathIs("a x a y");
  std::string first;
  std::string second;
  manager_.BeforeInstalling([&](const FolderRange& folders, const Notification&) {
    first = NamesOf({folders.begin(), folders.end()});
    second = NamesOf({folders.begin(), folders.end()});
  });

  static_cast<void>(Remove("a"));

  EXPECT_EQ(first, "x y");
  EXPECT_EQ(second, "x y");
}

TEST_F(RemoveIRIsFromVornixPathTest, ReadsAnySequenceOfFolders) {
  const FolderList folders = FoldersAt("b a b");
  FolderList changeable = folders;
  const std::list<AbsoluteIRI> listed(folders.begin(), folders.end());
  const std::deque<AbsoluteIRI> queued(folders.begin(), folders.end());
  const auto expectToBeRead = [this](const FolderRange& range) {
    PathIs("a x b");
    static_cast<void>(RemoveIRIsFromVornixPath(range, manager_));
    EXPECT_EQ(Path(), "x");
  };

  expectToBeRead(folders);
  expectToBeRead(changeable);
  expectToBeRead(listed);
  expectToBeRead(queued);
}

TEST_F(RemoveIRIsFromVornixPathTest, ReadsAViewThatIsComputedMeanwhileOnce) {
  PathIs("a b c");
  const FolderList folders = FoldersAt("a b c");
  const AbsoluteIRI& unwanted = folders[1];
  int asked = 0;
  auto view = folders | ranges::views::filter([&](const AbsoluteIRI& folder) {
                ++asked;
                return folder != unwanted;
              });

  static_cast<void>(RemoveIRIsFromVornixPath(view, manager_));

  EXPECT_EQ(Path(), "b");
  EXPECT_EQ(asked, 3);
}

TEST_F(RemoveIRIsFromVornixPathTest, TakesAllFoldersOfThePathItself) {
  PathIs("x a x");
  const FolderList given = manager_.GetFolders();

  EXPECT_TRUE(RemoveIRIsFromVornixPath(given, manager_).IsEmpty());

  EXPECT_EQ(Path(), "");
}

// Names. The factory and the path are strict: a test fails that lets them be touched.

class RemoveFoldersFromVornixPathTest : public MainPathTest {
 protected:
  Notification Remove(const Names& names) {
    return RemoveFoldersFromVornixPath(names, workingFolder_, manager_, pathFactory_, path_);
  }
};

TEST_F(RemoveFoldersFromVornixPathTest, HasTheAgreedSignature) {
  EXPECT_TRUE(
      (std::is_same_v<decltype(&RemoveFoldersFromVornixPath),
                      Notification (*)(const detail::AnyRangeAdapter<std::u16string>&, const ICurrentWorkingFolder&,
                                       IMainSearchPathManager&, const IPathFactory&, const IPath&)>));
}

TEST_F(RemoveFoldersFromVornixPathTest, TakesTheFoldersOfTheNamesOffThePath) {
  PathIs("x home/sub b x");

  EXPECT_TRUE(Remove({u"/b", u"sub", u"/home/sub"}).IsEmpty());

  EXPECT_EQ(Path(), "x x");
  EXPECT_THAT(manager_.GetCalls(), ElementsAre("GetMainPathFolders", "SetMainPathForRemoval"));
}

TEST_F(RemoveFoldersFromVornixPathTest, RemovesNothingWhenOneNameIsRejected) {
  PathIs("a b");
  workingFolder_.Reject(u"gone", 4);

  const Notification warnings = Remove({u"/a", u"gone", u"/b"});

  EXPECT_THAT(MessagesOf(warnings), ElementsAre("VORNIX:mpath nameNonexistentOrNotADirectory(gone)"));
  EXPECT_EQ(Path(), "a b");
  EXPECT_THAT(manager_.GetCalls(), IsEmpty());
}

TEST_F(RemoveFoldersFromVornixPathTest, WarnsOfRejectedNamesBeforeItLooksForTheFolders) {
  PathIs("a");
  workingFolder_.Reject(u"gone", 4);

  EXPECT_THAT(MessagesOf(Remove({u"/missing", u"gone"})),
              ElementsAre("VORNIX:mpath nameNonexistentOrNotADirectory(gone)"));
}

TEST_F(RemoveFoldersFromVornixPathTest, NamesAMissingFolderByTheTextOfWhatTheNameMeans) {
  PathIs("a");

  EXPECT_THAT(MessagesOf(Remove({u"/a", u"sub"})), ElementsAre("VORNIX:rmpath DirNotFound(memory:///home/sub)"));

  EXPECT_EQ(Path(), "a");
  EXPECT_THAT(manager_.GetCalls(), ElementsAre("GetMainPathFolders"));
}

TEST_F(RemoveFoldersFromVornixPathTest, LetsAFailureWithoutKeyPassAndRemovesNothing) {
  PathIs("a");
  for (const int code : {1, 2, 8, 10, -1}) {
    workingFolder_.Reject(u"bad", code);
    EXPECT_THROW(Remove({u"/a", u"bad"}), FailedToAbsolutizeException) << code;
  }

  EXPECT_EQ(Path(), "a");
  EXPECT_THAT(manager_.GetCalls(), IsEmpty());
}

TEST_F(RemoveFoldersFromVornixPathTest, LetsEveryOtherFailureOfTheWorkingFolderPass) {
  // Not swallowed either: it is the manager's refusal only when it comes from the manager.
  workingFolder_.FailWith(u"bad", std::make_exception_ptr(RecursivePathChangeException()));
  EXPECT_THROW(Remove({u"bad"}), RecursivePathChangeException);
  workingFolder_.FailWith(u"bad", std::make_exception_ptr(std::runtime_error("no")));
  EXPECT_THROW(Remove({u"bad"}), std::runtime_error);

  EXPECT_THAT(manager_.GetCalls(), IsEmpty());
}

TEST_F(RemoveFoldersFromVornixPathTest, InstallsTheListUnchangedWhenNoNamesAreGiven) {
  PathIs("y x y");

  EXPECT_TRUE(Remove({}).IsEmpty());

  EXPECT_THAT(manager_.GetCalls(), ElementsAre("GetMainPathFolders", "SetMainPathForRemoval"));
  EXPECT_EQ(Path(), "y x y");
}

TEST_F(RemoveFoldersFromVornixPathTest, ReturnsWhatTheManagerHasToSay) {
  PathIs("a");
  LetManagerWarn();

  EXPECT_THAT(MessagesOf(Remove({u"/a"})), ElementsAre("manager busy()"));
}

TEST_F(RemoveFoldersFromVornixPathTest, DropsAChangeThatIsRefusedAsRecursive) {
  PathIs("a x");
  LetManagerWarnAndThrow(RecursivePathChangeException());

  EXPECT_THAT(MessagesOf(Remove({u"/a"})), ElementsAre("manager busy()"));

  EXPECT_EQ(Path(), "a x");
}

TEST_F(RemoveFoldersFromVornixPathTest, LetsEveryOtherExceptionOfTheManagerPass) {
  LetManagerThrow(std::runtime_error("no"));

  EXPECT_THROW(Remove({}), std::runtime_error);
}

TEST_F(RemoveFoldersFromVornixPathTest, ReadsAnySequenceOfNames) {
  PathIs("a x home/b");
  const std::list<std::u16string> listed = {u"/a", u"", u"b"};
  auto view = listed | ranges::views::filter([](const std::u16string& name) { return !name.empty(); });

  static_cast<void>(RemoveFoldersFromVornixPath(view, workingFolder_, manager_, pathFactory_, path_));

  EXPECT_EQ(Path(), "x");
}

}  // namespace
}  // namespace Quorvex::PathManagement
