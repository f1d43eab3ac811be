#include <chrono>
#include <cmath>

#include "command_syntax.hpp"
#include "usage_error.hpp"

namespace vornixpath {

namespace {

void AddPollOption(CLI::App& command, std::chrono::milliseconds& interval) {
  constexpr double longest = 86'400;
  command
      .add_option_function<double>(
          "--poll",
          [&interval](double seconds) {
            if (!(seconds >= 0) || seconds > longest) throw UsageError("the SECONDS of --poll are not from 0 to 86400");
            interval = std::chrono::milliseconds(std::llround(std::ceil(seconds * 1000)));
          },
          "How often to look at folders that cannot be\nwatched; 2 as usual, 0 never")
      ->type_name("SECONDS");
}

}  // namespace

CommandSyntax AddWatch(CLI::App& app) {
  const auto options = std::make_shared<WatchOptions>();
  CLI::App& command = AddCommand(app, "watch", "", "Tell what changes in the folders of the path, as it happens");
  AddPathOptions(command, options->path);
  AddExtensionOption(command, options->extensions);
  AddPollOption(command, options->pollInterval);
  command.add_flag("--json", options->json, "Write one JSON document a line, for each batch of changes");
  command.footer(
      "Told are folders that hold something else (*), with the files that came (+) and went (-), special folders that\n"
      "came and went, and names that mean another file, or none any more. It ends when it is interrupted (INT, TERM),\n"
      "or nobody reads what it writes any more.\n"
      "Exit status: 0 ended so, 2 wrong usage, 4 could not work.\n\n"
      "  vornixpath watch --path ~/toolbox:~/more\n"
      "  vornixpath watch --json | while read -r batch; do ...; done");
  return {&command, [options](const Positionals& positionals) {
            positionals.RequireNone();
            RefuseImpossiblePath(options->path);
            return *options;
          }};
}

}  // namespace vornixpath
