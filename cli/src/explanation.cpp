#include "explanation.hpp"

#include <utility>

#include "near_names.hpp"
#include "recording_entry.hpp"
#include "recording_path.hpp"
#include "visible_files.hpp"

namespace vornixpath {

namespace {

using Quorvex::PathManagement::FoundItem;

// More would only bury the likely ones.
constexpr std::size_t kNearNamesTold = 10;

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
  Explanation explanation{std::move(question), standpoint.policy, {}, boost::none, {}, {}};
  explanation.winner = FindRecorded(standpoint, explanation.question, explanation.steps);
  if (explanation.winner) {
    explanation.hidden = FilesHiddenBy(*explanation.winner, standpoint, explanation.question.Target(), numbers);
    return explanation;
  }

  explanation.near = FindNearNames(path, standpoint, explanation.question, numbers);
  if (explanation.near.size() > kNearNamesTold) {
    explanation.furtherNear = explanation.near.size() - kNearNamesTold;
    explanation.near.erase(explanation.near.begin() + kNearNamesTold, explanation.near.end());
  }
  return explanation;
}

}  // namespace vornixpath
