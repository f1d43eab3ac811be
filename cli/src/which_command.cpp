#include <algorithm>
#include <fl/filesystem/text_codec.hpp>
#include <search_path_environment/cached_path.hpp>
#include <search_path_environment/toolbox_cache.hpp>
#include <search_path_utilities/lookup.hpp>
#include <utility>

#include "commands.hpp"
#include "extension_list.hpp"
#include "looked_for.hpp"
#include "output.hpp"
#include "packages.hpp"
#include "path_source.hpp"
#include "path_troubles.hpp"
#include "standpoint.hpp"
#include "visible_files.hpp"
#include "which_report.hpp"

namespace vornixpath {

namespace {

using fl::filesystem::from_bytes;
using Quorvex::PathManagement::FoundItem;
using Quorvex::PathManagement::detail::SearchTarget;

using Quorvex::PathEnvironment::CachedPath;
using Quorvex::PathEnvironment::ToolboxCache;
using Names = std::vector<std::u16string>;
using Targets = std::vector<SearchTarget>;

// Whether each name is answered by the first folder that has it, so that a cache need not prove the folders behind.
bool IsDecidedEarly(const WhichOptions& options) {
  return !options.all && !options.from && !options.ignoreCase && !options.json && !options.strict;
}

std::size_t CountDecidingAll(const Targets& targets, const ToolboxCache& cache) {
  std::size_t count = 0;
  for (const SearchTarget& target : targets) count = std::max(count, CachedPath::CountDeciding(cache, target));
  return count;
}

std::vector<FoundItem> FilesFor(const SearchTarget& target, const Standpoint& standpoint, bool all) {
  if (all) return FindAllFiles(standpoint, target);
  std::vector<FoundItem> files;
  if (auto found = FindVisibleFile(standpoint, target)) files.push_back(std::move(*found));
  return files;
}

// In the order of the names.
std::vector<Answer> AnswersOn(const LoadedPath& path, const Names& names, const Targets& targets,
                              const WhichOptions& options) {
  const Standpoint standpoint = StandpointOn(path, options.from, options.ignoreCase);
  std::vector<Answer> answers;
  answers.reserve(targets.size());
  for (std::size_t i = 0; i < targets.size(); ++i) {
    answers.push_back({names[i], FilesFor(targets[i], standpoint, options.all)});
  }
  return answers;
}

bool AllFound(const std::vector<Answer>& answers) {
  return std::none_of(answers.begin(), answers.end(), [](const Answer& answer) { return answer.files.empty(); });
}

void ReportMisses(const std::vector<Answer>& answers, const Targets& targets) {
  for (std::size_t i = 0; i < answers.size(); ++i) {
    if (!answers[i].files.empty()) continue;
    WriteMessage(Quoted(answers[i].name) + " means no file on the path (looked for " + ListLookedFor(targets[i]) + ")");
  }
}

}  // namespace

ExitStatus RunWhich(const WhichOptions& options) {
  const std::vector<std::u16string> extensions = ExtensionsFromText(from_bytes(options.extensions));
  Names names;
  for (const std::string& name : options.names) names.push_back(from_bytes(name));
  Targets targets;  // they borrow names and extensions
  for (const std::u16string& name : names) {
    targets.push_back(Quorvex::PathManagement::CreateSearchTargetWithExtensionInFilenamePreferred(name, extensions));
  }

  const Packages packages = PackagesFor(options.path);
  const auto ofPackages = FoldersOf(packages);
  const CountDeciding countDeciding = [&](const ToolboxCache& cache) { return CountDecidingAll(targets, cache); };
  LoadedPath path = LoadPath(options.path, ofPackages, IsDecidedEarly(options) ? countDeciding : CountAll);
  std::vector<Answer> answers = AnswersOn(path, names, targets, options);
  if (!AllFound(answers) && path.IsPart()) {  // a file that the cache knew is gone
    path = LoadPath(options.path, ofPackages);
    answers = AnswersOn(path, names, targets, options);
  }
  const auto troubles = TroublesOf(path);
  Warn(troubles);
  ReportMisses(answers, targets);

  if (options.json) {
    WriteAsJson(answers, troubles, packages);
  } else {
    WriteAsLines(answers, options.form);
  }
  if (options.strict && (!troubles.empty() || AnyInDoubt(packages))) return ExitStatus::Incomplete;
  return AllFound(answers) ? ExitStatus::Yes : ExitStatus::No;
}

}  // namespace vornixpath
