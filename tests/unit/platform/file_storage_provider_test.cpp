#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/file_storage_provider.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <fstream>
#include <future>
#include <support/storage_matchers.hpp>
#include <support/temporary_folder.hpp>
#include <support/without_privileges.hpp>
#include <thread>

namespace foundation::storage::vfs {
namespace {

using testing::UnorderedElementsAre;
using namespace std::chrono_literals;

class FileStorageTest : public testing::Test {
 protected:
  [[nodiscard]] AbsoluteIRI At(const std::string& name) const {
    return toAbsoluteIRI(u"file", fl::filesystem::path(fl::filesystem::from_bytes(PathOf(name))));
  }
  [[nodiscard]] std::string PathOf(const std::string& name) const { return (folder_.GetPath() / name).string(); }

  void Write(const std::string& name, const std::string& content) const { std::ofstream(PathOf(name)) << content; }

  [[nodiscard]] std::size_t CountOpenDescriptors() const {
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(descriptors), end(descriptors)));
  }

  Quorvex::PathManagement::support::TemporaryFolder folder_;
  FileStorageProvider storage_;
};

TEST_F(FileStorageTest, ListsHostileNamesUnchanged) {
  const std::vector<std::string> names = {
      "new\nline", "\x1B[31m", "\xFF\xFE", " both ends ", "-rf",       "\xE2\x80\xAE",       "back\\slash",
      "co:lon",    "\x7F",     "%2F",      "\xC3\xA9",    "e\xCC\x81", std::string(255, 'n')};
  for (const std::string& name : names) Write(name, "x");

  std::vector<std::string> listed;
  for (const ListedEntry& entry : storage_.List(At("")).entries) {
    listed.push_back(fl::filesystem::to_bytes(entry.name));
    EXPECT_EQ(storage_.Stat(At("").getChild(entry.name)).size, 1U) << listed.back();
  }
  EXPECT_THAT(listed, testing::UnorderedElementsAreArray(names));
}

TEST_F(FileStorageTest, TakesAFifoForNeitherFileNorFolderAndNeverWaitsForIt) {
  ASSERT_EQ(::mkfifo(PathOf("fifo").c_str(), 0600), 0);

  EXPECT_THAT(storage_.List(At("")).entries, UnorderedElementsAre(ListedEntry{u"fifo", FileKind::Other}));
  EXPECT_EQ(storage_.Stat(At("fifo")).kind, FileKind::Other);
  EXPECT_THAT([&] { storage_.CheckFolder(At("fifo")); }, FailsWith(std::errc::not_a_directory));
  EXPECT_THAT([&] { return storage_.OpenForReading(At("fifo")); }, FailsWith(std::errc::not_supported));
  EXPECT_THAT([&] { return storage_.Map(At("fifo")); }, FailsWith(std::errc::not_supported));
  EXPECT_THAT([&] { return storage_.OpenForWriting(At("fifo"), WriteMode::Append); },
              FailsWith(std::errc::no_such_device_or_address));
}

TEST_F(FileStorageTest, RefusesADevice) {
  EXPECT_THAT([&] { return storage_.OpenForReading(AbsoluteIRI(u"file:///dev/null")); },
              FailsAbout(u"file:///dev/null", "cannot open \"file:///dev/null\": Operation not supported"));
}

TEST_F(FileStorageTest, ReportsALinkThatItCannotFollowForAnotherReasonThanAMissingTargetOrALoop) {
  ASSERT_EQ(::symlink(std::string(300, 'x').c_str(), PathOf("toolong").c_str()), 0);
  Write("file", "x");

  const FolderListing listing = storage_.List(At(""));

  EXPECT_THAT(listing.entries, UnorderedElementsAre(ListedEntry{u"file", FileKind::File}));
  ASSERT_EQ(listing.problems.size(), 1U);
  EXPECT_EQ(listing.problems.front().name, u"toolong");
  EXPECT_EQ(listing.problems.front().error, std::errc::filename_too_long);
}

TEST_F(FileStorageTest, TellsTheNameThatIsTooLong) {
  EXPECT_THAT([&] { return storage_.Stat(At(std::string(256, 'n'))); }, FailsWith(std::errc::filename_too_long));
  EXPECT_THAT([&] { return storage_.CanonicalLocation(At(std::string(256, 'n'))); },
              FailsWith(std::errc::filename_too_long));
  EXPECT_THAT([&] { storage_.CheckFolder(At(std::string(256, 'n'))); }, FailsWith(std::errc::filename_too_long));
}

