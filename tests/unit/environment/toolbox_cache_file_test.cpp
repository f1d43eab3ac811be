// A cache put into the place of another: whatever fails on the way, one of the two is there, whole.

#include <gmock/gmock.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <fakes/failing_storage_provider.hpp>
#include <filesystem>
#include <foundation/storage/vfs/exception.hpp>
#include <fstream>
#include <iostream>
#include <search_path_utilities/services.hpp>
#include <support/in_child.hpp>
#include <support/storage_matchers.hpp>

#include "disk_folder.hpp"
#include "toolbox_caches.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::fakes::Persistence;
using foundation::storage::fakes::StorageOperation;
using foundation::storage::vfs::FailsWith;
using PathManagement::UnableToSaveToolboxCacheException;
using PathManagement::support::InChild;
using StorageException = foundation::storage::vfs::Exception;

/// The path over one folder in memory, and the factory that can write a cache of it.
class OneFolder {
 public:
  explicit OneFolder(const std::u16string& folder)
      : folders_({InMemory(folder)}),
        path_(FolderPathFactory().CreateFolderPath(DistinctFolders(folders_, Session()), entries_)) {}

  void WriteTo(const AbsoluteIRI& file, std::chrono::milliseconds patience = std::chrono::seconds(10)) const {
    WriteToolboxCacheFile(file, InMemory(u"/"), entries_, patience);
  }
  [[nodiscard]] const std::vector<AbsoluteIRI>& GetFolders() const { return folders_; }

 private:
  std::vector<AbsoluteIRI> folders_;
  FolderEntryFactory entries_{Session()};
  std::shared_ptr<const FolderPath> path_;
};

/// Whether `file` is a whole cache of that path.
bool Holds(const AbsoluteIRI& file, const OneFolder& path) {
  const auto cache = OpenCache(file, CacheTrust::Blind);
  cache.Check();
  return cache.HoldsList(path.GetFolders());
}

bool IsThere(const AbsoluteIRI& location) {
  try {
    static_cast<void>(Session().ProviderFor(location)->Stat(location));
    return true;
  } catch (const StorageException& failure) {
    EXPECT_EQ(failure.GetError(), std::errc::no_such_file_or_directory);
    return false;
  }
}

class ToolboxCacheFileTest : public testing::Test {
 protected:
  ToolboxCacheFileTest() { memory_.WithFiles({u"/old/f.x", u"/new/g.x"}); }

  static AbsoluteIRI File() { return InMemory(u"/cache/toolbox"); }
  static AbsoluteIRI Draft() { return InMemory(u"/cache/toolbox.draft"); }
  static AbsoluteIRI Lock() { return InMemory(u"/cache/toolbox.lock"); }

  [[nodiscard]] MemoryStorage& Memory() { return memory_; }

 private:
  MemoryStorage memory_;
};

TEST_F(ToolboxCacheFileTest, IsPutWhereNothingWas) {
  const OneFolder path(u"/new");
  path.WriteTo(InMemory(u"/not/yet/there"));
  EXPECT_TRUE(Holds(InMemory(u"/not/yet/there"), path));
}

TEST_F(ToolboxCacheFileTest, TakesThePlaceOfTheOldOneAndLeavesNothingButTheLock) {
  const OneFolder before(u"/old");
  const OneFolder after(u"/new");
  before.WriteTo(File());
  after.WriteTo(File());
  EXPECT_FALSE(Holds(File(), before));
  EXPECT_TRUE(Holds(File(), after));
  EXPECT_FALSE(IsThere(Draft()));
  EXPECT_TRUE(IsThere(Lock()));
}

TEST_F(ToolboxCacheFileTest, TakesThePlaceOfADamagedCacheAndOfAnEmptyFile) {
  for (const char* const bytes : {"vnxcache and no more", ""}) {
    Memory().GetProvider().AddFile(u"/cache/toolbox", bytes);
    const OneFolder path(u"/new");
    path.WriteTo(File());
    EXPECT_TRUE(Holds(File(), path)) << bytes;
  }
}

