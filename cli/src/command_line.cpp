#include "command_line.hpp"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <string_view>

#include "command_table.hpp"
#include "help_topics.hpp"
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

bool AsksForHelp(const std::vector<std::string>& options) {
  return !options.empty() && options.front() == kHelpCommand;
}

// The text to answer with, when help is asked for about what concerns more than one command.
std::optional<std::string_view> TextOfTopic(const std::vector<std::string>& help) {
  if (help.size() > 2) throw UsageError("only one TOPIC is taken, not also \"" + Displayed(help[2]) + '"');
  return help.size() == 2 ? HelpAbout(help[1]) : std::nullopt;
}

// The same question as `help`, with --help.
std::vector<std::string> WithHelpAsOption(const std::vector<std::string>& help) {
  if (help.size() == 1) return {"--help"};
  if (FindCommand(help[1]) == nullptr) {
    throw UsageError("there is no command or topic \"" + Displayed(help[1]) + "\"; topics are " + HelpTopics());
  }
  return {help[1], "--help"};
}

// All, or, where it is known already which one is meant, that one alone: to describe them takes longer than to find a
// name.
std::vector<CommandSyntax> CommandsFor(const std::vector<std::string>& options, CLI::App& app) {
  const CommandEntry* const meant = options.empty() ? nullptr : FindCommand(options.front());
  if (meant != nullptr) return {meant->add(app)};
  std::vector<CommandSyntax> all;
  for (const CommandEntry& command : AllCommands()) all.push_back(command.add(app));
  return all;
}

}  // namespace

std::variant<Command, ExitStatus> ParseCommandLine(const std::vector<std::string>& arguments) {
  const auto doubleDash = std::find(arguments.begin(), arguments.end(), "--");
  std::vector<std::string> options(arguments.begin(), doubleDash);
  const std::vector<std::string> verbatim(doubleDash == arguments.end() ? doubleDash : std::next(doubleDash),
                                          arguments.end());

  if (AsksForHelp(options)) {
    if (const auto text = TextOfTopic(options)) {
      std::cout << *text;
      return ExitStatus::Yes;
    }
    options = WithHelpAsOption(options);
  }

  CLI::App app;
  DescribeProgram(app);
  const std::vector<CommandSyntax> commands = CommandsFor(options, app);

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
