#include "explanation.hpp"

#include <utility>

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

}  // namespace

Explanation Explain(const Quorvex::PathEnvironment::FolderPath& path, const Standpoint& standpoint, Question question,
                    const FolderNumbers& numbers) {
  Explanation explanation{std::move(question), standpoint.policy, {}, boost::none, {}, {}, 0, UnreadFoldersOf(path)};
  explanation.winner = FindRecorded(standpoint, explanation.question, explanation.steps);
  if (explanation.winner) {
    explanation.hidden = FilesHiddenBy(*explanation.winner, standpoint, explanation.question.Target(), numbers);
  } else if (NamesAFile(explanation.question.Target())) {
    NearNames near = FindNearNames(path, standpoint, explanation.question, numbers);
    explanation.near = std::move(near.likeliest);
    explanation.furtherNear = near.further;
  }
  return explanation;
}

}  // namespace vornixpath