TEST_F(ToolboxCacheFileTest, LeavesAloneWhatIsNoCache) {
  Memory().GetProvider().AddFile(u"/cache/toolbox", "precious");
  const OneFolder path(u"/new");

  EXPECT_THAT([&] { path.WriteTo(File()); }, FailsWith(std::errc::operation_not_supported));
  EXPECT_THAT([&] { RemoveToolboxCacheFile(File()); }, FailsWith(std::errc::operation_not_supported));

  EXPECT_EQ(ReadWholeFile(Memory().GetProvider(), File()), "precious");
  EXPECT_FALSE(IsThere(Draft()));
}

TEST_F(ToolboxCacheFileTest, RemovesTheCacheAndWhatAnInterruptedWriterLeft) {
  const OneFolder path(u"/new");
  path.WriteTo(File());
  Memory().GetProvider().AddFile(u"/cache/toolbox.draft", "a part");

  EXPECT_TRUE(RemoveToolboxCacheFile(File()));
  EXPECT_FALSE(IsThere(File()));
  EXPECT_FALSE(IsThere(Draft()));
  EXPECT_FALSE(RemoveToolboxCacheFile(File()));
}

TEST_F(ToolboxCacheFileTest, RemovesTheLinkThatItIsNamedByAsWell) {
  Memory().GetProvider().AddLink(u"/cache/link", u"/cache/toolbox");
  const OneFolder path(u"/new");
  path.WriteTo(File());

  EXPECT_TRUE(RemoveToolboxCacheFile(InMemory(u"/cache/link")));
  EXPECT_FALSE(IsThere(File()));
  EXPECT_THAT(Memory().GetProvider().List(InMemory(u"/cache")).links, testing::IsEmpty());
}

TEST_F(ToolboxCacheFileTest, LocksNothingWhereThereIsNothingToRemove) {
  EXPECT_FALSE(RemoveToolboxCacheFile(File()));
  EXPECT_FALSE(IsThere(InMemory(u"/cache/toolbox.lock")));
}

TEST_F(ToolboxCacheFileTest, SweepsTheDraftOfAWriterThatWasInterrupted) {
  Memory().GetProvider().AddFile(u"/cache/toolbox.draft", std::string(1'000'000, 'x'));
  const OneFolder path(u"/new");
  path.WriteTo(File());
  EXPECT_TRUE(Holds(File(), path));
  EXPECT_FALSE(IsThere(Draft()));
}

TEST_F(ToolboxCacheFileTest, WaitsForAnotherWriterOnlyAsLongAsItIsToldTo) {
  const OneFolder before(u"/old");
  before.WriteTo(File());
  const auto lock = Session().ProviderFor(File())->Lock(Lock(), std::chrono::seconds(0));
  EXPECT_THAT([] { OneFolder(u"/new").WriteTo(File(), std::chrono::milliseconds(20)); },
              FailsWith(std::errc::timed_out));
  EXPECT_TRUE(Holds(File(), before));
  EXPECT_FALSE(IsThere(Draft()));
}

TEST_F(ToolboxCacheFileTest, ReplacesWhatALinkLeadsTo) {
  Memory().WithFiles({u"/elsewhere/real"}).WithLink(u"/cache/toolbox", u"/elsewhere/real");
  const OneFolder path(u"/new");
  path.WriteTo(File());
  EXPECT_TRUE(Holds(InMemory(u"/elsewhere/real"), path));
  EXPECT_EQ(Memory().GetProvider().CanonicalLocation(File()), InMemory(u"/elsewhere/real"));
}

TEST_F(ToolboxCacheFileTest, DoesNotReplaceALinkThatLeadsNowhere) {
  Memory().WithFolders({u"/elsewhere"}).WithLink(u"/cache/toolbox", u"/elsewhere/real");
  EXPECT_THAT([] { OneFolder(u"/new").WriteTo(File()); }, FailsWith(std::errc::operation_not_supported));
  EXPECT_FALSE(IsThere(InMemory(u"/elsewhere/real")));
}

TEST_F(ToolboxCacheFileTest, DoesNotReplaceAFolderOrAFifo) {
  const OneFolder path(u"/new");
  const DiskFolder disk;
  disk.AddFolder("folder");
  disk.AddFifo("fifo");
  for (const std::string name : {"folder", "fifo"}) {
    EXPECT_THAT([&] { path.WriteTo(disk.LocationOf(name)); }, FailsWith(std::errc::operation_not_supported));
    EXPECT_TRUE(IsThere(disk.LocationOf(name)));
    EXPECT_FALSE(IsThere(disk.LocationOf(name + ".draft")));
  }
}

