#include <fl/filesystem/text_codec.hpp>

#include "commands.hpp"
#include "explanation.hpp"
#include "extension_list.hpp"
#include "path_source.hpp"
#include "path_troubles.hpp"
#include "why_report.hpp"

namespace vornixpath {

ExitStatus RunWhy(const WhyOptions& options) {
  const LoadedPath path = LoadPath(options.path);
  const auto troubles = TroublesOf(path);
  Warn(troubles);

  const Standpoint standpoint = StandpointOn(path, options.from, options.ignoreCase);
  const FolderNumbers numbers(path.GetLeaf());
  Question question{fl::filesystem::from_bytes(options.name),
                    ExtensionsFromText(fl::filesystem::from_bytes(options.extensions))};
  const Explanation explanation = Explain(path, standpoint, std::move(question), numbers);

  if (options.json) {
    WriteAsJson(explanation, numbers, troubles);
  } else {
    WriteAsLines(explanation, numbers);
  }
  if (options.strict && !troubles.empty()) return ExitStatus::Incomplete;
  return explanation.winner ? ExitStatus::Yes : ExitStatus::No;
}

}  // namespace vornixpath
