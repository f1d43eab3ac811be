#include <deque>
#include <list>
#include <range/v3/view/filter.hpp>
#include <stdexcept>
#include <type_traits>

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

class AddIRIsToVornixPathTest : public MainPathTest {
 protected:
  Notification Add(std::string_view names, Position position) {
    const FolderList folders = FoldersAt(names);
    return AddIRIsToVornixPath(folders, manager_, position);
  }
};

TEST_F(AddIRIsToVornixPathTest, HasTheAgreedSignature) {
  EXPECT_TRUE((std::is_same_v<decltype(&AddIRIsToVornixPath),
                              Notification (*)(const FolderRange&, IMainSearchPathManager&, Position)>));
}

TEST_F(AddIRIsToVornixPathTest, PutsFoldersBeforeTheOthersInTheirOrder) {
  PathIs("x y");

  EXPECT_TRUE(Add("b a c", Position::Beginning).IsEmpty());

  EXPECT_EQ(Path(), "b a c x y");
}

TEST_F(AddIRIsToVornixPathTest, PutsFoldersAfterTheOthersInTheirOrder) {
  PathIs("x y");

  EXPECT_TRUE(Add("b a c", Position::End).IsEmpty());

  EXPECT_EQ(Path(), "x y b a c");
}

TEST_F(AddIRIsToVornixPathTest, TakesEveryPositionButTheBeginningForTheEnd) {
  for (const unsigned position : {1U, 2U, 7U, 256U, 65536U, 0x80000000U, 0xFFFFFFFFU}) {
    PathIs("x y");

    static_cast<void>(Add("a", static_cast<Position>(position)));

    EXPECT_EQ(Path(), "x y a") << position;
  }
}

TEST_F(AddIRIsToVornixPathTest, TakesPositionZeroForTheBeginning) {
  PathIs("x y");

  static_cast<void>(Add("a", static_cast<Position>(0)));

  EXPECT_EQ(Path(), "a x y");
}

TEST_F(AddIRIsToVornixPathTest, FillsAnEmptyPath) {
  static_cast<void>(Add("a b", Position::Beginning));
  EXPECT_EQ(Path(), "a b");

  PathIs("");
  static_cast<void>(Add("a b", Position::End));
  EXPECT_EQ(Path(), "a b");
}

TEST_F(AddIRIsToVornixPathTest, MovesAFolderFromTheMiddleToTheFront) {
  PathIs("x a y");

  static_cast<void>(Add("a", Position::Beginning));

  EXPECT_EQ(Path(), "a x y");
}

TEST_F(AddIRIsToVornixPathTest, MovesAFolderFromTheMiddleToTheBack) {
  PathIs("x a y");

  static_cast<void>(Add("a", Position::End));

  EXPECT_EQ(Path(), "x y a");
}

TEST_F(AddIRIsToVornixPathTest, TakesEveryOccurrenceOfAGivenFolderFromItsOldPlace) {
  PathIs("a x a y a");

  static_cast<void>(Add("a", Position::End));

  EXPECT_EQ(Path(), "x y a");
}

TEST_F(AddIRIsToVornixPathTest, KeepsTheOrderAndTheRepeatsOfFoldersNotGiven) {
  PathIs("y x y b x");

  static_cast<void>(Add("a b", Position::Beginning));
  EXPECT_EQ(Path(), "a b y x y x");
}

TEST_F(AddIRIsToVornixPathTest, AddsAFolderGivenTwiceOnceWhereItIsMentionedFirst) {
  PathIs("x");

  static_cast<void>(Add("b a b c a", Position::Beginning));
  EXPECT_EQ(Path(), "b a c x");

  PathIs("x");
  static_cast<void>(Add("b a b c a", Position::End));
  EXPECT_EQ(Path(), "x b a c");
}

TEST_F(AddIRIsToVornixPathTest, TellsFoldersApartByTheirIdentifiersAlone) {
  const auto alias = foundation::storage::vfs::VornixStorageSystem::MountAlias(u"alias", u"memory");
  PathIs("a alias:///a A a%2Fb file:///a");

  static_cast<void>(Add("a a/b", Position::End));
  EXPECT_EQ(Path(), "alias:///a A a%2Fb file:///a a a/b");
}

TEST_F(AddIRIsToVornixPathTest, ReadsTheListOnceAndInstallsTheNewOneOnceAsAnAddition) {
  PathIs("x");

  static_cast<void>(Add("a b", Position::End));

  EXPECT_THAT(manager_.GetCalls(), ElementsAre("GetMainPathFolders", "SetMainPathForAddition"));
}

