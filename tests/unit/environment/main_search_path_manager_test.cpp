#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <fakes/counting_storage_provider.hpp>
#include <foundation/core/except/notification.hpp>
#include <foundation/log/diagnostic_logger.hpp>
#include <future>
#include <locale>
#include <search_path_environment/main_search_path_manager.hpp>
#include <search_path_environment/saved_path_error.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <thread>

#include "memory_storage.hpp"
#include "support/run_together.hpp"
#include "support/storage_matchers.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::core::except::Notification;
using foundation::storage::vfs::FailsWith;
using foundation::storage::vfs::VornixStorageSystem;
using PathManagement::AddIRIsToVornixPath;
using PathManagement::Position;
using PathManagement::RecursivePathChangeException;
using PathManagement::RemoveIRIsFromVornixPath;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::Throws;
using testing::ThrowsMessage;
using namespace std::chrono_literals;

using Folders = MainSearchPathManager::Folders;
using Change = MainSearchPathManager::Change;

AbsoluteIRI Folder(const std::u16string& path) { return AbsoluteIRI(u"file://" + path); }

class MainSearchPathManagerTest : public testing::Test {
 protected:
  static SavedPathFile File() { return {InMemory(u"/home/path"), VornixStorageSystem::GetStorageSystemReference()}; }
  static void Add(MainSearchPathManager& manager, const Folders& folders) {
    manager.Edit([&] { static_cast<void>(AddIRIsToVornixPath(folders, manager, Position::Beginning)); });
  }
  static void Set(MainSearchPathManager& manager, const Folders& folders) {
    Notification notification;
    manager.SetMainPathForAddition(folders, notification);
  }

  MemoryStorage memory_;
};

TEST_F(MainSearchPathManagerTest, HasNoFoldersBeforeTheFirstEdit) {
  const MainSearchPathManager manager(File());
  EXPECT_THAT(*manager.GetMainPathFolders(), IsEmpty());
}

TEST_F(MainSearchPathManagerTest, SavesWhatAnEditInstalls) {
  MainSearchPathManager manager(File());
  Add(manager, {Folder(u"/a"), Folder(u"/b")});
  EXPECT_THAT(*manager.GetMainPathFolders(), ElementsAre(Folder(u"/a"), Folder(u"/b")));
  EXPECT_THAT(*MainSearchPathManager(File()).GetMainPathFolders(), ElementsAre(Folder(u"/a"), Folder(u"/b")));
}

TEST_F(MainSearchPathManagerTest, NeverChangesAListItHandedOut) {
  MainSearchPathManager manager(File());
  Add(manager, {Folder(u"/a")});
  const auto before = manager.GetMainPathFolders();
  Add(manager, {Folder(u"/b")});
  EXPECT_THAT(*before, ElementsAre(Folder(u"/a")));
}

TEST_F(MainSearchPathManagerTest, LetsAnEditSeeWhatOthersHaveSaved) {
  MainSearchPathManager mine(File());
  MainSearchPathManager theirs(File());
  Add(theirs, {Folder(u"/theirs")});
  Add(mine, {Folder(u"/mine")});
  EXPECT_THAT(*mine.GetMainPathFolders(), ElementsAre(Folder(u"/mine"), Folder(u"/theirs")));
}

TEST_F(MainSearchPathManagerTest, LetsAnEditSeeWhatItInstalledAndNobodyElse) {
  MainSearchPathManager manager(File());
  manager.Edit([&] {
    Set(manager, {Folder(u"/a")});
    EXPECT_THAT(*manager.GetMainPathFolders(), ElementsAre(Folder(u"/a")));
    EXPECT_THAT(*std::async(std::launch::async, [&] { return manager.GetMainPathFolders(); }).get(), IsEmpty());
  });
}

TEST_F(MainSearchPathManagerTest, MakesOneVersionOfAllThatAnEditInstalls) {
  MainSearchPathManager manager(File());
  manager.Edit([&] {
    Add(manager, {Folder(u"/a")});
    Add(manager, {Folder(u"/b")});
  });
  EXPECT_THAT(File().GetVersions(), SizeIs(1));
  EXPECT_THAT(*manager.GetMainPathFolders(), ElementsAre(Folder(u"/b"), Folder(u"/a")));
}

