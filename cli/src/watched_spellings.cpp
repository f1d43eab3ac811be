#include "watched_spellings.hpp"

#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/distinct_folders.hpp>
#include <unordered_map>
#include <utility>

#include "read_path.hpp"

namespace vornixpath {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::DistinctFolders;
using Quorvex::PathEnvironment::DroppedFolder;
using Quorvex::PathEnvironment::FolderEntry;
using Quorvex::PathEnvironment::FolderPath;
using Quorvex::PathEnvironment::KeptFolder;
using Quorvex::PathEnvironment::PathProblem;
using Quorvex::PathEnvironment::ProblemKind;

std::shared_ptr<const FolderPath> ReadEverySpelling(const std::vector<AbsoluteIRI>& folders) {
  return ReadPath(DistinctFolders(folders));
}

std::shared_ptr<const FolderPath> UnderFirstSpellings(const std::shared_ptr<const FolderPath>& path,
                                                      const std::vector<AbsoluteIRI>& folders) {
  const DistinctFolders distinct(folders, VornixStorageSystem::GetStorageSystemReference());
  const auto spelled = path->GetMainEntries();
  if (distinct.GetKept().size() == spelled->size()) return path;

  std::unordered_map<AbsoluteIRI, std::shared_ptr<const FolderEntry>> entries;
  for (const auto& entry : *spelled) {
    entries.emplace(entry->GetAbsoluteIRI(), std::static_pointer_cast<const FolderEntry>(entry));
  }
  std::vector<FolderPath::Folder> kept;
  kept.reserve(distinct.GetKept().size());
  for (const KeptFolder& folder : distinct.GetKept()) kept.push_back({entries.at(folder.location), folder.position});
  std::vector<PathProblem> repeats;
  repeats.reserve(distinct.GetDropped().size());
  for (const DroppedFolder& folder : distinct.GetDropped()) {
    repeats.push_back({folder.location, ProblemKind::Repeated, {}, folder.position});
  }
  return std::make_shared<const FolderPath>(kept, std::move(repeats));
}

}  // namespace vornixpath