TEST_F(ToolboxCacheFileTest, IsRefusedWhereAFileStandsForItsFolder) {
  Memory().WithFiles({u"/file"});
  EXPECT_THAT([] { OneFolder(u"/new").WriteTo(InMemory(u"/file/cache")); }, FailsWith(std::errc::not_a_directory));
}

struct FaultCase {
  std::errc error;
  Persistence persistence;
};

class ToolboxCacheFaultsTest : public ToolboxCacheFileTest, public testing::WithParamInterface<FaultCase> {
 protected:
  // What went wrong; nothing when all was said to be well.
  enum class Outcome : std::uint8_t { Written, Unsaved, StorageFailed, NotWhole };

  static Outcome Write(const OneFolder& path) {
    try {
      path.WriteTo(File());
      return Outcome::Written;
    } catch (const UnableToSaveToolboxCacheException&) {
      return Outcome::Unsaved;
    } catch (const StorageException& failure) {
      EXPECT_EQ(failure.GetError(), GetParam().error);
      EXPECT_TRUE(failure.GetOffendingText().starts_with(u"memory:///cache"));
      return Outcome::StorageFailed;
    } catch (const ToolboxCacheError&) {
      return Outcome::NotWhole;
    }
  }
};

TEST_P(ToolboxCacheFaultsTest, LeaveTheOldCacheOrTheNewOneWhole) {
  const OneFolder before(u"/old");
  const OneFolder after(u"/new");
  const auto failing = Memory().Through<FailingStorageProvider>();
  std::size_t call = 1;
  for (bool hasFailed = true; hasFailed; ++call) {
    SCOPED_TRACE("call " + std::to_string(call));
    before.WriteTo(File());
    const std::size_t failures = failing->GetFailureCount();
    failing->Plan(
        {.call = call, .error = std::make_error_code(GetParam().error), .persistence = GetParam().persistence});
    const Outcome outcome = Write(after);
    hasFailed = failing->GetFailureCount() > failures;
    failing->Clear();

    // Only the last flush, of the folder, comes after the new cache has taken its place.
    const bool isNew = Holds(File(), after);
    EXPECT_TRUE(isNew || Holds(File(), before));
    EXPECT_TRUE(isNew || outcome != Outcome::Written);
    if (GetParam().error == std::errc::no_space_on_device) {
      EXPECT_NE(outcome, Outcome::StorageFailed);
    }
    EXPECT_TRUE(GetParam().persistence == Persistence::Persistent || !IsThere(Draft()));  // else sweeping failed, too

    after.WriteTo(File());
    EXPECT_TRUE(Holds(File(), after));
    EXPECT_FALSE(IsThere(Draft()));
  }
  EXPECT_GT(call, 12U);  // asking, locking, sweeping, writing, checking, flushing, renaming
}

INSTANTIATE_TEST_SUITE_P(OfAllSorts, ToolboxCacheFaultsTest,
                         testing::Values(FaultCase{std::errc::io_error, Persistence::Transient},
                                         FaultCase{std::errc::no_space_on_device, Persistence::Transient},
                                         FaultCase{std::errc::permission_denied, Persistence::Transient},
                                         FaultCase{std::errc::io_error, Persistence::Persistent},
                                         FaultCase{std::errc::no_space_on_device, Persistence::Persistent}));

TEST_F(ToolboxCacheFileTest, SaysThatItCouldNotBeSavedWhereverTheDiskIsFull) {
  const auto failing = Memory().Through<FailingStorageProvider>();
  const OneFolder path(u"/new");
  for (const auto operation : {StorageOperation::CreateFolder, StorageOperation::Lock, StorageOperation::OpenForWriting,
                               StorageOperation::Write, StorageOperation::Flush, StorageOperation::Rename}) {
    failing->Plan({.operation = operation, .error = std::make_error_code(std::errc::no_space_on_device)});
    EXPECT_THROW(path.WriteTo(InMemory(u"/full/toolbox")), UnableToSaveToolboxCacheException) << NameOf(operation);
    failing->Clear();
    EXPECT_FALSE(IsThere(InMemory(u"/full/toolbox")));
    EXPECT_FALSE(IsThere(InMemory(u"/full/toolbox.draft")));
  }
}

