#pragma once

#include <memory>
#include <search_path_interfaces/main_search_path_manager.hpp>
#include <utility>
#include <vector>

namespace vornixpath {

/// Holds a path that an edit can be tried on: nothing is saved. For one thread.
class DryRunManager final : public Quorvex::PathManagement::IMainSearchPathManager {
 public:
  using Folders = std::vector<foundation::storage::vfs::AbsoluteIRI>;

  explicit DryRunManager(Folders folders) : folders_(std::make_shared<const Folders>(std::move(folders))) {}

  void SetMainPathForAddition(const FolderRange& folders,
                              foundation::core::except::Notification& /*notification*/) override {
    Install(folders);
  }
  void SetMainPathForRemoval(const FolderRange& folders,
                             foundation::core::except::Notification& /*notification*/) override {
    Install(folders);
  }
  [[nodiscard]] std::shared_ptr<const Folders> GetMainPathFolders() const override { return folders_; }

 private:
  void Install(const FolderRange& folders) {
    folders_ = std::make_shared<const Folders>(folders.begin(), folders.end());
  }

  std::shared_ptr<const Folders> folders_;
};

}  // namespace vornixpath
