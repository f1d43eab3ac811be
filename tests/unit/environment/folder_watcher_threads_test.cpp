// What is announced, and when: real folders, the kernel's notifications, and the thread that waits for them.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <set>
#include <support/run_together.hpp>
#include <support/without_privileges.hpp>
#include <thread>

#include "announced.hpp"
#include "shown.hpp"
#include "watched_disk.hpp"

namespace Quorvex::PathEnvironment {
namespace {

namespace fs = std::filesystem;

using foundation::msg_svc::eventmgr::Event;
using PathManagement::support::RunTogether;
using PathManagement::support::TemporaryFolder;
using PathManagement::support::WithoutPrivileges;
using std::chrono::milliseconds;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

constexpr milliseconds kNever = milliseconds::zero();  // the interval at which nothing is polled
constexpr milliseconds kOften(5);

void MakeFile(const fs::path& file) { const std::ofstream made(file); }

// The folders that are announced, by their places below a root.
class Announcements {
 public:
  explicit Announcements(const fs::path& root)
      : root_(OnDisk(root).getPath()),
        connection_(SessionEvents()->connect([this](const auto& event) { Note(*event); })) {}

  // Until `isReached(announced)`, what has been announced since the last call.
  template <class IsReached>
  Texts Await(const IsReached& isReached) {
    const auto end = std::chrono::steady_clock::now() + kLongEnough;
    while (true) {
      SessionEvents()->dispatch();
      if (isReached(texts_) || std::chrono::steady_clock::now() > end) return std::exchange(texts_, {});
      std::this_thread::yield();
    }
  }
  Texts AwaitEventFor(const std::string& folder) {
    return Await([&](const Texts& texts) { return std::find(texts.begin(), texts.end(), folder) != texts.end(); });
  }
  // What was announced by the time that changes of two packages in the folder `sentinel` are, one after the other: what
  // is noticed together is announced in any order. Each package serves once, since a change may be announced twice.
  Texts UntilSentinel(const fs::path& sentinel) {
    Texts texts = UntilNextPackage(sentinel);
    const Texts others = UntilNextPackage(sentinel);
    texts.insert(texts.end(), others.begin(), others.end());
    std::erase_if(texts, [&](const std::string& text) { return text.starts_with(sentinel.filename().string()); });
    return texts;
  }
  static std::string SentinelPackage(int number) { return "+s" + std::to_string(number); }
  static constexpr int kSentinelPackages = 40;

 private:
  Texts UntilNextPackage(const fs::path& sentinel) {
    const std::string package = SentinelPackage(nextPackage_++);
    MakeFile(sentinel / package / "sentinel");
    return AwaitEventFor(sentinel.filename() / package);
  }
  void Note(const Event& event) {
    const auto* const change = dynamic_cast<const ::storage::filefolderobserver::FileFolderChangedEvent*>(&event);
    const std::u16string path = AbsoluteIRI(change->getPath()).getPath();
    texts_.push_back(path.size() > root_.size() ? fl::filesystem::to_bytes(path.substr(root_.size() + 1)) : ".");
  }

  std::u16string root_;
  Texts texts_;
  int nextPackage_ = 0;
  foundation::msg_svc::eventmgr::EventConnection connection_;
};

class AFolderWatcher : public testing::Test {
 protected:
  AFolderWatcher() {
    SessionEvents()->dispatch();
    for (const auto* const folder : {"a/+p/@c/private", "b"}) fs::create_directories(root / folder);
    for (int number = 0; number < Announcements::kSentinelPackages; ++number) {
      fs::create_directories(root / "sentinel" / Announcements::SentinelPackage(number));
    }
  }

