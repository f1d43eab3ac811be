#pragma once

#include <boost/optional/optional.hpp>
#include <search_path_interfaces/found_item.hpp>
#include <vector>

#include "folder_numbers.hpp"
#include "loaded_path.hpp"
#include "near_name.hpp"
#include "question.hpp"
#include "standpoint.hpp"

namespace vornixpath {

/// A file whose name is nearly the one looked for, or whose place is.
struct NearFile {
  std::size_t agreeingFolders;      ///< how many of the folders written it stands in
  std::vector<Obstacle> obstacles;  ///< as in a NearName
  foundation::storage::vfs::AbsoluteIRI location;
  std::size_t number;                                        ///< of its folder of the path, from 1
  boost::optional<Quorvex::PathManagement::FoundItem> file;  ///< none where its folder is not on the path
};

/// All of them, likelier first, then in path order, each location once. Touches storage as `FindNearNames` says.
[[nodiscard]] std::vector<NearFile> FindNearFiles(const LoadedPath& path, const Standpoint& standpoint,
                                                  const Question& question, const FolderNumbers& numbers);

}  // namespace vornixpath
