#include <algorithm>
#include <fl/filesystem/text_codec.hpp>

#include "commands.hpp"
#include "compared_side.hpp"
#include "comparison_report.hpp"
#include "extension_list.hpp"
#include "path_troubles.hpp"

namespace vornixpath {

namespace {

using Quorvex::PathEnvironment::PathProblem;

// What is the matter on both sides is told once.
std::vector<PathProblem> TroublesOfBoth(const PathComparison& comparison) {
  std::vector<PathProblem> troubles = TroublesOf(*comparison.before);
  for (PathProblem& trouble : TroublesOf(*comparison.after)) {
    if (std::find(troubles.begin(), troubles.end(), trouble) == troubles.end()) troubles.push_back(std::move(trouble));
  }
  return troubles;
}

ComparisonDepth DepthOf(const CompareOptions& options) {
  ComparisonDepth depth;
  depth.isDeep = options.isDeep;
  if (options.tellsEffects) depth.extensions = ExtensionsFromText(fl::filesystem::from_bytes(options.extensions));
  return depth;
}

}  // namespace

ExitStatus RunCompare(const CompareOptions& options) {
  const auto before = LoadSide(options.before, options, nullptr);
  const auto after = LoadSide(options.after, options, before.get());
  const PathComparison comparison = Compare(before, after, DepthOf(options));
  const auto troubles = TroublesOfBoth(comparison);
  Warn(troubles);

  if (options.json) {
    WriteAsJson(comparison, options.isDeep);
  } else {
    WriteForPeople(comparison, options.isDeep);
  }
  if (options.strict && !troubles.empty()) return ExitStatus::Incomplete;
  return comparison.changes.empty() ? ExitStatus::Yes : ExitStatus::No;
}

}  // namespace vornixpath
