// Folders that are watched: what changes is told as `compare --deep --effects` tells it, batch by batch.

#include <algorithm>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/msg_svc/eventmgr/event_mgr.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <map>
#include <search_path_environment/watched_path.hpp>
#include <stdexcept>
#include <tuple>

#include "commands.hpp"
#include "comparison_report.hpp"
#include "extension_list.hpp"
#include "labelled_line.hpp"
#include "location_text.hpp"
#include "output.hpp"
#include "path_source.hpp"
#include "path_troubles.hpp"
#include "watch_news.hpp"
#include "watched_spellings.hpp"

namespace vornixpath {

namespace {

using Quorvex::PathEnvironment::FolderPath;
using Quorvex::PathEnvironment::FolderWatching;
using Quorvex::PathEnvironment::PathProblem;
using Quorvex::PathEnvironment::ProblemKind;
using Quorvex::PathEnvironment::WatchedPath;
using Quorvex::PathEnvironment::Watching;

const char* NameOf(Watching state) {
  switch (state) {
    case Watching::Watched:
      return "watched";
    case Watching::Polled:
      return "polled";
    case Watching::Unwatched:
      return "unwatched";
  }
  return "unknown";
}

// How many folders are watched, and of the others, for each reason, how many there are and one of them.
void TellHowFoldersAreWatched(const std::vector<FolderWatching>& folders) {
  std::map<Watching, std::size_t> counts;
  std::map<std::tuple<Watching, std::string>, std::vector<std::string>> others;
  for (const FolderWatching& folder : folders) {
    ++counts[folder.state];
    if (folder.state == Watching::Watched) continue;
    others[{folder.state, ReasonOf(folder)}].push_back(Quoted(TextOf(folder.folder)));
  }
  for (auto& [kind, names] : others) {
    const auto& [state, reason] = kind;
    std::sort(names.begin(), names.end());
    WriteWarning(Counted(names.size(), "folder") + " " + NameOf(state) + ", " + names.front() +
                 (names.size() == 1 ? "" : " the first") + ": " + reason);
  }
  WriteMessage("watching: " + Counted(counts[Watching::Watched], "folder") + " watched, " +
               std::to_string(counts[Watching::Polled]) + " polled, " + std::to_string(counts[Watching::Unwatched]) +
               " unwatched");
}

bool Has(const std::vector<PathProblem>& problems, const PathProblem& problem) {
  return std::find(problems.begin(), problems.end(), problem) != problems.end();
}

bool IsAbsence(const PathProblem& problem) {
  return problem.kind == ProblemKind::Missing || problem.kind == ProblemKind::NotAFolder;
}

// What cannot be read any more, and which folders have come.
void TellTroubles(const FolderPath& before, const FolderPath& after) {
  const std::vector<PathProblem> former = TroublesOf(before);
  std::vector<PathProblem> present = TroublesOf(after);
  for (const PathProblem& trouble : former) {
    const bool isStillAbsent = std::any_of(present.begin(), present.end(), [&](const PathProblem& other) {
      return other.position == trouble.position && other.location == trouble.location && IsAbsence(other);
    });
    if (!IsAbsence(trouble) || isStillAbsent) continue;
    WriteMessage(Quoted(TextOf(trouble.location)) + ", folder " + std::to_string(trouble.position + 1) +
                 " of the path, is there now");
  }
  std::erase_if(present, [&](const PathProblem& trouble) { return Has(former, trouble); });
  Warn(present);
}

// Keeps up with the path, and tells what changes.
class Telling {
 public:
  Telling(WatchedPath& watched, const FolderList& list, const WatchOptions& options)
      : watched_(watched),
        list_(list),
        isJson_(options.json),
        depth_{true, ExtensionsFromText(fl::filesystem::from_bytes(options.extensions))},
        refreshed_(watched.GetPath()),
        told_(UnderFirstSpellings(refreshed_, list.GetFolders())) {}

  [[nodiscard]] const FolderPath& GetTold() const noexcept { return *told_; }

  void TellWhatChanged() {
    foundation::msg_svc::eventmgr::createLocalEventMgr(foundation::msg_svc::eventmgr::SessionEmId)->dispatch();
    const auto refreshed = watched_.Refresh().path;
    if (refreshed == refreshed_) return;
    refreshed_ = refreshed;
    const auto path = UnderFirstSpellings(refreshed, list_.GetFolders());
    const PathComparison comparison = Compare(told_, path, depth_);
    told_ = path;
    if (comparison.changes.empty()) return;  // of a spelling that counts for nothing
    if (isJson_) {
      WriteAsJson(comparison, depth_.isDeep);
    } else {
      WriteAsLines(comparison, depth_.isDeep);
    }
    FinishOutput();
    TellTroubles(*comparison.before, *comparison.after);
  }

 private:
  WatchedPath& watched_;
  FolderList list_;
  bool isJson_;
  ComparisonDepth depth_;
  std::shared_ptr<const FolderPath> refreshed_;
  std::shared_ptr<const FolderPath> told_;
};

// Until somebody ends it.
void TellChanges(Telling& telling, const WatchNews& news) {
  try {
    while (news.Wait() == WatchNews::News::Changes) telling.TellWhatChanged();
  } catch (const std::runtime_error&) {
    if (!WatchNews::IsNobodyReading()) throw;
  }
  if (WatchNews::IsNobodyReading()) DiscardOutput();
}

}  // namespace

ExitStatus RunWatch(const WatchOptions& options) {
  const WatchNews news;  // before anything starts a thread
  const FolderList list = ListFor(options.path);
  WatchedPath watched(ReadEverySpelling(list.GetFolders()),
                      foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference(),
                      {options.pollInterval, [&news] { news.Ring(); }});
  Telling telling(watched, list, options);
  Warn(TroublesOf(telling.GetTold()));
  telling.TellWhatChanged();  // since it was read
  TellHowFoldersAreWatched(watched.GetWatcher().GetFolders());
  TellChanges(telling, news);
  return ExitStatus::Yes;
}

}  // namespace vornixpath
