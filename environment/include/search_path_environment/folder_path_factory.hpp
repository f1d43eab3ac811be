#pragma once

#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/export.hpp>
#include <search_path_environment/folder_path.hpp>
#include <search_path_interfaces/factories.hpp>

namespace Quorvex::PathEnvironment {

/// Makes leaf paths over real folders. Without state, safe from any thread.
///
/// The entries of a long path are made by several threads at once.
class SEARCH_PATH_ENVIRONMENT_EXPORT FolderPathFactory final : public PathManagement::IPathFactory {
 public:
  ~FolderPathFactory() override;

  /// The path over `folders`, whose identifiers alone are compared: a repeat is left out and reported. `entries` must
  /// be safe from any thread and make `FolderEntry` objects; any other entry throws `std::invalid_argument` naming the
  /// folder.
  [[nodiscard]] std::shared_ptr<const PathManagement::IPath> CreatePath(
      const std::vector<foundation::storage::vfs::AbsoluteIRI>& folders,
      const PathManagement::IPathEntryFactory& entries) const override;

  /// The same, as what it is.
  [[nodiscard]] std::shared_ptr<const FolderPath> CreateFolderPath(
      const std::vector<foundation::storage::vfs::AbsoluteIRI>& folders,
      const PathManagement::IPathEntryFactory& entries) const;

  /// The path over those of `folders` that stay; those that are dropped are reported.
  [[nodiscard]] std::shared_ptr<const FolderPath> CreateFolderPath(
      const DistinctFolders& folders, const PathManagement::IPathEntryFactory& entries) const;
};

}  // namespace Quorvex::PathEnvironment
