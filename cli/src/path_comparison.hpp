#pragma once

#include <memory>
#include <optional>
#include <search_path_environment/folder_path.hpp>
#include <search_path_environment/path_problem.hpp>
#include <vector>

#include "changed_names.hpp"
#include "folder_changes.hpp"

namespace vornixpath {

/// Two states of a path, and what changed from one to the other. A value, cheap but for the lists.
struct PathComparison {
  std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> before;
  std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> after;
  std::vector<FolderChange> changes;
  std::optional<std::vector<ChangedName>> names;  ///< none unless they were asked for
};

/// What to compare besides the folders of the paths.
struct ComparisonDepth {
  bool isDeep = false;                                    ///< the special folders within those that changed
  std::optional<std::vector<std::u16string>> extensions;  ///< of files, for what names mean
};

/// `after` was loaded with `before` as its predecessor, else all folders count as refreshed.
[[nodiscard]] PathComparison Compare(std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> before,
                                     std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> after,
                                     const ComparisonDepth& depth);

/// The files directly in a refreshed folder that came and went.
struct ChangedFiles {
  std::vector<std::u16string> added;
  std::vector<std::u16string> removed;
};

/// Both by name. None of a folder that is not refreshed.
[[nodiscard]] ChangedFiles FilesChangedBy(const FolderChange& change);

}  // namespace vornixpath
