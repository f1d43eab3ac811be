// A path that follows its folders: what the session announces as changed is read again.
#pragma once

#include <cstddef>
#include <foundation/storage/vfs/storage_system.hpp>
#include <memory>
#include <search_path_environment/export.hpp>
#include <search_path_environment/folder_path.hpp>
#include <vector>

namespace Quorvex::PathEnvironment {

/// A main folder that holds something else than before, in depth.
struct RefreshedFolder {
  std::shared_ptr<const FolderEntry> before;  ///< on the version before; not null
  std::shared_ptr<const FolderEntry> after;   ///< at the same place now; not null
};

/// What one call of Refresh came to.
struct PathRefresh {
  std::shared_ptr<const FolderPath> path;  ///< as it is now; the same object when nothing has changed
  std::vector<RefreshedFolder> changed;    ///< in path order
  std::size_t doubted = 0;                 ///< how many entries were read again
};

/// Keeps the newest version of a path. Safe from any thread.
///
/// From construction on it gathers what `FileFolderChangedEvent`s of the session's event manager name, as they are
/// dispatched. An event concerns the entry at its location, as the path spells it (aliases of schemes resolved) or as
/// it is canonically, else the nearest entry above. The list of main folders never changes: a folder that vanishes
/// becomes an entry without items that holds the problem, and is read when it comes back.
class SEARCH_PATH_ENVIRONMENT_EXPORT PathRefresher {
 public:
  /// Begins with `path`, which is not null, and reads through `storage`.
  PathRefresher(std::shared_ptr<const FolderPath> path, foundation::storage::vfs::StorageSystemReference storage);
  PathRefresher(const PathRefresher&) = delete;
  PathRefresher& operator=(const PathRefresher&) = delete;
  ~PathRefresher();

  /// The newest version, as the last Refresh made it. Never waits for one that is under way.
  [[nodiscard]] std::shared_ptr<const FolderPath> GetPath() const;

  /// Reads again what was announced since the last call; dispatch the session's events first. One listing for each
  /// entry announced, one for each new special subfolder; other subfolders and all other folders stay. What holds the
  /// same as before keeps its entry. Several calls at once wait for each other.
  ///
  /// What storage refuses becomes a problem of the entry; only std::bad_alloc and the like are thrown, and then nothing
  /// has changed and what was announced still is. Costs what was announced, whatever the length of the path.
  [[nodiscard]] PathRefresh Refresh();

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace Quorvex::PathEnvironment
