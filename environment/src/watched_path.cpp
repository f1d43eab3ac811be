#include <search_path_environment/watched_path.hpp>
#include <utility>

#include "inotify.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::StorageSystemReference;

WatchedPath::WatchedPath(std::shared_ptr<const FolderPath> path, StorageSystemReference storage, WatcherOptions options)
    : WatchedPath(std::move(path), std::move(storage), std::move(options), OpenInotify()) {}

WatchedPath::WatchedPath(std::shared_ptr<const FolderPath> path, StorageSystemReference storage, WatcherOptions options,
                         std::unique_ptr<Inotify> inotify)
    : refresher_(std::move(path), storage), watcher_(std::move(storage), std::move(options), std::move(inotify)) {
  watcher_.Watch(*refresher_.GetPath());  // announced when whoever gathers is connected
}

WatchedPath::~WatchedPath() = default;

PathRefresh WatchedPath::Refresh() {
  const std::scoped_lock lock(mutex_);
  PathRefresh refresh = refresher_.Refresh();
  for (const RefreshedFolder& folder : refresh.changed) untold_.push_back(folder.after);
  watcher_.WatchInstead(untold_);
  untold_.clear();
  return refresh;
}

}  // namespace Quorvex::PathEnvironment
