#include "explanation.hpp"

#include <unordered_set>
#include <utility>

#include "file_location.hpp"
#include "looked_for.hpp"
#include "near_names.hpp"
#include "recording_entry.hpp"
#include "recording_path.hpp"
#include "visible_files.hpp"

namespace vornixpath {

namespace {

using Quorvex::PathManagement::FoundItem;

boost::optional<FoundItem> FindRecorded(const Standpoint& standpoint, const Question& question, LookupSteps& steps) {
  const RecordingPath recorder(standpoint.path);
  const auto found = FindVisibleFile({recorder, standpoint.folder, standpoint.policy}, question.Target());
  steps = recorder.GetSteps();
  if (!found) return boost::none;
  return FoundItem(found->GetPathItem(), OriginalOf(found->GetPathEntry()));
}

// What the name means on the whole path, in order of precedence, but not on the view.
std::vector<FoundItem> FindMaskedFiles(const LoadedPath& path, const Standpoint& standpoint,
                                       const Quorvex::PathManagement::detail::SearchTarget& target) {
  if (path.GetMaskedFolders().empty()) return {};
  std::unordered_set<foundation::storage::vfs::AbsoluteIRI> inSight;
  for (const FoundItem& file : FindAllFiles(standpoint, target)) inSight.insert(LocationOf(file));
  std::vector<FoundItem> files = FindAllFiles({path.GetLeaf(), standpoint.folder, standpoint.policy}, target);
  std::erase_if(files, [&inSight](const FoundItem& file) { return inSight.contains(LocationOf(file)); });
  return files;
}

}  // namespace

Explanation Explain(const LoadedPath& path, const Standpoint& standpoint, Question question,
                    const FolderNumbers& numbers) {
  Explanation explanation{std::move(question),   standpoint.policy,       {}, boost::none, {}, {}, 0,
                          UnreadFoldersOf(path), path.GetMaskedFolders(), {}};
  explanation.winner = FindRecorded(standpoint, explanation.question, explanation.steps);
  if (explanation.winner) {
    explanation.hidden = FilesHiddenBy(*explanation.winner, standpoint, explanation.question.Target(), numbers);
  } else if (NamesAFile(explanation.question.Target())) {
    NearNames near = FindNearNames(path, standpoint, explanation.question, numbers);
    explanation.near = std::move(near.likeliest);
    explanation.furtherNear = near.further;
  }
  explanation.maskedFiles = FindMaskedFiles(path, standpoint, explanation.question.Target());
  return explanation;
}

}  // namespace vornixpath
