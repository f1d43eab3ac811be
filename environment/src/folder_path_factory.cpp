#include <fl/filesystem/displayed_text.hpp>
#include <search_path_environment/folder_path_factory.hpp>
#include <stdexcept>
#include <unordered_set>
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
  std::vector<std::size_t> firsts;
  std::vector<PathProblem> problems;
  std::unordered_set<AbsoluteIRI> seen;
  for (std::size_t position = 0; position < folders.size(); ++position) {
    const AbsoluteIRI& folder = folders[position];
    if (seen.insert(folder).second) {
      firsts.push_back(position);
    } else {
      // Order is precedence: a later twin can never be reached.
      problems.push_back({folder, ProblemKind::Repeated, {}, position});
    }
  }

  std::vector<FolderPath::Folder> listed(firsts.size());
  InParallel(firsts.size(), [&](std::size_t i) {
    listed[i] = {FolderEntryFor(folders[firsts[i]], entries), firsts[i]};
  });
  return std::make_shared<const FolderPath>(listed, std::move(problems));
}

}  // namespace Quorvex::PathEnvironment