TEST_F(MainSearchPathManagerTest, DropsWhatAnEditInstalledBeforeItFailed) {
  MainSearchPathManager manager(File());
  Add(manager, {Folder(u"/a")});
  EXPECT_THAT(
      [&] {
        manager.Edit([&] {
          Set(manager, {Folder(u"/b")});
          throw std::runtime_error("no");
        });
      },
      ThrowsMessage<std::runtime_error>("no"));
  EXPECT_THAT(*manager.GetMainPathFolders(), ElementsAre(Folder(u"/a")));
  Add(manager, {});
  EXPECT_THAT(File().Read().GetFolders(), ElementsAre(Folder(u"/a")));
}

TEST_F(MainSearchPathManagerTest, TouchesNoFileWhenAnEditChangesNothing) {
  MainSearchPathManager manager(File());
  Add(manager, {Folder(u"/a")});
  Add(manager, {Folder(u"/a")});
  EXPECT_THAT(File().GetVersions(), SizeIs(1));
}

TEST_F(MainSearchPathManagerTest, RefusesAListMadeFromWhatThePathNoLongerIs) {
  MainSearchPathManager manager(File());
  static_cast<void>(manager.GetMainPathFolders());
  std::jthread([&] { Add(manager, {Folder(u"/other")}); }).join();
  EXPECT_THAT([&] { Set(manager, {Folder(u"/mine")}); }, Throws<PathChangedException>());
  EXPECT_THAT(*manager.GetMainPathFolders(), ElementsAre(Folder(u"/other")));
  Set(manager, {Folder(u"/mine"), Folder(u"/other")});
  EXPECT_THAT(*manager.GetMainPathFolders(), ElementsAre(Folder(u"/mine"), Folder(u"/other")));
}

TEST_F(MainSearchPathManagerTest, RefusesAListWhenAnotherProcessHasSavedMeanwhile) {
  MainSearchPathManager mine(File());
  MainSearchPathManager theirs(File());
  Add(theirs, {Folder(u"/theirs")});
  EXPECT_THAT([&] { Set(mine, {Folder(u"/mine")}); }, Throws<PathChangedException>());
  EXPECT_THAT(File().Read().GetFolders(), ElementsAre(Folder(u"/theirs")));
}

TEST_F(MainSearchPathManagerTest, ReadsALazyListThatIsGivenForARemoval) {
  MainSearchPathManager manager(File());
  Add(manager, {Folder(u"/a"), Folder(u"/b"), Folder(u"/c")});
  const Folders gone = {Folder(u"/b")};
  manager.Edit([&] { EXPECT_TRUE(RemoveIRIsFromVornixPath(gone, manager).IsEmpty()); });
  EXPECT_THAT(*manager.GetMainPathFolders(), ElementsAre(Folder(u"/a"), Folder(u"/c")));
  EXPECT_EQ(File().GetVersions().back().kind, EditKind::Removal);
}

TEST_F(MainSearchPathManagerTest, AnnouncesAChangeWithBothLists) {
  MainSearchPathManager manager(File());
  std::vector<Change> changes;
  const auto listening = manager.AddListener([&](const Change& change) { changes.push_back(change); });
  Add(manager, {Folder(u"/a")});
  ASSERT_THAT(changes, SizeIs(1));
  EXPECT_THAT(*changes[0].before, IsEmpty());
  EXPECT_THAT(*changes[0].after, ElementsAre(Folder(u"/a")));
}

TEST_F(MainSearchPathManagerTest, AnnouncesNothingWhenNothingChanges) {
  MainSearchPathManager manager(File());
  Add(manager, {Folder(u"/a")});
  int calls = 0;
  const auto listening = manager.AddListener([&](const Change&) { ++calls; });
  Add(manager, {Folder(u"/a")});
  EXPECT_EQ(calls, 0);
}

TEST_F(MainSearchPathManagerTest, TellsAListenerNothingOnceItIsReleased) {
  MainSearchPathManager manager(File());
  int calls = 0;
  auto listening = manager.AddListener([&](const Change&) { ++calls; });
  listening.Release();
  Add(manager, {Folder(u"/a")});
  EXPECT_EQ(calls, 0);
}

TEST_F(MainSearchPathManagerTest, LetsListenersReadWhatIsAnnounced) {
  MainSearchPathManager manager(File());
  Folders seen;
  const auto listening = manager.AddListener([&](const Change&) { seen = *manager.GetMainPathFolders(); });
  Add(manager, {Folder(u"/a")});
  EXPECT_THAT(seen, ElementsAre(Folder(u"/a")));
}

