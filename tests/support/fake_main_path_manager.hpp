#pragma once

// A manager that holds a list, tells what it was asked, and says or throws what a test wants.

#include <exception>
#include <foundation/core/except/notification.hpp>
#include <functional>
#include <memory>
#include <search_path_interfaces/main_search_path_manager.hpp>
#include <string>
#include <support/folder_list.hpp>
#include <vector>

namespace Quorvex::PathManagement::support {

/// Not safe from several threads.
class FakeMainPathManager final : public IMainSearchPathManager {
 public:
  using Preparation = std::function<void(const FolderRange&, foundation::core::except::Notification&)>;

  explicit FakeMainPathManager(const FolderList& folders = {});

  void SetMainPathForAddition(const FolderRange& folders,
                              foundation::core::except::Notification& notification) override;
  void SetMainPathForRemoval(const FolderRange& folders, foundation::core::except::Notification& notification) override;
  /// The list itself: nobody else here holds it once it is replaced.
  [[nodiscard]] std::shared_ptr<const FolderList> GetMainPathFolders() const override;

  /// From now on, whenever a list is to be installed, `preparation` gets it first. What it throws is let through and
  /// leaves the path as it is.
  void BeforeInstalling(Preparation preparation);
  /// From now on GetMainPathFolders fails with what `failure` holds.
  void FailToAnswerWith(const std::exception_ptr& failure);
  /// Puts another list into the place of this one, as somebody else's edit would.
  void Replace(const FolderList& folders);

  /// The list, without a call being told.
  [[nodiscard]] const FolderList& GetFolders() const noexcept { return *folders_; }
  /// The operations called, in order.
  [[nodiscard]] const std::vector<std::string>& GetCalls() const noexcept { return calls_; }

 private:
  void Install(const FolderRange& folders, foundation::core::except::Notification& notification);

  std::shared_ptr<const FolderList> folders_;
  Preparation preparation_;
  std::exception_ptr failure_;
  mutable std::vector<std::string> calls_;
};

}  // namespace Quorvex::PathManagement::support