  // Watches some folders, and waits until all is calm.
  std::unique_ptr<FolderWatcher> Watch(const std::vector<std::string>& folders, milliseconds pollInterval = kNever,
                                       const std::shared_ptr<WatchTrouble>& trouble = nullptr) {
    auto watcher = std::make_unique<FolderWatcher>(
        foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference(), WatcherOptions{pollInterval, {}},
        std::make_unique<TroubledInotify>(trouble ? trouble : std::make_shared<WatchTrouble>()));
    watcher->Watch(*Path(folders));
    if (folders.back() == "sentinel" && pollInterval == kNever) announcements.UntilSentinel(root / "sentinel");
    return watcher;
  }
  std::shared_ptr<const FolderPath> Path(const std::vector<std::string>& folders) const {
    std::vector<AbsoluteIRI> locations;
    for (const auto& folder : folders) locations.push_back(OnDisk(root / folder));
    return ReadPath(locations);
  }

  TemporaryFolder temporary;
  const fs::path& root = temporary.GetPath();
  Announcements announcements{root};
};

TEST_F(AFolderWatcher, AnnouncesAFolderWhenANameComesGoesOrChangesInIt) {
  const auto watcher = Watch({"a", "b", "sentinel"});

  MakeFile(root / "a/new");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("a"));
  fs::rename(root / "a/new", root / "a/renamed");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), Contains("a"));
  fs::rename(root / "a/renamed", root / "b/moved");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), IsSupersetOf({"a", "b"}));
  fs::remove(root / "b/moved");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("b"));
  fs::create_directory(root / "b/plain");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("b"));
}

TEST_F(AFolderWatcher, AnnouncesSpecialFoldersUpToTheMainOneInnermostFirst) {
  const auto watcher = Watch({"a", "sentinel"});

  MakeFile(root / "a/+p/@c/private/new.x");

  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("a/+p/@c/private", "a/+p/@c", "a/+p", "a"));
}

TEST_F(AFolderWatcher, AnnouncesAFolderWithADotInItsNameAndTheOneAroundIt) {
  fs::create_directories(root / "around/data.old");
  const auto watcher = Watch({"around/data.old", "sentinel"});

  MakeFile(root / "around/data.old/new");

  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("around/data.old", "around"));
}

TEST_F(AFolderWatcher, AnnouncesNothingWhenFoldersAreReadOrFilesAreWritten) {
  MakeFile(root / "a/f.x");
  const auto watcher = Watch({"a", "b", "sentinel"});

  for (int i = 0; i < 10; ++i) static_cast<void>(Path({"a", "b"}));
  std::ofstream(root / "a/f.x") << "content";
  fs::permissions(root / "a/f.x", fs::perms::owner_read);

  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), IsEmpty());
}

TEST_F(AFolderWatcher, AnnouncesWhatItBeginsToWatchForItMayHaveChangedSinceItWasRead) {
  const auto watcher = Watch({"b", "sentinel"});

  watcher->Watch(*Path({"b", "a", "sentinel"}));

  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("a/+p/@c/private", "a/+p/@c", "a/+p", "a"));
}

TEST_F(AFolderWatcher, AnnouncesOnlyNewSubfoldersWhenAnEntryIsReplaced) {
  const auto watcher = Watch({"a", "sentinel"});
  fs::create_directories(root / "a/+new/+inner");
  announcements.UntilSentinel(root / "sentinel");

  watcher->WatchInstead({ReadEntry(OnDisk(root / "a"))});

  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("a/+new/+inner", "a/+new", "a"));
  MakeFile(root / "a/+new/+inner/f.x");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("a/+new/+inner", "a/+new", "a"));
}

TEST_F(AFolderWatcher, NoLongerAnnouncesWhatIsNotOnThePathAnyMore) {
  const auto watcher = Watch({"a", "b", "sentinel"});

  watcher->Watch(*Path({"a", "sentinel"}));
  MakeFile(root / "b/new");

  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), IsEmpty());
  EXPECT_EQ(watcher->Find(OnDisk(root / "b")), std::nullopt);
}

TEST_F(AFolderWatcher, IgnoresNamesNextToTheFoldersOnTheWay) {
  const auto watcher = Watch({"a", "missing/m", "sentinel"});

  MakeFile(root / "unrelated");
  fs::remove(root / "unrelated");

  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), IsEmpty());
}

