#include <string>
#include <string_view>

#include "command_table.hpp"
#include "descriptions.hpp"
#include "help_topics.hpp"
#include "joined_names.hpp"
#include "shell_word.hpp"

namespace vornixpath {

namespace {

std::string WithBackslashes(std::string_view text, std::string_view before) {
  std::string escaped;
  for (const char character : text) {
    if (character == '\\' || before.find(character) != std::string_view::npos) escaped += '\\';
    escaped += character;
  }
  return escaped;
}

// What of a line says what an argument is called and how it is completed.
std::string Message(const DescribedArgument& argument) {
  const std::string label = ":" + WithBackslashes(argument.label, ":") + ":";
  switch (argument.kind) {
    case ArgumentKind::Choice:
      return label + "(" + JoinedNames(argument.choices, " ", " ") + ")";
    case ArgumentKind::File:
      return label + "_files";
    case ArgumentKind::Folder:
      return label + "_directories";
    case ArgumentKind::FolderList:
      return label + "_dir_list";
    case ArgumentKind::Text:
      break;
  }
  return label + " ";  // told, not completed
}

// One line for each of its names; each rules out the others unless the option may be repeated.
std::string LinesFor(const DescribedOption& option) {
  const std::string excluded = option.repeats ? "*" : "(" + JoinedNames(option.names, " ", " ") + ")";
  const std::string told = "[" + WithBackslashes(Headline(option.description), "[]") + "]" +
                           (option.argument ? Message(*option.argument) : "");
  std::string lines;
  for (const std::string& name : option.names) {
    const bool takesAfterSign = option.argument && name.starts_with("--");
    std::string line = excluded;
    line.append(name).append(takesAfterSign ? "=" : "").append(told);
    lines.append(" \\\n        ").append(ShellWord(line));
  }
  return lines;
}

std::string ZshOptions(const std::vector<DescribedOption>& options) {
  std::string lines;
  for (const DescribedOption& option : options) lines += LinesFor(option);
  return lines;
}

std::string ZshPositionals(const std::vector<DescribedArgument>& positionals) {
  std::string lines;
  for (std::size_t i = 0; i < positionals.size(); ++i) {
    lines +=
        " \\\n        " + ShellWord((positionals[i].repeats ? "*" : std::to_string(i + 1)) + Message(positionals[i]));
  }
  return lines;
}

std::string Proposal(std::string_view name, std::string_view description) {
  return "    " + ShellWord(WithBackslashes(name, ":") + ":" + std::string(description)) + "\n";
}

std::string ZshCommands(const DescribedProgram& program) {
  std::string lines = Proposal(kHelpCommand, kHelpDescription);
  for (const DescribedCommand& command : program.commands) lines += Proposal(command.name, command.description);
  return lines;
}

std::string Cases(const DescribedProgram& program) {
  std::string lines = "    " + std::string(kHelpCommand) + ") _arguments '1: :_vornixpath_told' && ret=0 ;;\n";
  for (const DescribedCommand& command : program.commands) {
    lines += "    " + command.name + ")\n      _arguments -S" + ZshOptions(command.options) +
             ZshPositionals(command.positionals) + " && ret=0\n      ;;\n";
  }
  return lines;
}

}  // namespace

std::string ZshCompletion(const DescribedProgram& program) {
  return "#compdef vornixpath\n"
         "# What zsh completes for vornixpath.\n\n"
         "_vornixpath_commands() {\n  local -a commands=(\n" +
         ZshCommands(program) +
         "  )\n  _describe -t commands COMMAND commands\n}\n\n"
         "_vornixpath_told() {\n  local -a topics=(" +
         JoinedNames(HelpTopicNames(), " ", " ") +
         ")\n  _vornixpath_commands\n  _describe -t topics TOPIC topics\n}\n\n"
         "_vornixpath() {\n"
         "  local curcontext=$curcontext state line ret=1\n"
         "  typeset -A opt_args\n"
         "  _arguments -C" +
         ZshOptions(program.options) +
         " \\\n        '1: :_vornixpath_commands' '*:: :->arguments' && ret=0\n"
         "  [[ $state == arguments ]] && case $words[1] in\n" +
         Cases(program) +
         "  esac\n"
         "  return ret\n}\n\n"
         "_vornixpath \"$@\"\n";
}

}  // namespace vornixpath
