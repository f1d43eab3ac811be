// Real storage that has had enough: the old path survives, and the error says what failed and where.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <fstream>
#include <functional>
#include <search_path_environment/main_search_path_manager.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <string>
#include <support/in_child.hpp>
#include <support/temporary_folder.hpp>

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::VornixStorageSystem;
using PathManagement::AddIRIsToVornixPath;
using PathManagement::Position;
using PathManagement::support::TemporaryFolder;

using Folders = MainSearchPathManager::Folders;

enum class Outcome : std::uint8_t { AsExpected, Otherwise, CannotBeTried };

class SavedPathOnDisk : public testing::Test {
 protected:
  [[nodiscard]] SavedPathFile File() const {
    return {AbsoluteIRI(u"file://" + (folder_.GetPath() / "path").u16string()),
            VornixStorageSystem::GetStorageSystemReference()};
  }
  void Add(std::size_t count) const {
    Folders folders;
    for (std::size_t i = 0; i < count; ++i) folders.push_back(AbsoluteIRI(u"file:///a").getChild(NameOf(i)));
    MainSearchPathManager manager(File());
    manager.Edit([&] { static_cast<void>(AddIRIsToVornixPath(folders, manager, Position::End)); });
  }
  // That an addition fails so, and leaves the path as it is.
  [[nodiscard]] Outcome TryToAdd(std::size_t count, std::errc error) const {
    const auto before = File().ReadBytes();
    try {
      Add(count);
      return Outcome::Otherwise;
    } catch (const Exception& failure) {
      const bool isToldWhere = failure.GetOffendingText().find(u"/path") != std::u16string::npos;
      const bool isAsExpected = failure.GetError() == error && isToldWhere && File().ReadBytes() == before;
      if (!isAsExpected) std::fprintf(stderr, "%s\n", failure.what());
      return isAsExpected ? Outcome::AsExpected : Outcome::Otherwise;
    }
  }
  [[nodiscard]] std::error_code TryToRead() const {
    try {
      static_cast<void>(File().ReadBytes());
      return {};
    } catch (const Exception& failure) {
      return failure.GetError();
    }
  }
  // What `run` comes to in a process of its own, which it may limit as it likes.
  [[nodiscard]] static Outcome InChild(const std::function<Outcome()>& run) {
    const int outcome = PathManagement::support::InChild(run);
    return outcome < 0 ? Outcome::Otherwise : static_cast<Outcome>(outcome);
  }
  [[nodiscard]] const std::filesystem::path& Folder() const { return folder_.GetPath(); }

 private:
  static std::u16string NameOf(std::size_t number) {
    const std::string name = "folder" + std::to_string(number);
    return {name.begin(), name.end()};
  }

  TemporaryFolder folder_;
};

TEST_F(SavedPathOnDisk, SurvivesALimitOnTheSizeOfFiles) {
  Add(10);
  EXPECT_EQ(InChild([&] {
              std::signal(SIGXFSZ, SIG_IGN);
              const rlimit limit = {8192, 8192};
              setrlimit(RLIMIT_FSIZE, &limit);
              return TryToAdd(1000, std::errc::file_too_large);
            }),
            Outcome::AsExpected);
}

TEST_F(SavedPathOnDisk, SurvivesAFolderThatMayNotBeWritten) {
  Add(10);
  std::filesystem::permissions(Folder(), std::filesystem::perms(0555));
  EXPECT_EQ(InChild([&] {
              constexpr uid_t nobody = 65534;
              if (geteuid() == 0 && seteuid(nobody) != 0) return Outcome::Otherwise;  // modes do not bind root
              return TryToAdd(20, std::errc::permission_denied);
            }),
            Outcome::AsExpected);
  std::filesystem::permissions(Folder(), std::filesystem::perms(0755));
}

TEST_F(SavedPathOnDisk, IsRefusedWhenTooLargeBeforeItIsRead) {
  std::ofstream(Folder() / "path");
  std::filesystem::resize_file(Folder() / "path", std::uintmax_t{10} << 30U);  // sparse
  EXPECT_EQ(TryToRead(), std::errc::file_too_large);
}

// Puts a small file system over `folder`, for this process alone.
bool MountSmall(const std::filesystem::path& folder) {
  if (unshare(geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
         mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=64k") == 0;
}

TEST_F(SavedPathOnDisk, SurvivesAFullDisk) {
  const Outcome outcome = InChild([&] {
    if (!MountSmall(Folder())) return Outcome::CannotBeTried;
    Add(10);
    std::ofstream filling(Folder() / "filling");
    while (filling << std::string(512, 'x') << std::flush) {
    }
    return TryToAdd(2000, std::errc::no_space_on_device);
  });
  if (outcome == Outcome::CannotBeTried) GTEST_SKIP() << "this system lets no process mount anything";
  EXPECT_EQ(outcome, Outcome::AsExpected);
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