TEST_F(AFolderWatcher, AnnouncesAFolderWithAllBelowItWhenOneAboveItIsRenamedAway) {
  fs::create_directories(root / "up/deep/m/+p");
  const auto watcher = Watch({"up/deep/m", "sentinel"});

  fs::rename(root / "up", root / "away");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("up/deep/m/+p", "up/deep/m"));
  MakeFile(root / "away/deep/m/f.x");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), IsEmpty()) << "it is another folder now";

  fs::rename(root / "away", root / "up");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("up/deep/m/+p", "up/deep/m"));
  MakeFile(root / "up/deep/m/g.x");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("up/deep/m"));
}

TEST_F(AFolderWatcher, AnnouncesAFolderWhenALinkOnTheWayLeadsElsewhere) {
  fs::create_directories(root / "one/m");
  fs::create_directories(root / "two/m");
  fs::create_directory_symlink("one", root / "link");
  const auto watcher = Watch({"link/m", "sentinel"});

  fs::create_directory_symlink("two", root / "draft");
  fs::rename(root / "draft", root / "link");

  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("link/m"));
  MakeFile(root / "one/m/f.x");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), IsEmpty());
  MakeFile(root / "two/m/f.x");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("link/m"));
}

TEST_F(AFolderWatcher, AnnouncesAFolderBehindALinkWhenTheTargetIsRenamed) {
  fs::create_directories(root / "x/one/m");
  fs::create_directory_symlink(root / "x/../x/one", root / "link");
  const auto watcher = Watch({"link/m", "sentinel"});

  fs::rename(root / "x/one", root / "x/two");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("link/m"));
  fs::rename(root / "x/two", root / "x/one");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("link/m"));
}

TEST_F(AFolderWatcher, AnnouncesAMissingFolderWhenItIsMadeHoweverMuchOfTheWayIsMissing) {
  const auto watcher = Watch({"x/y/z", "sentinel"});
  EXPECT_EQ(watcher->Find(OnDisk(root / "x/y/z"))->reason, WatchingReason::Missing);

  fs::create_directories(root / "x/y/z");

  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), Contains("x/y/z"));
  MakeFile(root / "x/y/z/f.x");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("x/y/z"));
}

TEST_F(AFolderWatcher, AnnouncesAFolderThatIsDeletedAndOneThatIsMadeAgain) {
  const auto watcher = Watch({"b", "sentinel"});

  fs::remove(root / "b");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), Contains("b"));
  fs::create_directory(root / "b");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), Contains("b"));
  MakeFile(root / "b/f.x");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("b"));
}

// The kernel tells those who watch a folder of its end only when nobody is in it any more.
TEST_F(AFolderWatcher, AnnouncesAFolderThatIsDeletedAndMadeAgainWhileSomebodyIsInIt) {
  const auto watcher = Watch({"b", "sentinel"});
  const int somebody = ::open((root / "b").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  ASSERT_NE(somebody, -1);

  fs::remove(root / "b");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), Contains("b"));
  fs::create_directory(root / "b");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), Contains("b"));
  MakeFile(root / "b/f.x");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("b"));
  ::close(somebody);
}

TEST_F(AFolderWatcher, AnnouncesEverythingWhenTheSystemLostEvents) {
  auto trouble = std::make_shared<WatchTrouble>();
  const auto watcher = Watch({"a", "b", "sentinel"}, kNever, trouble);
  trouble->Pause();
  for (int i = 0; i < 9'000; ++i) {  // two events each
    const std::string name = "flood" + std::to_string(i);
    MakeFile(root / "b" / name);
    fs::remove(root / "b" / name);
  }

  trouble->Resume();

  EXPECT_THAT(announcements.AwaitEventFor("a"), IsSupersetOf({"a/+p/@c/private", "a/+p/@c", "a/+p", "a"}));
}

