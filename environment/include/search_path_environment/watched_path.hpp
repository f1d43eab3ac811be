// A path over real folders that is told when they change: the watcher and the refresher, tied together.
#pragma once

#include <memory>
#include <mutex>
#include <search_path_environment/export.hpp>
#include <search_path_environment/folder_watcher.hpp>
#include <search_path_environment/path_refresher.hpp>
#include <vector>

namespace Quorvex::PathEnvironment {

/// Safe from any thread.
///
///     WatchedPath watched(path, storage, {.whenAnnounced = [] { WakeMeUp(); }});
///     // when woken:
///     createLocalEventMgr(SessionEmId)->dispatch();
///     const PathRefresh refresh = watched.Refresh();
class SEARCH_PATH_ENVIRONMENT_EXPORT WatchedPath {
 public:
  /// Watches all folders of `path` and announces them all, for something may have changed since they were read.
  WatchedPath(std::shared_ptr<const FolderPath> path, foundation::storage::vfs::StorageSystemReference storage,
              WatcherOptions options = {});
  /// The same with somebody else's notifications, for tests.
  WatchedPath(std::shared_ptr<const FolderPath> path, foundation::storage::vfs::StorageSystemReference storage,
              WatcherOptions options, std::unique_ptr<Inotify> inotify);
  ~WatchedPath();
  WatchedPath(const WatchedPath&) = delete;
  WatchedPath& operator=(const WatchedPath&) = delete;

  /// The newest version, as the last Refresh made it.
  [[nodiscard]] std::shared_ptr<const FolderPath> GetPath() const { return refresher_.GetPath(); }

  /// As PathRefresher::Refresh; then the folders that are new are watched and announced, so that the next call reads
  /// them with their watches in place.
  [[nodiscard]] PathRefresh Refresh();

  /// Tells how well each folder is watched.
  [[nodiscard]] const FolderWatcher& GetWatcher() const noexcept { return watcher_; }

 private:
  PathRefresher refresher_;
  FolderWatcher watcher_;
  std::mutex mutex_;                                        // of untold_, and so that one refresh is told after another
  std::vector<std::shared_ptr<const FolderEntry>> untold_;  // what the watcher does not know yet
};

}  // namespace Quorvex::PathEnvironment