TEST_F(MainSearchPathManagerTest, RefusesAChangeThatAListenerBegins) {
  MainSearchPathManager manager(File());
  bool isRefused = false;
  const auto listening = manager.AddListener([&](const Change&) {
    EXPECT_THAT([&] { Set(manager, {Folder(u"/nested")}); }, Throws<RecursivePathChangeException>());
    EXPECT_THAT([&] { manager.Edit([] { FAIL(); }); }, Throws<RecursivePathChangeException>());
    EXPECT_THAT([&] { static_cast<void>(manager.Undo()); }, Throws<RecursivePathChangeException>());
    EXPECT_THAT([&] { manager.Refresh(); }, Throws<RecursivePathChangeException>());
    isRefused = true;
  });
  Add(manager, {Folder(u"/a")});
  EXPECT_TRUE(isRefused);
  EXPECT_THAT(*manager.GetMainPathFolders(), ElementsAre(Folder(u"/a")));
}

TEST_F(MainSearchPathManagerTest, DropsInSilenceWhatAListenerEditsThroughTheLibrary) {
  MainSearchPathManager manager(File());
  const Folders nested = {Folder(u"/nested")};
  const auto listening = manager.AddListener(
      [&](const Change&) { EXPECT_TRUE(AddIRIsToVornixPath(nested, manager, Position::End).IsEmpty()); });
  Add(manager, {Folder(u"/a")});
  EXPECT_THAT(*manager.GetMainPathFolders(), ElementsAre(Folder(u"/a")));
}

TEST_F(MainSearchPathManagerTest, LetsOtherThreadsWaitForAnAnnouncement) {
  MainSearchPathManager manager(File());
  std::jthread other;
  std::atomic<bool> isAnnouncing = false;
  std::atomic<bool> overlapped = false;
  const auto listening = manager.AddListener([&](const Change& change) {
    if (change.after->size() != 1) return;
    isAnnouncing = true;
    other = std::jthread([&] {
      Add(manager, {Folder(u"/b")});
      if (isAnnouncing) overlapped = true;
    });
    std::this_thread::sleep_for(20ms);
    isAnnouncing = false;
  });
  Add(manager, {Folder(u"/a")});
  other.join();
  EXPECT_FALSE(overlapped);
  EXPECT_THAT(*manager.GetMainPathFolders(), ElementsAre(Folder(u"/b"), Folder(u"/a")));
}

TEST_F(MainSearchPathManagerTest, LogsWhatAListenerThrowsAndTellsTheOthers) {
  MainSearchPathManager manager(File());
  std::vector<std::string> logged;
  const auto sink =
      foundation::log::ConnectSink([&](const foundation::log::LogRecord& record) { logged.push_back(record.text); });
  int calls = 0;
  const auto failing = manager.AddListener([](const Change&) { throw std::runtime_error("broken listener"); });
  const auto listening = manager.AddListener([&](const Change&) { ++calls; });
  Add(manager, {Folder(u"/a")});
  EXPECT_EQ(calls, 1);
  EXPECT_THAT(logged, ElementsAre(HasSubstr("broken listener")));
}

TEST_F(MainSearchPathManagerTest, TakesBackOneEditAfterTheOther) {
  MainSearchPathManager manager(File());
  Add(manager, {Folder(u"/a")});
  Add(manager, {Folder(u"/b")});
  Add(manager, {Folder(u"/c")});
  EXPECT_TRUE(manager.Undo());
  EXPECT_THAT(*manager.GetMainPathFolders(), ElementsAre(Folder(u"/b"), Folder(u"/a")));
  EXPECT_TRUE(manager.Undo());
  EXPECT_THAT(*manager.GetMainPathFolders(), ElementsAre(Folder(u"/a")));
  Add(manager, {Folder(u"/d")});
  EXPECT_TRUE(manager.Undo());
  EXPECT_TRUE(manager.Undo());
  EXPECT_THAT(*manager.GetMainPathFolders(), IsEmpty());
  EXPECT_FALSE(manager.Undo());
}