TEST_F(AFolderWatcher, WatchesAFolderThatWasReplacedInTheMeantime) {
  const auto path = Path({"a", "sentinel"});
  fs::rename(root / "a", root / "away");
  fs::create_directories(root / "a");
  FolderWatcher watcher(foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference());

  watcher.Watch(*path);
  announcements.UntilSentinel(root / "sentinel");

  MakeFile(root / "a/f.x");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("a"));
  EXPECT_EQ(watcher.Find(OnDisk(root / "a/+p"))->reason, WatchingReason::Missing);
}

TEST_F(AFolderWatcher, TellsAboutEachFolderHowItIsWatched) {
  const auto watcher = Watch({"a", "missing", "b"});

  const auto states = watcher->GetFolders();

  ASSERT_EQ(states.size(), 6U);
  for (const auto& state : states) {
    EXPECT_EQ(state.state, Watching::Watched) << Shown(state.folder);
    const bool isMissing = state.folder == OnDisk(root / "missing");
    EXPECT_EQ(state.reason, isMissing ? WatchingReason::Missing : WatchingReason::None) << Shown(state.folder);
    EXPECT_EQ(watcher->Find(state.folder)->reason, state.reason);
  }
  EXPECT_EQ(ReasonOf(*watcher->Find(OnDisk(root / "missing"))), "there is no such folder yet");
  EXPECT_EQ(ReasonOf(*watcher->Find(OnDisk(root / "a"))), "");
  EXPECT_EQ(watcher->Find(OnDisk(root / "a/plain")), std::nullopt);
  EXPECT_EQ(watcher->Find(OnDisk("/")), std::nullopt);
}

struct Refusal {
  int error;
  WatchingReason reason;
};

class AWatchThatIsRefused : public AFolderWatcher, public testing::WithParamInterface<Refusal> {};

TEST_P(AWatchThatIsRefused, LetsTheFolderBePolled) {
  auto trouble = std::make_shared<WatchTrouble>();
  trouble->RefuseWatches(
      [b = (root / "b").string()](const std::string& path) { return path == b ? GetParam().error : 0; });
  const auto watcher = Watch({"a", "b", "sentinel"}, kOften, trouble);

  EXPECT_THAT(*watcher->Find(OnDisk(root / "b")), AllOf(Field(&FolderWatching::state, Watching::Polled),
                                                        Field(&FolderWatching::reason, GetParam().reason)));
  EXPECT_EQ(watcher->Find(OnDisk(root / "a"))->state, Watching::Watched);
  announcements.AwaitEventFor("b");
  MakeFile(root / "b/new");
  EXPECT_THAT(announcements.AwaitEventFor("b"), Contains("b"));
}

TEST_P(AWatchThatIsRefused, LeavesTheFolderUnwatchedWhereNothingIsPolled) {
  auto trouble = std::make_shared<WatchTrouble>();
  trouble->RefuseWatches([](const std::string& /*path*/) { return GetParam().error; });
  const auto watcher = Watch({"b"}, kNever, trouble);

  EXPECT_THAT(*watcher->Find(OnDisk(root / "b")), AllOf(Field(&FolderWatching::state, Watching::Unwatched),
                                                        Field(&FolderWatching::reason, GetParam().reason)));
}

INSTANTIATE_TEST_SUITE_P(ForEachError, AWatchThatIsRefused,
                         testing::Values(Refusal{ENOSPC, WatchingReason::LimitReached},
                                         Refusal{EMFILE, WatchingReason::NoInstance},
                                         Refusal{EACCES, WatchingReason::NoPermission},
                                         Refusal{EIO, WatchingReason::Failed}),
                         [](const auto& param) { return "Error" + std::to_string(param.param.error); });

