#include <algorithm>
#include <iterator>
#include <support/fake_main_path_manager.hpp>
#include <utility>

namespace Quorvex::PathManagement::support {

using foundation::core::except::Notification;

FakeMainPathManager::FakeMainPathManager(const FolderList& folders) { Replace(folders); }

void FakeMainPathManager::SetMainPathForAddition(const FolderRange& folders, Notification& notification) {
  calls_.emplace_back("SetMainPathForAddition");
  Install(folders, notification);
}

void FakeMainPathManager::SetMainPathForRemoval(const FolderRange& folders, Notification& notification) {
  calls_.emplace_back("SetMainPathForRemoval");
  Install(folders, notification);
}

std::shared_ptr<const FolderList> FakeMainPathManager::GetMainPathFolders() const {
  calls_.emplace_back("GetMainPathFolders");
  if (failure_) std::rethrow_exception(failure_);
  return folders_;
}

void FakeMainPathManager::BeforeInstalling(Preparation preparation) { preparation_ = std::move(preparation); }

void FakeMainPathManager::FailToAnswerWith(const std::exception_ptr& failure) { failure_ = failure; }

void FakeMainPathManager::Replace(const FolderList& folders) { folders_ = std::make_shared<const FolderList>(folders); }

void FakeMainPathManager::Install(const FolderRange& folders, Notification& notification) {
  if (preparation_) preparation_(folders, notification);

  FolderList installed;
  std::copy(folders.begin(), folders.end(), std::back_inserter(installed));
  Replace(installed);
}

}  // namespace Quorvex::PathManagement::support
