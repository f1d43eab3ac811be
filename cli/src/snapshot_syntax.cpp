// The commands that keep the state of a path, and compare what was kept.

#include "command_syntax.hpp"
#include "usage_error.hpp"

namespace vornixpath {

CommandSyntax AddSnapshot(CLI::App& app) {
  const auto options = std::make_shared<SnapshotOptions>();
  CLI::App& command = AddCommand(app, "snapshot", "FILE", "Keep in FILE what the folders of the path hold now");
  AddPathOptions(command, options->path);
  AddUnreadableIsFailureFlag(command, options->strict);
  command.footer(
      "FILE answers which, why, match and files under --snapshot, later or on another machine, and 'vornixpath\n"
      "compare' tells what has changed since. Only names are kept, not what stands in the files. A FILE that is there\n"
      "already is replaced.\n"
      "Exit status: 0 written, 2 wrong usage, 3 written, but see --strict, 4 could not work.\n\n"
      "  vornixpath snapshot monday.snapshot --path ~/toolbox:~/more");
  return {&command, [options](const Positionals& positionals) {
            options->file = positionals.ExactlyOne("FILE");
            RefuseTwoPaths(options->path);
            if (options->file.empty()) throw UsageError("FILE is empty");
            if (options->file == "-") throw UsageError("a snapshot goes into a file; one named '-' is './-'");
            return *options;
          }};
}

}  // namespace vornixpath