TEST_F(AFolderWatcher, PollsWhatIsBelowAFolderThatMayNotBeWatched) {
  auto trouble = std::make_shared<WatchTrouble>();
  trouble->RefuseWatches([up = (root / "up").string()](const std::string& path) { return path == up ? EACCES : 0; });
  fs::create_directories(root / "up/m/+p");
  const auto watcher = Watch({"up/m"}, kOften, trouble);

  EXPECT_EQ(watcher->Find(OnDisk(root / "up/m"))->state, Watching::Polled);
  EXPECT_EQ(watcher->Find(OnDisk(root / "up/m/+p"))->state, Watching::Polled);
  announcements.AwaitEventFor("up/m");
  fs::rename(root / "up", root / "away");
  fs::create_directories(root / "up/m");
  EXPECT_THAT(announcements.AwaitEventFor("up/m"), Contains("up/m/+p"));
}

TEST_F(AFolderWatcher, PollsAFolderOfAnotherStorage) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f.x"});
  FolderWatcher watcher(foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference(), {kOften, {}});
  watcher.Watch(*storage.Path({u"/a"}));

  EXPECT_THAT(*watcher.Find(InMemory(u"/a")), AllOf(Field(&FolderWatching::state, Watching::Polled),
                                                    Field(&FolderWatching::reason, WatchingReason::NotLocal)));
  EXPECT_EQ(ReasonOf(*watcher.Find(InMemory(u"/a"))), "its storage does not tell of changes");
}

TEST_F(AFolderWatcher, PollsFoldersOfAFileSystemThatDoesNotTellOfChanges) {
  FolderWatcher watcher(foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference(), {kOften, {}});
  watcher.Watch(*ReadPath({OnDisk("/proc/self"), OnDisk("/proc/missing")}));

  EXPECT_EQ(watcher.Find(OnDisk("/proc/self"))->reason, WatchingReason::NotLocal);
  EXPECT_EQ(watcher.Find(OnDisk("/proc/missing"))->reason, WatchingReason::NotLocal);
}

TEST_F(AFolderWatcher, GetsAlongWhereTheSystemGrantsNoNotifications) {
  // UndefinedBehaviorSanitizer needs a descriptor to look at an object of a type that it has not seen.
  ASSERT_NE(OpenInotify()->GetDescriptor(), -1);
  rlimit usual{};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &usual), 0);
  rlimit none = usual;
  none.rlim_cur = 0;
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
  auto inotify = OpenInotify();
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &usual), 0);
  ASSERT_EQ(inotify->GetDescriptor(), -1);
  FolderWatcher watcher(foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference(), {kOften, {}},
                        std::move(inotify));

  watcher.Watch(*Path({"b"}));

  EXPECT_EQ(watcher.Find(OnDisk(root / "b"))->reason, WatchingReason::NoInstance);
  announcements.AwaitEventFor("b");
  MakeFile(root / "b/f.x");
  EXPECT_THAT(announcements.AwaitEventFor("b"), Contains("b"));
}

TEST_F(AFolderWatcher, PollsAFolderWithLinksForWhatTheyLeadTo) {
  fs::create_symlink(root / "target", root / "b/linked.x");
  const auto watcher = Watch({"b"}, kOften);

  EXPECT_THAT(*watcher->Find(OnDisk(root / "b")), AllOf(Field(&FolderWatching::state, Watching::Polled),
                                                        Field(&FolderWatching::reason, WatchingReason::HoldsLinks)));
  // A change of a folder is announced for a while, since a clock may tick slowly.
  announcements.Await([end = std::chrono::steady_clock::now() + std::chrono::seconds(3)](const Texts& /*texts*/) {
    return std::chrono::steady_clock::now() > end;
  });
  MakeFile(root / "target");
  EXPECT_THAT(announcements.AwaitEventFor("b"), Contains("b"));
}

TEST_F(AFolderWatcher, PollsAFolderAsSoonAsALinkComesAndOnlyAsLongAsThereIsOne) {
  const auto watcher = Watch({"b"}, kOften);
  announcements.AwaitEventFor("b");
  ASSERT_EQ(watcher->Find(OnDisk(root / "b"))->state, Watching::Watched);

  fs::create_symlink(root / "target", root / "b/linked.x");
  announcements.Await(
      [&](const Texts& /*texts*/) { return watcher->Find(OnDisk(root / "b"))->state == Watching::Polled; });
  EXPECT_EQ(watcher->Find(OnDisk(root / "b"))->reason, WatchingReason::HoldsLinks);

  fs::remove(root / "b/linked.x");
  announcements.Await(
      [&](const Texts& /*texts*/) { return watcher->Find(OnDisk(root / "b"))->state == Watching::Watched; });
  EXPECT_EQ(watcher->Find(OnDisk(root / "b"))->reason, WatchingReason::None);
}

