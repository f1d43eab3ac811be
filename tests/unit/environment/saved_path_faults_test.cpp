// Storage that fails at any call of an edit: the old path survives, and the error says what failed and where.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fakes/failing_storage_provider.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_environment/main_search_path_manager.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <string_view>

#include "memory_storage.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::fakes::Fault;
using foundation::storage::fakes::Persistence;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::MemoryStorageProvider;
using foundation::storage::vfs::VornixStorageSystem;
using PathManagement::AddIRIsToVornixPath;
using PathManagement::Position;

using Folders = MainSearchPathManager::Folders;

AbsoluteIRI Folder(const std::u16string& path) { return AbsoluteIRI(u"file://" + path); }

struct FaultCase {
  std::errc error;
  Persistence persistence;
};

class SavedPathFaultsTest : public testing::TestWithParam<FaultCase> {
 protected:
  static SavedPathFile File() { return {InMemory(u"/home/path"), VornixStorageSystem::GetStorageSystemReference()}; }
  // Whether the edit reported that it was made.
  bool Edit(const std::function<void(MainSearchPathManager&)>& edit) {
    try {
      MainSearchPathManager manager(File());
      edit(manager);
      return true;
    } catch (const Exception& failure) {
      EXPECT_EQ(failure.GetError(), GetParam().error);
      EXPECT_TRUE(failure.GetOffendingText().starts_with(u"memory:///home"));
      EXPECT_FALSE(failure.GetOperation().empty());
      const bool isSaidToStand = std::string_view(failure.what()).find("so it stands") != std::string_view::npos;
      EXPECT_TRUE(!isSaidToStand || GetParam().persistence == Persistence::Persistent);
      return isSaidToStand;
    }
  }
  static void Add(MainSearchPathManager& manager, const std::u16string& path) {
    const Folders folders = {Folder(path)};
    manager.Edit([&] { static_cast<void>(AddIRIsToVornixPath(folders, manager, Position::Beginning)); });
  }

  // Lets the n-th call of `edit` fail, for every n, and looks at what is left behind.
  void FailAtEveryCall(const Folders& before, const Folders& after,
                       const std::function<void(MainSearchPathManager&)>& edit) {
    std::size_t call = 1;
    for (bool hasFailed = true; hasFailed; ++call) {
      const auto memory = std::make_shared<MemoryStorageProvider>();
      const auto failing = std::make_shared<FailingStorageProvider>(memory);
      const auto mount = VornixStorageSystem::Mount(u"memory", failing);
      {
        MainSearchPathManager manager(File());
        Add(manager, u"/a");
        Add(manager, u"/b");
      }
      ASSERT_EQ(File().Read().GetFolders(), before);

      failing->Plan(
          {.call = call, .error = std::make_error_code(GetParam().error), .persistence = GetParam().persistence});
      const bool isSaidToStand = Edit(edit);
      hasFailed = failing->GetFailureCount() > 0;
      failing->Clear();

      SCOPED_TRACE("call " + std::to_string(call));
      EXPECT_EQ(File().Read().GetFolders(), isSaidToStand ? after : before);
      ExpectToGoOn();
    }
    EXPECT_GT(call, 15);  // reading, locking, keeping a version, writing a draft, renaming, flushing
  }

  // Whatever was left behind, the next edit works and sweeps it.
  static void ExpectToGoOn() {
    MainSearchPathManager manager(File());
    Add(manager, u"/next");
    EXPECT_EQ(File().Read().GetFolders().front(), Folder(u"/next"));
    EXPECT_TRUE(manager.Undo());
  }
};

TEST_P(SavedPathFaultsTest, LeaveTheOldPathWhenAnAdditionFails) {
  FailAtEveryCall({Folder(u"/b"), Folder(u"/a")}, {Folder(u"/c"), Folder(u"/b"), Folder(u"/a")},
                  [](MainSearchPathManager& manager) { Add(manager, u"/c"); });
}

TEST_P(SavedPathFaultsTest, LeaveTheOldPathWhenAnUndoFails) {
  FailAtEveryCall({Folder(u"/b"), Folder(u"/a")}, {Folder(u"/a")},
                  [](MainSearchPathManager& manager) { EXPECT_TRUE(manager.Undo()); });
}

INSTANTIATE_TEST_SUITE_P(OfAllSorts, SavedPathFaultsTest,
                         testing::Values(FaultCase{std::errc::io_error, Persistence::Transient},
                                         FaultCase{std::errc::no_space_on_device, Persistence::Transient},
                                         FaultCase{std::errc::permission_denied, Persistence::Transient},
                                         FaultCase{std::errc::io_error, Persistence::Persistent}));

}  // namespace
}  // namespace Quorvex::PathEnvironment
