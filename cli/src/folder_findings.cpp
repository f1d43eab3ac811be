#include "folder_findings.hpp"

#include <unordered_set>

#include "folder_state.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::DroppedFolder;
using Quorvex::PathEnvironment::PathProblem;
using Quorvex::PathEnvironment::ProblemKind;

FindingKind KindOf(const PathProblem& trouble) {
  if (trouble.kind == ProblemKind::Loop) return FindingKind::LoopingFolder;
  return StateOf(trouble).word == "missing" ? FindingKind::MissingFolder : FindingKind::UnreadableFolder;
}

// What can be done about the folder itself.
std::string FixAtItsPlace(const PathProblem& trouble) {
  switch (trouble.kind) {
    case ProblemKind::Missing:
      return "make it";
    case ProblemKind::NotAFolder:
      return "put a folder in its place";
    case ProblemKind::Loop:
      return "delete the link that leads back";
    case ProblemKind::TooDeep:
      return "nest fewer folders";
    default:
      return "make it readable";
  }
}

}  // namespace

std::vector<Finding> UnusableFolders(const ExaminedPath& examined, const std::vector<PathProblem>& troubles,
                                     const FolderRemoval& removal) {
  std::unordered_set<AbsoluteIRI> foldersOfPath;
  const auto entries = examined.path.GetMainEntries();
  for (const auto& entry : *entries) foldersOfPath.insert(entry->GetAbsoluteIRI());

  std::vector<Finding> findings;
  for (const PathProblem& trouble : troubles) {
    const FindingKind kind = KindOf(trouble);
    const std::string here = FixAtItsPlace(trouble);
    const bool isOfPath = foldersOfPath.contains(trouble.location);
    findings.push_back({kind,
                        kind == FindingKind::LoopingFolder ? Severity::Note : Severity::Error,
                        ReasonOf(trouble),
                        {{trouble.location, trouble.position + 1}},
                        isOfPath ? removal.Of(trouble.location, trouble.position, here + ", or ") : Fix{here}});
  }
  return findings;
}

std::vector<Finding> RepeatedFolders(const std::vector<DroppedFolder>& dropped, const FolderRemoval& removal) {
  std::vector<Finding> findings;
  findings.reserve(dropped.size());
  for (const DroppedFolder& folder : dropped) {
    findings.push_back({FindingKind::RepeatedFolder,
                        Severity::Note,
                        ReasonOf(folder),
                        {{folder.location, folder.position + 1}},
                        removal.Of(folder)});
  }
  return findings;
}

}  // namespace vornixpath
