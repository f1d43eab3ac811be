// What is wrong with a path, or not as people may expect, and what can be done about it.

#include <algorithm>
#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <iterator>

#include "case_twins.hpp"
#include "commands.hpp"
#include "doctor_report.hpp"
#include "empty_folders.hpp"
#include "extension_list.hpp"
#include "folder_findings.hpp"
#include "forbidden_names.hpp"
#include "health_score.hpp"
#include "path_source.hpp"
#include "path_troubles.hpp"
#include "shadow_findings.hpp"
#include "spread_folders.hpp"

namespace vornixpath {

namespace {

using fl::filesystem::from_bytes;
using Quorvex::PathEnvironment::DistinctFolders;
using Quorvex::PathEnvironment::DroppedFolder;

FolderRemoval RemovalFor(const PathOptions& options, const LoadedPath& path, const Packages& packages) {
  const DistinctFolders& folders = path.GetDistinctFolders();
  const std::size_t count = folders.GetKept().size() + folders.GetDropped().size();
  const std::string folder = fl::filesystem::to_displayed_text(from_bytes(options.packages.value_or("")));
  return {OriginOf(options), !options.session.has_value(), count - FoldersOf(packages).size(), folder};
}

// Those of folders in sight.
std::vector<DroppedFolder> RepeatsOf(const LoadedPath& path) {
  std::vector<DroppedFolder> repeats = path.GetDistinctFolders().GetDropped();
  std::erase_if(repeats, [&path](const DroppedFolder& repeat) { return path.IsMasked(repeat.stayingPosition); });
  return repeats;
}

std::vector<ShadowPair> ShadowsOf(const ExaminedPath& examined) {
  const auto storage = foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference();
  return PairsOf(GradedShadowsOf(examined.path, examined.extensions, storage), examined.path, examined.numbers);
}

bool IsAnyUnread(const std::vector<ShadowPair>& pairs) {
  return std::any_of(pairs.begin(), pairs.end(), [](const ShadowPair& pair) {
    return std::any_of(pair.shadows.begin(), pair.shadows.end(),
                       [](const GradedShadow& graded) { return !graded.unread.empty(); });
  });
}

// Findings of one kind after the other, then most severe first.
class Findings {
 public:
  void Add(std::vector<Finding> more) {
    findings_.insert(findings_.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
  }

  [[nodiscard]] std::vector<Finding> InOrder() && {
    std::stable_sort(findings_.begin(), findings_.end(),
                     [](const Finding& left, const Finding& right) { return left.severity < right.severity; });
    return std::move(findings_);
  }

 private:
  std::vector<Finding> findings_;
};

bool IsHealthy(const FindingCounts& counts, const std::optional<int>& minScore) {
  return minScore ? ScoreOf(counts) >= *minScore : counts.errors + counts.warnings == 0;
}

}  // namespace

ExitStatus RunDoctor(const DoctorOptions& options) {
  const Packages packages = PackagesFor(options.path);
  const LoadedPath path = LoadPath(options.path, FoldersOf(packages));
  const FolderNumbers numbers(path.GetLeaf());
  const ExaminedPath examined{path.GetView(), numbers, ExtensionsFromText(from_bytes(options.extensions))};
  const FolderRemoval removal = RemovalFor(options.path, path, packages);
  const auto troubles = TroublesOf(path);
  const std::vector<ShadowPair> shadows = ShadowsOf(examined);

  Findings findings;
  findings.Add(UnusableFolders(examined, troubles, removal));
  findings.Add(RepeatedFolders(RepeatsOf(path), removal));
  findings.Add(EmptyFolders(examined, troubles, removal));
  findings.Add(SpreadFolders(examined));
  findings.Add(ShadowedNames(shadows));
  findings.Add(LetterCaseTwins(examined));
  findings.Add(ForbiddenNames(examined));

  const DoctorReport report{std::move(findings).InOrder(), troubles, packages};
  if (options.json) {
    WriteAsJson(report);
  } else {
    WriteAsLines(report);
  }
  if (options.strict && (!troubles.empty() || IsAnyUnread(shadows) || AnyInDoubt(packages))) {
    return ExitStatus::Incomplete;
  }
  return IsHealthy(CountsOf(report.findings), options.minScore) ? ExitStatus::Yes : ExitStatus::No;
}

}  // namespace vornixpath
