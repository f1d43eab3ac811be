// Folders on disk that change behind a cache's back, and whose modification times are then set back: the change time is
// left to tell of it, and it does.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <iostream>
#include <map>
#include <support/random_source.hpp>
#include <thread>

#include "disk_folder.hpp"
#include "toolbox_caches.hpp"

namespace Quorvex::PathEnvironment {
namespace {

namespace fs = std::filesystem;
using PathManagement::support::RandomSource;

class ForgedTree {
 public:
  explicit ForgedTree(RandomSource& random) : random_(random) {
    for (const std::string& name : kMainFolders) folders_.push_back(disk_.LocationOf(name));
    for (int i = 0; i < 60; ++i) Change();
  }

  [[nodiscard]] const std::vector<AbsoluteIRI>& GetFolders() const { return folders_; }
  [[nodiscard]] AbsoluteIRI GetRoot() const { return disk_.LocationOf(); }

  /// One to three changes, none of which the times of modification tell.
  void ChangeBehindTheBack() {
    const auto times = TimesOfFolders();
    for (std::size_t changes = 1 + random_.Below(3); changes > 0; --changes) Change();
    for (const auto& [folder, time] : TimesOfFolders()) {
      const auto before = times.find(folder);
      if (before == times.end() || IsSame(before->second, time)) continue;
      const timespec both[] = {before->second, before->second};
      ASSERT_EQ(::utimensat(AT_FDCWD, folder.c_str(), both, 0), 0) << folder;
    }
  }

  [[nodiscard]] std::shared_ptr<const FolderPath> Read(const PathManagement::IPathEntryFactory& entries) const {
    return FolderPathFactory().CreateFolderPath(DistinctFolders(folders_, Session()), entries);
  }

 private:
  static bool IsSame(const timespec& left, const timespec& right) {
    return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
  }
  [[nodiscard]] std::map<std::string, timespec> TimesOfFolders() const {
    std::map<std::string, timespec> times;
    for (const auto& place : fs::recursive_directory_iterator(disk_.PathOf())) {
      struct stat status {};
      if (::stat(place.path().c_str(), &status) == 0 && S_ISDIR(status.st_mode)) times[place.path()] = status.st_mtim;
    }
    return times;
  }

  // Something is made, removed, moved, or linked; or nothing, where that cannot be.
  void Change() {
    std::error_code impossible;
    switch (random_.Below(8)) {
      case 0:
        fs::remove(AnyFile(), impossible);
        break;
      case 1:
        fs::remove_all(AnyFolder(), impossible);
        break;
      case 2:
        fs::create_directories(AnyFolder(), impossible);
        break;
      case 3:
        fs::create_symlink(random_.OneIn(2) ? AnyFile() : AnyFolder(),
                           AnyFolder() + "/" + random_.Pick(random_.OneIn(2) ? kFiles : kSubfolders), impossible);
        break;
      case 4:
        fs::rename(AnyFolder(), AnyFolder(), impossible);
        break;
      case 5:
        fs::rename(AnyFile(), AnyFile(), impossible);
        break;
      default:
        fs::create_directories(fs::path(AnyFile()).parent_path(), impossible);
        ::close(::open(AnyFile().c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666));  // -1 closes nothing
    }
  }
  [[nodiscard]] std::string AnyFolder() const {
    std::string folder = disk_.PathOf(random_.Pick(random_.OneIn(4) ? kOtherFolders : kMainFolders));
    while (random_.OneIn(2)) folder += "/" + random_.Pick(kSubfolders);
    return folder;
  }
  [[nodiscard]] std::string AnyFile() const { return AnyFolder() + "/" + random_.Pick(kFiles); }

  // Few, so that names meet.
  inline static const std::vector<std::string> kMainFolders = {"m1", "m2", "m3", "m4"};
  inline static const std::vector<std::string> kOtherFolders = {"else1", "else2"};  // what links may lead to
  inline static const std::vector<std::string> kSubfolders = {"private", "@a", "+p", "plain"};
  inline static const std::vector<std::string> kFiles = {"a.x", "b.x", "c.x"};

  RandomSource& random_;
  DiskFolder disk_;
  std::vector<AbsoluteIRI> folders_;
};

// All that can be asked, as one text.
std::string AnswersOf(const PathManagement::IPath& path) {
  std::string answers = testing::PrintToString(Walk(path)) + '\n';
  for (const std::u16string name : {u"a", u"b", u"c"}) {
    const Wanted wanted{name, {u".x"}};
    answers += Shown(path.FindFirstInScope(kEveryKind, wanted.Target(), kNative)) + '\n';
    answers += testing::PrintToString(AllShown(path.FindAllInScope(kEveryKind, wanted.Target(), kNative))) + '\n';
    answers += testing::PrintToString(AllShown(path.GetMethodEntriesByName(kEveryKind, name, kNative))) + '\n';
  }
  for (const EntryPtr& entry : *path.GetMainEntries()) {
    answers += Shown(static_cast<const FolderEntry&>(*entry).GetCanonicalLocation()) + '\n';
  }
  return answers;
}

struct Figures {
  std::size_t fromCache = 0;  // paths whose list the cache held
  std::size_t proven = 0;     // of their folders
};

// The cache is written, the folders change, and it is asked.
void TryOnce(ForgedTree& tree, Figures& figures) {
  const AbsoluteIRI file = InMemory(u"/toolbox");
  WriteCache(file, tree.GetRoot(), tree.GetFolders());
  tree.ChangeBehindTheBack();

  const auto fresh = tree.Read(FolderEntryFactory(Session()));
  const auto cache = OpenCache(file);
  if (const auto cached = PathFrom(cache, tree.GetFolders())) {
    ++figures.fromCache;
    figures.proven += cache.CountFolders() - cached->CountRead();
    EXPECT_EQ(AnswersOf(*cached), AnswersOf(*fresh));
    EXPECT_EQ(AllShown(cached->GetProblems()), AllShown(fresh->GetProblems()));
  }
  // The same by way of the records alone.
  EXPECT_EQ(AnswersOf(*tree.Read(FolderEntryFactory(Session(), cache))), AnswersOf(*fresh));
}

TEST(AStaleCache, GivesNoStaleAnswerThoughFolderTimesAreSetBack) {
  RandomSource random = RandomSource::OfThisRun(7'101);
  SCOPED_TRACE(random.Describe());
  const MemoryStorage memory;  // for the cache: there, flushing takes no time
  Figures figures;
  const int trees = RandomSource::Rounds(50);
  constexpr int kRounds = 20;
  for (int i = 0; i < trees; ++i) {
    ForgedTree tree(random);
    for (int round = 0; round < kRounds && !testing::Test::HasFailure(); ++round) {
      SCOPED_TRACE("tree " + std::to_string(i) + ", round " + std::to_string(round));
      // Mostly the clock ticks before the folders are read, so that they can be proven.
      if (!random.OneIn(4)) std::this_thread::sleep_for(std::chrono::milliseconds(5));
      TryOnce(tree, figures);
    }
  }
  std::cout << trees * kRounds << " rounds with folder times set back: " << figures.fromCache
            << " paths from the cache, " << figures.proven << " of their folders proven\n";
  EXPECT_GT(figures.fromCache, static_cast<std::size_t>(6 * trees));
  EXPECT_GT(figures.proven, figures.fromCache);  // or nothing was tried
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
