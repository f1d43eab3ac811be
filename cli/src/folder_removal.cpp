#include "folder_removal.hpp"

#include <utility>

#include "shell_word.hpp"

namespace vornixpath {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::DroppedFolder;
using Quorvex::PathEnvironment::SameFolder;

FolderRemoval::FolderRemoval(PathOrigin origin, bool isDefaultSession, std::size_t packagesBegin, std::string packages)
    : origin_(std::move(origin)),
      isDefaultSession_(isDefaultSession),
      packagesBegin_(packagesBegin),
      packages_(std::move(packages)) {}

Fix FolderRemoval::Of(const AbsoluteIRI& folder, std::size_t position, const std::string& otherwise) const {
  if (IsOfPackage(position)) return {otherwise + "correct the manifest in " + packages_ + " that adds it"};
  Fix fix{otherwise + "take it off " + origin_.words};
  if (origin_.session) {
    const std::string session = isDefaultSession_ ? "" : "--session " + ShellWord(*origin_.session) + ' ';
    fix.command = "vornixpath remove " + session + ShellWord(folder);
  }
  return fix;
}

Fix FolderRemoval::Of(const DroppedFolder& repeat) const {
  if (IsOfPackage(repeat.position)) return {"none is needed: it counts where it stands first"};
  // Whoever removes a folder by its spelling removes it wherever it stands.
  if (repeat.reason == SameFolder::ByText) return {"delete one of its mentions in " + origin_.words};
  return Of(repeat.location, repeat.position);
}

}  // namespace vornixpath