TEST_F(AddIRIsToVornixPathTest, InstallsTheListUnchangedWhenNothingIsGiven) {
  PathIs("y x y");

  EXPECT_TRUE(Add("", Position::Beginning).IsEmpty());

  EXPECT_THAT(manager_.GetCalls(), ElementsAre("GetMainPathFolders", "SetMainPathForAddition"));
  EXPECT_EQ(Path(), "y x y");
}

TEST_F(AddIRIsToVornixPathTest, InstallsEvenAListThatIsTheSame) {
  PathIs("a x");

  static_cast<void>(Add("a", Position::Beginning));

  EXPECT_THAT(manager_.GetCalls(), ElementsAre("GetMainPathFolders", "SetMainPathForAddition"));
}

TEST_F(AddIRIsToVornixPathTest, ReturnsWhatTheManagerHasToSay) {
  LetManagerWarn();

  EXPECT_THAT(MessagesOf(Add("a", Position::End)), ElementsAre("manager busy()"));

  EXPECT_EQ(Path(), "a");
}

TEST_F(AddIRIsToVornixPathTest, HandsTheManagerANotificationWithoutMessages) {
  bool wasEmpty = false;
  manager_.BeforeInstalling(
      [&](const FolderRange&, const Notification& notification) { wasEmpty = notification.IsEmpty(); });

  static_cast<void>(Add("a", Position::End));

  EXPECT_TRUE(wasEmpty);
}

TEST_F(AddIRIsToVornixPathTest, DropsAChangeThatIsRefusedAsRecursive) {
  PathIs("x");
  LetManagerThrow(RecursivePathChangeException());

  EXPECT_TRUE(Add("a", Position::End).IsEmpty());

  EXPECT_EQ(Path(), "x");
}

TEST_F(AddIRIsToVornixPathTest, DropsAChangeThatIsRefusedAsRecursiveWhileItIsRead) {
  PathIs("x");
  LetManagerThrowWhileReading(RecursivePathChangeException());

  EXPECT_TRUE(Add("a", Position::Beginning).IsEmpty());

  EXPECT_EQ(firstRead_, u"memory:///a");
  EXPECT_EQ(Path(), "x");
}

TEST_F(AddIRIsToVornixPathTest, DropsAChangeThatIsRefusedByADerivedException) {
  class Nested final : public RecursivePathChangeException {};
  LetManagerThrow(Nested());

  EXPECT_TRUE(Add("a", Position::End).IsEmpty());

  EXPECT_EQ(Path(), "");
}

TEST_F(AddIRIsToVornixPathTest, ReturnsWhatTheManagerSaidBeforeItRefused) {
  PathIs("x");
  LetManagerWarnAndThrow(RecursivePathChangeException());

  EXPECT_THAT(MessagesOf(Add("a", Position::End)), ElementsAre("manager busy()"));

  EXPECT_EQ(Path(), "x");
}

TEST_F(AddIRIsToVornixPathTest, LetsEveryOtherExceptionOfInstallingPass) {
  PathIs("x");

  LetManagerThrow(std::runtime_error("no"));
  EXPECT_THROW(Add("a", Position::End), std::runtime_error);

  LetManagerThrow(FailedToAbsolutizeException(4));
  EXPECT_THROW(Add("a", Position::End), FailedToAbsolutizeException);

  EXPECT_EQ(Path(), "x");
}

TEST_F(AddIRIsToVornixPathTest, LetsEveryExceptionOfAskingForTheListPass) {
  manager_.FailToAnswerWith(std::make_exception_ptr(std::runtime_error("no")));
  EXPECT_THROW(Add("a", Position::End), std::runtime_error);

  // Only the change can be refused as recursive.
  manager_.FailToAnswerWith(std::make_exception_ptr(RecursivePathChangeException()));
  EXPECT_THROW(Add("a", Position::End), RecursivePathChangeException);

  EXPECT_THAT(manager_.GetCalls(), ElementsAre("GetMainPathFolders", "GetMainPathFolders"));
}

