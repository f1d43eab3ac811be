#pragma once

#include <search_path_environment/folder_path.hpp>
#include <vector>

#include "folder_numbers.hpp"
#include "near_name.hpp"
#include "question.hpp"
#include "standpoint.hpp"

namespace vornixpath {

/// What is near a name that means nothing from `standpoint`: likelier first, then in path order.
///
/// Looks at every file of the path once, and asks storage, now, what the direct plain subfolders of the path's folders
/// hold. A subfolder that cannot be listed is passed over.
[[nodiscard]] std::vector<NearName> FindNearNames(const Quorvex::PathEnvironment::FolderPath& path,
                                                  const Standpoint& standpoint, const Question& question,
                                                  const FolderNumbers& numbers);

}  // namespace vornixpath
