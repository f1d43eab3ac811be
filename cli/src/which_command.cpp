#include <algorithm>
#include <fl/filesystem/text_codec.hpp>
#include <search_path_utilities/lookup.hpp>

#include "commands.hpp"
#include "extension_list.hpp"
#include "looked_for.hpp"
#include "output.hpp"
#include "path_source.hpp"
#include "path_troubles.hpp"
#include "standpoint.hpp"
#include "visible_files.hpp"
#include "which_report.hpp"

namespace vornixpath {

namespace {

using fl::filesystem::from_bytes;
using Quorvex::PathManagement::detail::SearchTarget;

void ReportMiss(const std::u16string& name, const SearchTarget& target) {
  WriteMessage(Quoted(name) + " means no file on the path (looked for " + ListLookedFor(target) + ")");
}

Answer AnswerFor(const std::u16string& name, const std::vector<std::u16string>& extensions,
                 const Standpoint& standpoint, bool all) {
  const SearchTarget target =
      Quorvex::PathManagement::CreateSearchTargetWithExtensionInFilenamePreferred(name, extensions);
  Answer answer{name, {}};
  if (all) {
    answer.files = FindAllFiles(standpoint, target);
  } else if (auto found = FindVisibleFile(standpoint, target)) {
    answer.files.push_back(std::move(*found));
  }
  if (answer.files.empty()) ReportMiss(name, target);
  return answer;
}

}  // namespace

ExitStatus RunWhich(const WhichOptions& options) {
  const LoadedPath path = LoadPath(options.path);
  const auto troubles = TroublesOf(path);
  Warn(troubles);

  const Standpoint standpoint = StandpointOn(path, options.from, options.ignoreCase);
  const std::vector<std::u16string> extensions = ExtensionsFromText(from_bytes(options.extensions));
  std::vector<Answer> answers;
  answers.reserve(options.names.size());
  for (const std::string& name : options.names) {
    answers.push_back(AnswerFor(from_bytes(name), extensions, standpoint, options.all));
  }

  if (options.json) {
    WriteAsJson(answers, troubles);
  } else {
    WriteAsLines(answers, options.form);
  }
  if (options.strict && !troubles.empty()) return ExitStatus::Incomplete;
  const bool allFound =
      std::none_of(answers.begin(), answers.end(), [](const Answer& answer) { return answer.files.empty(); });
  return allFound ? ExitStatus::Yes : ExitStatus::No;
}

}  // namespace vornixpath