TEST_F(AddIRIsToVornixPathTest, HoldsTheOldListUntilTheManagerIsDone) {
  PathIs("x a y");
  const std::weak_ptr<const FolderList> old = manager_.GetMainPathFolders();
  bool isHeld = false;
  std::string read;
  manager_.BeforeInstalling([&](const FolderRange& folders, const Notification&) {
    manager_.Replace({});
    isHeld = !old.expired();
    read = NamesOf({folders.begin(), folders.end()});
  });

  static_cast<void>(Add("a", Position::End));

  EXPECT_TRUE(isHeld);
  EXPECT_EQ(read, "x y a");
  EXPECT_TRUE(old.expired());
}

TEST_F(AddIRIsToVornixPathTest, LetsTheManagerReadTheNewListAgain) {
  PathIs("x");
  std::string first;
  std::string second;
  manager_.BeforeInstalling([&](const FolderRange& folders, const Notification&) {
    first = NamesOf({folders.begin(), folders.end()});
    second = NamesOf({folders.begin(), folders.end()});
  });

  static_cast<void>(Add("a", Position::Beginning));

  EXPECT_EQ(first, "a x");
  EXPECT_EQ(second, "a x");
}

TEST_F(AddIRIsToVornixPathTest, ReadsAnySequenceOfFolders) {
  const FolderList folders = FoldersAt("b a b");
  FolderList changeable = folders;
  const std::list<AbsoluteIRI> listed(folders.begin(), folders.end());
  const std::deque<AbsoluteIRI> queued(folders.begin(), folders.end());
  const auto expectToBeRead = [this](const FolderRange& range) {
    PathIs("x");
    static_cast<void>(AddIRIsToVornixPath(range, manager_, Position::End));
    EXPECT_EQ(Path(), "x b a");
  };

  expectToBeRead(folders);
  expectToBeRead(changeable);
  expectToBeRead(listed);
  expectToBeRead(queued);
}

TEST_F(AddIRIsToVornixPathTest, ReadsAViewThatIsComputedMeanwhileOnce) {
  const FolderList folders = FoldersAt("a b c");
  const AbsoluteIRI& unwanted = folders[1];
  int asked = 0;
  auto view = folders | ranges::views::filter([&](const AbsoluteIRI& folder) {
                ++asked;
                return folder != unwanted;
              });

  static_cast<void>(AddIRIsToVornixPath(view, manager_, Position::End));

  EXPECT_EQ(Path(), "a c");
  EXPECT_EQ(asked, 3);
}

TEST_F(AddIRIsToVornixPathTest, TakesFoldersFromThePathItself) {
  PathIs("x a y");
  const FolderList given = manager_.GetFolders();

  static_cast<void>(AddIRIsToVornixPath(given, manager_, Position::Beginning));

  EXPECT_EQ(Path(), "x a y");
}

TEST_F(AddIRIsToVornixPathTest, AddsAFolderThatNoTextCanExpress) {
  static_cast<void>(Add("file:///a%2Fb nowhere-mounted:///a", Position::End));

  EXPECT_EQ(Path(), "file:///a%2Fb nowhere-mounted:///a");
}

TEST_F(AddIRIsToVornixPathTest, KeepsNothingFromOneCallToTheNext) {
  static_cast<void>(Add("a", Position::End));
  PathIs("x");

  static_cast<void>(Add("a b", Position::End));

  EXPECT_EQ(Path(), "x a b");
}

// Names. The factories are strict: a test fails that lets them be touched.

class AddFoldersToVornixPathTest : public MainPathTest {
 protected:
  Notification Add(const Names& names, Position position) {
    return AddFoldersToVornixPath(names, workingFolder_, manager_, pathFactory_, entryFactory_, position);
  }
};

TEST_F(AddFoldersToVornixPathTest, HasTheAgreedSignature) {
  EXPECT_TRUE((std::is_same_v<decltype(&AddFoldersToVornixPath),
                              Notification (*)(const detail::AnyRangeAdapter<std::u16string>&,
                                               const ICurrentWorkingFolder&, IMainSearchPathManager&,
                                               const IPathFactory&, const IPathEntryFactory&, Position)>));
}

TEST_F(AddFoldersToVornixPathTest, PutsTheFoldersOfTheNamesAtTheGivenEnd) {
  PathIs("x b y");

  EXPECT_TRUE(Add({u"/b", u"sub"}, Position::Beginning).IsEmpty());
  EXPECT_EQ(Path(), "b home/sub x y");

  EXPECT_TRUE(Add({u"/b"}, static_cast<Position>(7)).IsEmpty());
  EXPECT_EQ(Path(), "home/sub x y b");
}

