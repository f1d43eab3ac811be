#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <memory>
#include <search_path_interfaces/any_range_adapter.hpp>
#include <search_path_interfaces/export.hpp>
#include <vector>

namespace foundation::core::except {
class Notification;
}

namespace Quorvex::PathManagement {

/// The owner of the session's main search path.
///
/// Editing reads a snapshot of the folders and hands back a complete replacement list; serializing changes from several
/// threads, and refusing one that is begun while another is being announced, is the manager's task.
class SEARCH_PATH_INTERFACES_EXPORT IMainSearchPathManager {
 public:
  /// The folders of a new path, handed down: read them during the call, keep no iterator.
  using FolderRange = detail::AnyRangeAdapter<foundation::storage::vfs::AbsoluteIRI>;

  virtual ~IMainSearchPathManager();

  /// Installs `folders`, read once and in order, as the whole main search path, after an addition. May append warnings.
  /// Throws `RecursivePathChangeException` when the change is refused as recursive.
  virtual void SetMainPathForAddition(const FolderRange& folders,
                                      foundation::core::except::Notification& notification) = 0;

  /// The same after a removal. `folders` may be computed while it is read.
  virtual void SetMainPathForRemoval(const FolderRange& folders,
                                     foundation::core::except::Notification& notification) = 0;

  /// The folders as they stand now, in path order; never null, never changed after it was handed out.
  [[nodiscard]] virtual std::shared_ptr<const std::vector<foundation::storage::vfs::AbsoluteIRI>> GetMainPathFolders()
      const = 0;

 protected:
  IMainSearchPathManager() = default;
  IMainSearchPathManager(const IMainSearchPathManager&) = default;
  IMainSearchPathManager& operator=(const IMainSearchPathManager&) = default;
};

}  // namespace Quorvex::PathManagement
