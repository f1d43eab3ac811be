// What part a cache has in answering about a path.
#pragma once

#include <cstddef>
#include <search_path_environment/toolbox_cache.hpp>
#include <string>
#include <vector>

#include "folder_list.hpp"

namespace vornixpath {

struct CacheStanding {
  bool holdsList;      ///< whether the cache is of this very path
  bool isIndexUsed;    ///< not when some folder of it is another one than it was, or a spelling means another one
  std::size_t count;   ///< of its folders that are on the path
  std::size_t proven;  ///< of these
  std::vector<Quorvex::PathEnvironment::RecordedFolder> readAnew;  ///< the others of these, in the cache's order
};

/// Asks storage about every folder that `cache` holds of the path. Throws ToolboxCacheError for a damaged one.
[[nodiscard]] CacheStanding StandingOf(const FolderList& list, const Quorvex::PathEnvironment::ToolboxCache& cache);

/// "it holds another path: ..."
[[nodiscard]] std::string InWords(const CacheStanding& standing);

}  // namespace vornixpath
