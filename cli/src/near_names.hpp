#pragma once

#include <cstddef>
#include <vector>

#include "folder_numbers.hpp"
#include "loaded_path.hpp"
#include "near_name.hpp"
#include "question.hpp"
#include "standpoint.hpp"

namespace vornixpath {

struct NearNames {
  std::vector<NearName> likeliest;  ///< likelier first, then in path order
  std::size_t further;              ///< how many more there are
};

/// What is near a name that means nothing from `standpoint`, each location once. Where folders are written, files in
/// folders of such names come first. Of one kind only a few are taken before the other kinds have had their turn.
///
/// Looks at every file of the path once, and asks storage, now, what the direct plain subfolders of the path's folders
/// hold, unless the path is a snapshot's. A subfolder that cannot be listed is passed over.
[[nodiscard]] NearNames FindNearNames(const LoadedPath& path, const Standpoint& standpoint, const Question& question,
                                      const FolderNumbers& numbers);

}  // namespace vornixpath
