// What is wrong with a path, or not as people may expect, and what can be done about it.

#include <fl/filesystem/text_codec.hpp>

#include "commands.hpp"
#include "doctor_report.hpp"
#include "extension_list.hpp"
#include "health_score.hpp"
#include "path_findings.hpp"
#include "path_source.hpp"
#include "path_troubles.hpp"
#include "unread_files.hpp"

namespace vornixpath {

namespace {

bool IsHealthy(const FindingCounts& counts, const std::optional<int>& minScore) {
  return minScore ? ScoreOf(counts) >= *minScore : counts.errors + counts.warnings == 0;
}

}  // namespace

ExitStatus RunDoctor(const DoctorOptions& options) {
  const Packages packages = PackagesFor(options.path);
  const LoadedPath path = LoadPath(options.path, FoldersOf(packages));
  const FolderNumbers numbers(path.GetLeaf());
  const ExaminedPath examined{path.GetView(), numbers,
                              ExtensionsFromText(fl::filesystem::from_bytes(options.extensions))};
  const FolderRemoval removal = RemovalFor(options.path, path, packages);
  const auto troubles = TroublesOf(path);
  const std::vector<ShadowPair> shadows = ShadowsOf(examined);

  const DoctorReport report{FindingsOf({path, examined, troubles, shadows}, removal), troubles, packages};
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
