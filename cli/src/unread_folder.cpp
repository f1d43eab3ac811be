#include "unread_folder.hpp"

#include <unordered_set>

#include "path_troubles.hpp"

namespace vornixpath {

std::vector<UnreadFolder> UnreadFoldersOf(const LoadedPath& path) {
  std::unordered_set<foundation::storage::vfs::AbsoluteIRI> foldersOfPath;
  const auto entries = path.GetView().GetMainEntries();
  for (const auto& entry : *entries) foldersOfPath.insert(entry->GetAbsoluteIRI());

  std::vector<UnreadFolder> unread;
  for (const auto& trouble : TroublesOf(path)) {
    // A folder left out because it encloses itself is read where it stands first.
    if (trouble.kind == Quorvex::PathEnvironment::ProblemKind::Loop) continue;
    const bool isFolderOfPath = foldersOfPath.count(trouble.location) != 0;
    unread.push_back({trouble.location, trouble.position + 1, isFolderOfPath, ReasonOf(trouble)});
  }
  return unread;
}

}  // namespace vornixpath