TEST_F(MainSearchPathManagerTest, KeepsWhatWasEditedByHandWhenAnEditIsTakenBack) {
  MainSearchPathManager manager(File());
  Add(manager, {Folder(u"/a")});
  memory_.GetProvider().AddFile(u"/home/path", "# search path, version 1\n/by/hand\n");
  EXPECT_TRUE(manager.Undo());
  EXPECT_THAT(File().GetVersions().back().before.GetFolders(), ElementsAre(Folder(u"/by/hand")));
}

TEST_F(MainSearchPathManagerTest, BringsBackCommentsWithTheirFolders) {
  const std::string bytes = "# search path, version 1\n\n# precious\n/a\n";
  memory_.GetProvider().AddFile(u"/home/path", bytes);
  MainSearchPathManager manager(File());
  const Folders gone = {Folder(u"/a")};
  manager.Edit([&] { static_cast<void>(RemoveIRIsFromVornixPath(gone, manager)); });
  EXPECT_TRUE(manager.Undo());
  EXPECT_EQ(File().ReadBytes(), bytes);
}

TEST_F(MainSearchPathManagerTest, TakesBackTheEditBeforeOneThatWasTakenBackByHand) {
  MainSearchPathManager manager(File());
  Add(manager, {Folder(u"/a")});
  Add(manager, {Folder(u"/b")});
  memory_.GetProvider().AddFile(u"/home/path", "# search path, version 1\n# by hand\n/a\n");
  EXPECT_EQ(manager.Undo()->number, 1);
  EXPECT_THAT(*manager.GetMainPathFolders(), IsEmpty());
  EXPECT_FALSE(manager.Undo());
}

TEST_F(MainSearchPathManagerTest, TakesNothingBackWithinAnEdit) {
  MainSearchPathManager manager(File());
  Add(manager, {Folder(u"/a")});
  EXPECT_THROW(manager.Edit([&] { static_cast<void>(manager.Undo()); }), std::logic_error);
  EXPECT_THAT(*manager.GetMainPathFolders(), ElementsAre(Folder(u"/a")));
}

TEST_F(MainSearchPathManagerTest, RefreshesWithinAnEditAsItIs) {
  MainSearchPathManager manager(File());
  manager.Edit([&] {
    manager.Refresh();
    Set(manager, {Folder(u"/a")});
  });
  EXPECT_THAT(*manager.GetMainPathFolders(), ElementsAre(Folder(u"/a")));
}

TEST_F(MainSearchPathManagerTest, DropsWhatAnInnerEditInstalledBeforeItFailed) {
  MainSearchPathManager manager(File());
  manager.Edit([&] {
    Set(manager, {Folder(u"/outer")});
    EXPECT_THROW(manager.Edit([&] {
      Set(manager, {Folder(u"/inner")});
      throw std::runtime_error("no");
    }),
                 std::runtime_error);
  });
  EXPECT_THAT(*manager.GetMainPathFolders(), ElementsAre(Folder(u"/outer")));
}

TEST_F(MainSearchPathManagerTest, RefusesAFolderThatCouldNotBeReadAgain) {
  MainSearchPathManager manager(File());
  EXPECT_THAT([&] { Add(manager, {AbsoluteIRI(u"file:relative")}); }, FailsWith(std::errc::invalid_argument));
  EXPECT_EQ(File().ReadBytes(), std::nullopt);
}

TEST_F(MainSearchPathManagerTest, RefusesAListMadeByAThreadThatNeverReadThePathOnceItHasChanged) {
  MainSearchPathManager manager(File());
  std::jthread([&] {
    Add(manager, {Folder(u"/a")});
    static_cast<void>(manager.GetMainPathFolders());
  }).join();
  std::jthread([&] { EXPECT_THROW(Set(manager, {Folder(u"/b")}), PathChangedException); }).join();
}

TEST_F(MainSearchPathManagerTest, RefusesAListMadeFromAnEditThatWasDropped) {
  MainSearchPathManager manager(File());
  Folders list;
  const auto edit = [&] {
    Add(manager, {Folder(u"/dropped")});
    list = *manager.GetMainPathFolders();
    throw std::runtime_error("no");
  };
  EXPECT_THROW(manager.Edit(edit), std::runtime_error);
  list.push_back(Folder(u"/b"));
  EXPECT_THROW(Set(manager, list), PathChangedException);
}