TEST_F(AFolderWatcher, NeedNotPollForALinkToASpecialFolder) {
  fs::create_directories(root / "elsewhere/inner");
  fs::create_directory_symlink(root / "elsewhere/inner", root / "b/+linked");
  const auto watcher = Watch({"b", "sentinel"});

  EXPECT_EQ(watcher->Find(OnDisk(root / "b"))->state, Watching::Watched);
  MakeFile(root / "elsewhere/inner/f.x");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), ElementsAre("b/+linked", "b"));
  fs::remove_all(root / "elsewhere/inner");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), Contains("b"));
  fs::create_directory(root / "elsewhere/inner");
  EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), Contains("b/+linked"));
}

TEST_F(AFolderWatcher, AnnouncesAFolderWhenItIsClosedToUs) {
  WithoutPrivileges([this] {
    const auto watcher = Watch({"a", "sentinel"});

    fs::permissions(root / "a", fs::perms::none);
    EXPECT_THAT(announcements.UntilSentinel(root / "sentinel"), Contains("a"));
    EXPECT_EQ(watcher->Find(OnDisk(root / "a"))->reason, WatchingReason::NoPermission);

    fs::permissions(root / "a", fs::perms::owner_all);  // so that it can be removed
  });
}

TEST_F(AFolderWatcher, SaysWhenItHasAnnounced) {
  std::atomic<int> rings = 0;
  FolderWatcher watcher(foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference(),
                        {kNever, [&rings] { ++rings; }});
  watcher.Watch(*Path({"b"}));
  EXPECT_EQ(rings, 1);
  announcements.AwaitEventFor("b");

  MakeFile(root / "b/f.x");
  announcements.Await([&](const Texts& texts) { return !texts.empty() && rings > 1; });

  EXPECT_GT(rings, 1);
}

TEST_F(AFolderWatcher, AnnouncesNothingOnceItIsGone) {
  for (int i = 0; i < 20; ++i) {
    auto watcher = Watch({"b"});
    std::jthread changing([this](const std::stop_token& stop) {
      while (!stop.stop_requested()) {
        MakeFile(root / "b/f.x");
        fs::remove(root / "b/f.x");
      }
    });
    announcements.AwaitEventFor("b");
    watcher.reset();
    SessionEvents()->dispatch();

    for (int change = 0; change < 100; ++change) MakeFile(root / "b" / std::to_string(change));
    EXPECT_EQ(SessionEvents()->dispatch(), 0U);
  }
}

TEST_F(AFolderWatcher, MayBeUsedFromManyThreads) {
  const auto watcher = Watch({"a", "b", "sentinel"}, kOften);
  const auto paths = std::vector{Path({"a", "sentinel"}), Path({"b", "a"}), Path({"missing", "b"})};

  RunTogether(4, [&](std::size_t thread) {
    for (std::size_t round = 0; round < 50; ++round) {
      watcher->Watch(*paths[(thread + round) % paths.size()]);
      MakeFile(root / "b" / std::to_string(thread));
      fs::remove(root / "b" / std::to_string(thread));
      watcher->WatchInstead({ReadEntry(OnDisk(root / "a"))});
      static_cast<void>(watcher->GetFolders());
      static_cast<void>(watcher->Find(OnDisk(root / "a/+p")));
    }
  });
  watcher->Watch(*Path({"b"}));
  announcements.AwaitEventFor("b");
  MakeFile(root / "b/last");

  EXPECT_THAT(announcements.AwaitEventFor("b"), Contains("b"));
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
