#include <algorithm>
#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_utilities/lookup.hpp>
#include <search_path_utilities/path_editing.hpp>

#include "commands.hpp"
#include "folder_text.hpp"
#include "output.hpp"
#include "path_source.hpp"
#include "usage_error.hpp"
#include "visible_files.hpp"
#include "which_report.hpp"

namespace vornixpath {

namespace {

using fl::filesystem::from_bytes;
using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::FolderPath;
using Quorvex::PathEnvironment::PathProblem;
using Quorvex::PathEnvironment::ProblemKind;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::GetStringFromIRI;
using Quorvex::PathManagement::detail::SearchTarget;

// "h" and ".h" both mean ".h"; an empty element means no extension.
std::vector<std::u16string> ExtensionsFromText(const std::u16string& text) {
  std::vector<std::u16string> extensions;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(u',', begin), text.size());
    const std::u16string extension = text.substr(begin, end - begin);
    const bool needsDot = !extension.empty() && extension.front() != u'.';
    extensions.push_back(needsDot ? u'.' + extension : extension);
    begin = end + 1;
  }
  return extensions;
}

AbsoluteIRI LocationFromArgument(const std::u16string& text) {
  try {
    return LocationFromText(text, CurrentFolder());
  } catch (const foundation::storage::vfs::Exception& exception) {
    throw UsageError(exception.what());
  }
}

bool IsOnPath(const FolderPath& path, const AbsoluteIRI& folder) {
  return path.GetPathEntryFromAbsoluteIRI(folder, FilenameMatchingPolicy::Native) != nullptr;
}

// The folder under the spelling by which the path knows it, if it does.
AbsoluteIRI FolderToAskFrom(const FolderPath& path, const std::u16string& text) {
  const AbsoluteIRI folder = LocationFromArgument(text);
  if (IsOnPath(path, folder)) return folder;
  try {
    const AbsoluteIRI canonical = Quorvex::PathManagement::GetCanonicalIRI(folder).getAbsoluteIRI();
    if (IsOnPath(path, canonical)) return canonical;
  } catch (const foundation::storage::vfs::Exception& exception) {
    WriteWarning(exception.what());
  }
  WriteWarning(Quoted(text) + " is not on the path, so it contributes no private folder");
  return folder;
}

// A repeat is no trouble: the folder is searched at its first place.
std::vector<PathProblem> TroublesOf(const FolderPath& path) {
  std::vector<PathProblem> troubles;
  const auto& problems = path.GetProblems();
  std::copy_if(problems.begin(), problems.end(), std::back_inserter(troubles),
               [](const PathProblem& problem) { return problem.kind != ProblemKind::Repeated; });
  return troubles;
}

void Warn(const std::vector<PathProblem>& troubles) {
  for (const PathProblem& trouble : troubles) {
    WriteWarning(Quoted(GetStringFromIRI(trouble.location)) + ", folder " + std::to_string(trouble.position + 1) +
                 " of the path: " + ReasonOf(trouble));
  }
}

void ReportMiss(const std::u16string& name, const SearchTarget& target) {
  std::string tried;
  for (const std::u16string& extension : target.GetExtensions()) {
    if (!tried.empty()) tried += ", ";
    tried += fl::filesystem::to_displayed_text(target.GetBaseName() + extension);
  }
  WriteMessage(Quoted(name) + " means no file on the path (looked for " + tried + ")");
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
  const auto path = LoadPath(options.path);
  const std::vector<PathProblem> troubles = TroublesOf(*path);
  Warn(troubles);

  Standpoint standpoint{*path, boost::none,
                        options.ignoreCase ? FilenameMatchingPolicy::CaseInsensitive : FilenameMatchingPolicy::Native};
  if (options.from) standpoint.folder = FolderToAskFrom(*path, from_bytes(*options.from));

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