TEST_F(AddFoldersToVornixPathTest, AddsAFolderThatGoesByTwoNamesOnce) {
  EXPECT_TRUE(Add({u"sub", u"/b", u"/home/sub"}, Position::End).IsEmpty());

  EXPECT_EQ(Path(), "home/sub b");
}

TEST_F(AddFoldersToVornixPathTest, AddsNothingWhenOneNameIsRejected) {
  PathIs("x");
  workingFolder_.Reject(u"gone", 4);

  const Notification warnings = Add({u"/a", u"gone", u"/b"}, Position::End);

  EXPECT_THAT(MessagesOf(warnings), ElementsAre("VORNIX:mpath nameNonexistentOrNotADirectory(gone)"));
  EXPECT_EQ(Path(), "x");
  EXPECT_THAT(manager_.GetCalls(), IsEmpty());
}

TEST_F(AddFoldersToVornixPathTest, WarnsOfEveryRejectedName) {
  workingFolder_.Reject(u"gone", 7);
  workingFolder_.Reject(u"hidden", 3);

  EXPECT_THAT(
      MessagesOf(Add({u"hidden", u"gone", u"hidden"}, Position::End)),
      ElementsAre("VORNIX:mpath directoryPermissionDenied(hidden)", "VORNIX:mpath nameNonexistentOrNotADirectory(gone)",
                  "VORNIX:mpath directoryPermissionDenied(hidden)"));
}

TEST_F(AddFoldersToVornixPathTest, LetsAFailureWithoutKeyPassAndAddsNothing) {
  PathIs("x");
  for (const int code : {1, 2, 8, 10, -1}) {
    workingFolder_.Reject(u"bad", code);
    EXPECT_THROW(Add({u"/a", u"bad"}, Position::End), FailedToAbsolutizeException) << code;
  }

  EXPECT_EQ(Path(), "x");
  EXPECT_THAT(manager_.GetCalls(), IsEmpty());
}

TEST_F(AddFoldersToVornixPathTest, LetsEveryOtherFailureOfTheWorkingFolderPass) {
  // Not swallowed either: it is the manager's refusal only when it comes from the manager.
  workingFolder_.FailWith(u"bad", std::make_exception_ptr(RecursivePathChangeException()));
  EXPECT_THROW(Add({u"bad"}, Position::End), RecursivePathChangeException);
  workingFolder_.FailWith(u"bad", std::make_exception_ptr(std::runtime_error("no")));
  EXPECT_THROW(Add({u"bad"}, Position::End), std::runtime_error);

  EXPECT_THAT(manager_.GetCalls(), IsEmpty());
}

TEST_F(AddFoldersToVornixPathTest, InstallsTheListUnchangedWhenNoNamesAreGiven) {
  PathIs("y x y");

  EXPECT_TRUE(Add({}, Position::Beginning).IsEmpty());

  EXPECT_THAT(manager_.GetCalls(), ElementsAre("GetMainPathFolders", "SetMainPathForAddition"));
  EXPECT_EQ(Path(), "y x y");
}

TEST_F(AddFoldersToVornixPathTest, ReturnsWhatTheManagerHasToSay) {
  LetManagerWarn();

  EXPECT_THAT(MessagesOf(Add({u"/a"}, Position::End)), ElementsAre("manager busy()"));
}

TEST_F(AddFoldersToVornixPathTest, DropsAChangeThatIsRefusedAsRecursive) {
  PathIs("x");
  LetManagerWarnAndThrow(RecursivePathChangeException());

  EXPECT_THAT(MessagesOf(Add({u"/a"}, Position::End)), ElementsAre("manager busy()"));

  EXPECT_EQ(Path(), "x");
}

TEST_F(AddFoldersToVornixPathTest, LetsEveryOtherExceptionOfTheManagerPass) {
  LetManagerThrow(std::runtime_error("no"));

  EXPECT_THROW(Add({u"/a"}, Position::End), std::runtime_error);
}

TEST_F(AddFoldersToVornixPathTest, ReadsAnySequenceOfNames) {
  const std::list<std::u16string> listed = {u"/a", u"", u"b"};
  auto view = listed | ranges::views::filter([](const std::u16string& name) { return !name.empty(); });

  static_cast<void>(AddFoldersToVornixPath(view, workingFolder_, manager_, pathFactory_, entryFactory_, Position::End));

  EXPECT_EQ(Path(), "a home/b");
}

}  // namespace
}  // namespace Quorvex::PathManagement
