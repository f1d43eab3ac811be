#pragma once

// What the tests of adding and removing share: a path, people who want it changed, and storage that nobody may touch.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <exception>
#include <fakes/forbidding_storage_provider.hpp>
#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <memory>
#include <search_path_utilities/path_editing.hpp>
#include <string>
#include <string_view>
#include <support/fake_main_path_manager.hpp>
#include <support/fake_working_folder.hpp>
#include <support/folder_list.hpp>
#include <support/mock_factories.hpp>
#include <support/mock_path.hpp>
#include <vector>

namespace Quorvex::PathManagement {

/// Every test here edits without storage: both schemes are served by a provider that fails upon any call.
class MainPathTest : public testing::Test {
 protected:
  using AbsoluteIRI = foundation::storage::vfs::AbsoluteIRI;
  using FolderList = support::FolderList;
  using FolderRange = IMainSearchPathManager::FolderRange;
  using Notification = foundation::core::except::Notification;
  using NotificationMessage = foundation::core::except::NotificationMessage;
  using Names = std::vector<std::u16string>;

  MainPathTest() { storage_->Forbid(); }

  void PathIs(std::string_view names) { manager_.Replace(support::FoldersAt(names)); }
  [[nodiscard]] std::string Path() const { return support::NamesOf(manager_.GetFolders()); }

  /// The manager has this to say about the next changes.
  void LetManagerWarn() {
    manager_.BeforeInstalling([](const FolderRange&, Notification& notification) { Warn(notification); });
  }
  /// The manager refuses the next changes with `failure`.
  template <class Failure>
  void LetManagerThrow(const Failure& failure) {
    manager_.BeforeInstalling([failure](const FolderRange&, Notification&) { throw failure; });
  }
  template <class Failure>
  void LetManagerWarnAndThrow(const Failure& failure) {
    manager_.BeforeInstalling([failure](const FolderRange&, Notification& notification) {
      Warn(notification);
      throw failure;
    });
  }
  /// The manager refuses the next changes when it has read as much as the first folder.
  template <class Failure>
  void LetManagerThrowWhileReading(const Failure& failure) {
    manager_.BeforeInstalling([this, failure](const FolderRange& folders, Notification&) {
      firstRead_ = folders.begin()->toString();
      throw failure;
    });
  }
  static void Warn(Notification& notification) { notification.Add(NotificationMessage({}, "manager", "busy")); }

  support::FakeMainPathManager manager_;
  support::FakeWorkingFolder workingFolder_{AbsoluteIRI(u"memory:///home")};
  testing::StrictMock<support::MockPathFactory> pathFactory_;
  testing::StrictMock<support::MockPathEntryFactory> entryFactory_;
  testing::StrictMock<support::MockPath> path_;
  std::u16string firstRead_;

 private:
  std::shared_ptr<foundation::storage::fakes::ForbiddingStorageProvider> storage_ =
      std::make_shared<foundation::storage::fakes::ForbiddingStorageProvider>(
          std::make_shared<foundation::storage::vfs::MemoryStorageProvider>());
  foundation::storage::vfs::MountHandle files_ =
      foundation::storage::vfs::VornixStorageSystem::Mount(u"file", storage_);
  foundation::storage::vfs::MountHandle memory_ =
      foundation::storage::vfs::VornixStorageSystem::Mount(u"memory", storage_);
};

}  // namespace Quorvex::PathManagement
