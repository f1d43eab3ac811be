#include "command_line.hpp"

#include <algorithm>
#include <iostream>
#include <iterator>

#include "command_syntax.hpp"
#include "usage_error.hpp"

namespace vornixpath {

namespace {

void RequireCommand(const CLI::App& app, const std::vector<std::string>& options) {
  if (options.empty()) throw UsageError("COMMAND is missing");
  const std::string& first = options.front();
  if (!first.empty() && first.front() == '-') return;

  const auto isFirst = [&first](const CLI::App* command) { return command->get_name() == first; };
  if (app.get_subcommands(isFirst).empty()) throw UsageError("there is no command \"" + Displayed(first) + "\"");
}

}  // namespace

std::variant<Command, ExitStatus> ParseCommandLine(const std::vector<std::string>& arguments) {
  const auto doubleDash = std::find(arguments.begin(), arguments.end(), "--");
  std::vector<std::string> options(arguments.begin(), doubleDash);
  const std::vector<std::string> verbatim(doubleDash == arguments.end() ? doubleDash : std::next(doubleDash),
                                          arguments.end());

  CLI::App app("Tells which file a name means on a search path, and why; keeps such a path.", "vornixpath");
  app.set_version_flag("--version", "vornixpath " VORNIXPATH_VERSION);
  app.require_subcommand(1);
  app.get_formatter()->label("SUBCOMMAND", "COMMAND");
  app.footer("'vornixpath COMMAND --help' tells more. What follows '--' is never taken as an option.");
  const std::vector<CommandSyntax> commands = {
      AddWhich(app),   AddWhy(app), AddMatch(app),  AddFiles(app), AddShadows(app), AddPath(app),  AddSnapshot(app),
      AddCompare(app), AddAdd(app), AddRemove(app), AddUndo(app),  AddLog(app),     AddSplit(app), AddIri(app)};

  RequireCommand(app, options);
  try {
    std::reverse(options.begin(), options.end());  // as CLI11 wants them
    app.parse(options);
  } catch (const CLI::Success& helpOrVersion) {
    app.exit(helpOrVersion, std::cout, std::cout);
    return ExitStatus::Yes;
  } catch (const CLI::ParseError& error) {
    throw UsageError(Displayed(error.what()));
  }

  // Exactly one is, or CLI11 would have complained.
  const auto asked = std::find_if(commands.begin(), commands.end(),
                                  [](const CommandSyntax& command) { return command.parser->parsed(); });
  return asked->complete(Positionals(*asked->parser, verbatim));
}

}  // namespace vornixpath