// Disks that are really full. What is asked is what a child finds, which may limit itself.
enum class Finding : std::uint8_t { AsExpected, Otherwise, CannotBeTried };

class ToolboxCacheOnDisk : public ToolboxCacheFileTest {
 protected:
  [[nodiscard]] AbsoluteIRI OnDisk() const { return disk_.LocationOf("toolbox"); }
  [[nodiscard]] std::string Folder() const { return disk_.PathOf(); }

  // Whether writing fails as it should, and leaves the old cache and no draft; or succeeds.
  [[nodiscard]] bool IsRightlyRefused(const OneFolder& before, const OneFolder& after) const {
    try {
      after.WriteTo(OnDisk());
      return false;
    } catch (const UnableToSaveToolboxCacheException&) {
      return Holds(OnDisk(), before) && !std::filesystem::exists(disk_.PathOf("toolbox.draft"));
    } catch (const std::exception& failure) {
      std::cerr << failure.what() << '\n';
      return false;
    }
  }

  template <class Run>
  [[nodiscard]] static Finding FindingOf(const Run& run) {
    const int finding = InChild([&run] { return static_cast<int>(run()); });
    return finding < 0 ? Finding::Otherwise : static_cast<Finding>(finding);
  }

 private:
  DiskFolder disk_;
};

TEST_F(ToolboxCacheOnDisk, IsNotSavedWhereFilesMayNotGrowSoLarge) {
  const OneFolder before(u"/old");
  const OneFolder after(u"/new");
  before.WriteTo(OnDisk());
  const std::size_t size = OpenCache(OnDisk(), CacheTrust::Blind).GetSize();
  for (const rlim_t limit : {rlim_t{0}, rlim_t{1}, rlim_t{264}, rlim_t{4095}, rlim_t{4096}, rlim_t{4097}, size - 1}) {
    EXPECT_EQ(FindingOf([&] {
                const rlimit limits = {limit, limit};
                if (std::signal(SIGXFSZ, SIG_IGN) == SIG_ERR || setrlimit(RLIMIT_FSIZE, &limits) != 0)
                  return Finding::CannotBeTried;
                return IsRightlyRefused(before, after) ? Finding::AsExpected : Finding::Otherwise;
              }),
              Finding::AsExpected)
        << limit;
  }
}

// Puts a small file system over `folder`, for this process alone.
bool MountSmall(const std::string& folder, const char* size) {
  if (unshare(geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
         mount("tmpfs", folder.c_str(), "tmpfs", 0, size) == 0;
}

TEST_F(ToolboxCacheOnDisk, IsNotSavedOnAFullDisk) {
  const Finding finding = FindingOf([&] {
    if (!MountSmall(Folder(), "size=64k")) return Finding::CannotBeTried;
    const OneFolder before(u"/old");
    before.WriteTo(OnDisk());
    std::ofstream filling(Folder() + "/filling");
    while (filling << std::string(512, 'x') << std::flush) {
    }
    return IsRightlyRefused(before, OneFolder(u"/new")) ? Finding::AsExpected : Finding::Otherwise;
  });
  if (finding == Finding::CannotBeTried) GTEST_SKIP() << "this system lets no process mount anything";
  EXPECT_EQ(finding, Finding::AsExpected);
}

// A disk may have room for bytes but for no more files: for the old cache and its lock, but not for the draft.
TEST_F(ToolboxCacheOnDisk, IsNotSavedWhereThereIsRoomForNoMoreFiles) {
  const Finding finding = FindingOf([&] {
    if (!MountSmall(Folder(), "nr_inodes=4")) return Finding::CannotBeTried;
    const OneFolder before(u"/old");
    before.WriteTo(OnDisk());
    for (int i = 0; i < 4; ++i) std::ofstream(Folder() + "/filling" + std::to_string(i));
    return IsRightlyRefused(before, OneFolder(u"/new")) ? Finding::AsExpected : Finding::Otherwise;
  });
  if (finding == Finding::CannotBeTried) GTEST_SKIP() << "this system lets no process mount anything";
  EXPECT_EQ(finding, Finding::AsExpected);
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
