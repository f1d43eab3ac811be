#include <fl/filesystem/displayed_text.hpp>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>
#include <stdexcept>
#include <utility>

#include "parallel.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using PathManagement::IPathEntryFactory;

namespace {

std::shared_ptr<const FolderEntry> FolderEntryFor(const AbsoluteIRI& folder, const IPathEntryFactory& entries) {
  auto entry = std::dynamic_pointer_cast<const FolderEntry>(entries.CreateMainEntry(folder));
  if (entry) return entry;
  throw std::invalid_argument("the entry factory made no folder entry for \"" +
                              fl::filesystem::to_displayed_text(folder.toString()) + "\"");
}

}  // namespace

FolderPathFactory::~FolderPathFactory() = default;

std::shared_ptr<const PathManagement::IPath> FolderPathFactory::CreatePath(const std::vector<AbsoluteIRI>& folders,
                                                                           const IPathEntryFactory& entries) const {
  return CreateFolderPath(folders, entries);
}

std::shared_ptr<const FolderPath> FolderPathFactory::CreateFolderPath(const std::vector<AbsoluteIRI>& folders,
                                                                      const IPathEntryFactory& entries) const {
  return CreateFolderPath(DistinctFolders(folders), entries);
}

std::shared_ptr<const FolderPath> FolderPathFactory::CreateFolderPath(const DistinctFolders& folders,
                                                                      const IPathEntryFactory& entries) const {
  // Order is precedence: a later twin can never be reached.
  std::vector<PathProblem> problems;
  for (const DroppedFolder& dropped : folders.GetDropped()) {
    problems.push_back({dropped.location, ProblemKind::Repeated, {}, dropped.position});
  }

  const std::vector<KeptFolder>& kept = folders.GetKept();
  std::vector<FolderPath::Folder> listed(kept.size());
  InParallel(kept.size(), [&](std::size_t i) {
    listed[i] = {FolderEntryFor(kept[i].location, entries), kept[i].position};
  });
  auto path = std::make_shared<const FolderPath>(listed, std::move(problems));
  if (const auto* const known = dynamic_cast<const FolderEntryFactory*>(&entries)) known->RememberPath(path, folders);
  return path;
}

}  // namespace Quorvex::PathEnvironment