TEST_F(FileStorageTest, FailsTheCheckOfAFolderThatMayNotBeRead) {
  using Quorvex::PathManagement::support::WithoutPrivileges;
  using std::filesystem::perms;
  std::filesystem::create_directory(PathOf("folder"));
  const auto check = [this] { WithoutPrivileges([this] { storage_.CheckFolder(At("folder")); }); };

  std::filesystem::permissions(PathOf("folder"), perms::owner_read);
  EXPECT_NO_THROW(check());

  std::filesystem::permissions(PathOf("folder"), perms::owner_write | perms::owner_exec);
  EXPECT_THAT(check, FailsWith(std::errc::permission_denied));
  EXPECT_THAT([this] { WithoutPrivileges([this] { static_cast<void>(storage_.List(At("folder"))); }); },
              FailsWith(std::errc::permission_denied));

  std::filesystem::permissions(PathOf("folder"), perms::owner_all);  // so that it can be removed
}

TEST_F(FileStorageTest, GivesTheIdentityAndTheTimeThatTheSystemKnows) {
  Write("file", "x");
  struct stat status {};
  ASSERT_EQ(::stat(PathOf("file").c_str(), &status), 0);

  const FileStatus found = storage_.Stat(At("file"));

  EXPECT_EQ(found.identity, (FileIdentity{status.st_dev, status.st_ino}));
  EXPECT_EQ(found.modificationTime.time_since_epoch(),
            std::chrono::seconds(status.st_mtim.tv_sec) + std::chrono::nanoseconds(status.st_mtim.tv_nsec));
}

TEST_F(FileStorageTest, ServesItsFilesUnderWhateverSchemeItIsAskedFor) {
  Write("file", "x");
  const AbsoluteIRI elsewhere(u"disk" + At("file").toString().substr(4));

  EXPECT_EQ(storage_.Stat(elsewhere).size, 1U);
  EXPECT_EQ(storage_.CanonicalLocation(elsewhere).getScheme(), u"disk");
}

TEST_F(FileStorageTest, HasNoHosts) {
  EXPECT_THAT([&] { return storage_.List(AbsoluteIRI(u"file://host/a")); }, FailsWith(std::errc::invalid_argument));
}

TEST_F(FileStorageTest, LeavesNoDescriptorOpen) {
  Write("file", "x");
  const std::size_t before = CountOpenDescriptors();

  static_cast<void>(storage_.List(At("")));
  storage_.CheckFolder(At(""));
  static_cast<void>(storage_.Map(At("file")));
  EXPECT_ANY_THROW(static_cast<void>(storage_.List(At("file"))));
  EXPECT_ANY_THROW(static_cast<void>(storage_.OpenForReading(At(""))));
  storage_.FlushFolder(At(""));
  const auto lock = storage_.Lock(At("lock"), std::chrono::milliseconds(0));

  EXPECT_EQ(CountOpenDescriptors(), before + 1) << "the lock's, and no other";
}

TEST_F(FileStorageTest, LocksTheFileThatBearsTheNameEvenIfAnotherDidWhileItWaited) {
  auto first = storage_.Lock(At("lock"), 0ms);
  const auto openBefore = CountOpenDescriptors();
  auto waiting = std::async(std::launch::async, [this] { return storage_.Lock(At("lock"), 10s); });
  while (CountOpenDescriptors() <= openBefore) std::this_thread::yield();  // it waits with the old file open
  std::filesystem::remove(PathOf("lock"));
  first.reset();

  const auto second = waiting.get();
  EXPECT_THAT([this] { static_cast<void>(storage_.Lock(At("lock"), 0ms)); }, FailsWith(std::errc::timed_out));
}

TEST_F(FileStorageTest, GivesALockUpThoughAForkedProcessLivesOn) {
  auto lock = storage_.Lock(At("lock"), 0ms);
  const pid_t child = ::fork();
  ASSERT_NE(child, -1);
  if (child == 0) {
    ::pause();
    ::_exit(0);
  }
  lock.reset();
  EXPECT_NO_THROW(static_cast<void>(storage_.Lock(At("lock"), 0ms)));
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
}

TEST_F(FileStorageTest, ClosesItsDescriptorsInChildPrograms) {
  Write("file", "x");
  const auto file = storage_.OpenForReading(At("file"));
  const auto lock = storage_.Lock(At("lock"), std::chrono::milliseconds(0));

  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    const std::filesystem::path target = std::filesystem::read_symlink(entry.path());
    if (target.parent_path() != folder_.GetPath()) continue;
    EXPECT_NE(::fcntl(std::stoi(entry.path().filename().string()), F_GETFD) & FD_CLOEXEC, 0) << target;
  }
}

}  // namespace
}  // namespace foundation::storage::vfs
