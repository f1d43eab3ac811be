#include "cache_standing.hpp"

#include <search_path_environment/cached_path.hpp>
#include <unordered_set>
#include <utility>

namespace vornixpath {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::CachedPath;
using Quorvex::PathEnvironment::RecordedFolder;
using Quorvex::PathEnvironment::Standing;
using Quorvex::PathEnvironment::ToolboxCache;

namespace {

bool IsIndexUsed(const ToolboxCache& cache) {
  // What is found to be damaged later is another matter: then the folders are read.
  return CachedPath::Make(cache, cache.CountFolders(), nullptr) != nullptr;
}

}  // namespace

CacheStanding StandingOf(const FolderList& list, const ToolboxCache& cache) {
  const auto& listed = list.GetFolders();
  const std::unordered_set<AbsoluteIRI> onPath(listed.begin(), listed.end());
  CacheStanding standing{cache.HoldsListFrom(list.GetOrigin()) || cache.HoldsList(listed), false, 0, 0, {}};
  standing.isIndexUsed = standing.holdsList && IsIndexUsed(cache);
  for (RecordedFolder& folder : cache.ExamineFolders()) {
    if (!onPath.contains(folder.location)) continue;
    ++standing.count;
    if (folder.standing == Standing::Proven) {
      ++standing.proven;
    } else {
      standing.readAnew.push_back(std::move(folder));
    }
  }
  return standing;
}

std::string InWords(const CacheStanding& standing) {
  if (standing.isIndexUsed) return "it holds this path";
  if (standing.holdsList) return "it holds this path, but folders came, went or changed places: its index is not used";
  if (standing.count == 0) return "it holds another path, none of whose folders is on this one";
  return "it holds another path: what it has of this one's folders is used, its index is not";
}

}  // namespace vornixpath