TEST_F(MainSearchPathManagerTest, TakesAListMadeFromWhatAnEditInstalled) {
  MainSearchPathManager manager(File());
  Folders list;
  manager.Edit([&] {
    Add(manager, {Folder(u"/a")});
    list = *manager.GetMainPathFolders();
  });
  list.push_back(Folder(u"/b"));
  Set(manager, list);
  EXPECT_THAT(*manager.GetMainPathFolders(), ElementsAre(Folder(u"/a"), Folder(u"/b")));
}

TEST_F(MainSearchPathManagerTest, TakesACommentMadeByHandForNoChangeOfThePath) {
  MainSearchPathManager manager(File());
  Add(manager, {Folder(u"/a")});
  static_cast<void>(manager.GetMainPathFolders());
  memory_.GetProvider().AddFile(u"/home/path", "# search path, version 1\n# by hand\n/a\n");
  Set(manager, {Folder(u"/a"), Folder(u"/b")});
  EXPECT_EQ(File().ReadBytes(), "# search path, version 1\n# by hand\n/a\n/b\n");
}

TEST_F(MainSearchPathManagerTest, WritesNumbersAsTheyAreWhateverTheLocale) {
  struct Grouping : std::numpunct<char> {
    std::string do_grouping() const override { return "\3"; }
  };
  const std::locale before = std::locale::global(std::locale(std::locale(), new Grouping));
  MainSearchPathManager manager(File());
  Add(manager, {Folder(u"/a")});
  const bool isUndone = manager.Undo().has_value();
  std::locale::global(before);
  EXPECT_TRUE(isUndone);
}

TEST_F(MainSearchPathManagerTest, TakesOverAndAnnouncesWhatOthersSavedWhenAsked) {
  MainSearchPathManager manager(File());
  MainSearchPathManager other(File());
  std::vector<Change> changes;
  const auto listening = manager.AddListener([&](const Change& change) { changes.push_back(change); });
  Add(other, {Folder(u"/a")});
  EXPECT_THAT(*manager.GetMainPathFolders(), IsEmpty());
  manager.Refresh();
  EXPECT_THAT(*manager.GetMainPathFolders(), ElementsAre(Folder(u"/a")));
  EXPECT_THAT(changes, SizeIs(1));
}

TEST_F(MainSearchPathManagerTest, AnnouncesWhatOthersSavedEvenIfItsOwnEditFails) {
  MainSearchPathManager manager(File());
  MainSearchPathManager other(File());
  std::vector<Change> changes;
  const auto listening = manager.AddListener([&](const Change& change) { changes.push_back(change); });
  Add(other, {Folder(u"/a")});
  EXPECT_THROW(manager.Edit([] { throw std::runtime_error("no"); }), std::runtime_error);
  ASSERT_THAT(changes, SizeIs(1));
  EXPECT_THAT(*changes[0].after, ElementsAre(Folder(u"/a")));
}

TEST_F(MainSearchPathManagerTest, RefusesToEditADamagedFile) {
  MainSearchPathManager manager(File());
  memory_.GetProvider().AddFile(u"/home/path", "something else\n");
  EXPECT_THAT([&] { Add(manager, {Folder(u"/a")}); }, ThrowsMessage<SavedPathError>(HasSubstr("line 1")));
  EXPECT_EQ(File().ReadBytes(), "something else\n");
}

TEST_F(MainSearchPathManagerTest, GivesUpWhenAnotherProcessEditsForTooLong) {
  MainSearchPathManager manager(File(), 0ms);
  const auto lock = File().Lock(0ms);
  EXPECT_THAT([&] { Add(manager, {Folder(u"/a")}); }, FailsWith(std::errc::timed_out));
}

TEST_F(MainSearchPathManagerTest, LosesNoEditOfManyThreads) {
  constexpr std::size_t threads = 4;
  constexpr std::size_t edits = 25;
  MainSearchPathManager manager(File());
  PathManagement::support::RunTogether(threads, [&](std::size_t thread) {
    for (std::size_t edit = 0; edit < edits; ++edit) {
      const std::string name = "/t" + std::to_string(thread) + "/" + std::to_string(edit);
      Add(manager, {Folder({name.begin(), name.end()})});
      static_cast<void>(manager.GetMainPathFolders()->size());
    }
  });
  EXPECT_THAT(*manager.GetMainPathFolders(), SizeIs(threads * edits));
  EXPECT_THAT(File().Read().GetFolders(), SizeIs(threads * edits));
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
