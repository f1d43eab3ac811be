#include <set>
#include <string>
#include <string_view>

#include "command_table.hpp"
#include "descriptions.hpp"
#include "help_topics.hpp"
#include "joined_names.hpp"

namespace vornixpath {

namespace {

// Between its single quotes fish, unlike other shells, knows a backslash.
std::string FishWord(std::string_view text) {
  std::string word = "'";
  for (const char character : text) {
    if (character == '\'' || character == '\\') word += '\\';
    word += character;
  }
  return word += '\'';
}

std::string Complete(const std::string& condition, const std::string& what) {
  return "complete -c vornixpath -n " + FishWord(condition) + what + "\n";
}

std::string Proposed(std::string_view name, std::string_view description) {
  return " -a " + FishWord(name) + " -d " + FishWord(description);
}

std::string Candidates(const DescribedArgument& argument) {
  switch (argument.kind) {
    case ArgumentKind::Choice:
      return " -a " + FishWord(JoinedNames(argument.choices, " ", " "));
    case ArgumentKind::File:
      return " -F";
    case ArgumentKind::Folder:
      return " -a '(__fish_complete_directories)'";
    case ArgumentKind::FolderList:
      return " -a '(__vornixpath_folders)'";
    case ArgumentKind::Text:
      break;
  }
  return "";
}

// An argument that is no file must say so (-x).
std::string Taken(const DescribedArgument& argument) {
  return (argument.kind == ArgumentKind::File ? " -r" : " -x") + Candidates(argument);
}

std::string FishOption(const std::string& condition, const DescribedOption& option) {
  std::string what;
  for (const std::string& name : option.names) {
    what += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
  }
  if (option.argument) what += Taken(*option.argument);
  return Complete(condition, what + " -d " + FishWord(Headline(option.description)));
}

std::string FishCommands(const DescribedProgram& program, const std::string& condition) {
  std::string lines;
  for (const DescribedCommand& command : program.commands) {
    lines += Complete(condition, Proposed(command.name, command.description));
  }
  return lines;
}

std::string FishCommand(const DescribedCommand& command) {
  std::string lines;
  for (const DescribedOption& option : command.options) lines += FishOption("__vornixpath_in " + command.name, option);
  for (std::size_t i = 0; i < command.positionals.size(); ++i) {
    const DescribedArgument& argument = command.positionals[i];
    if (argument.kind == ArgumentKind::Text) continue;
    const std::string number = argument.repeats ? "" : " " + std::to_string(i + 1);
    lines += Complete("__vornixpath_at " + command.name + number, Candidates(argument));
  }
  return lines;
}

std::string NamesWithArguments(const DescribedProgram& program) {
  std::set<std::string> names;
  for (const DescribedCommand& command : program.commands) {
    for (const DescribedOption& option : command.options) {
      if (option.argument) names.insert(option.names.begin(), option.names.end());
    }
  }
  return JoinedNames(names, " ", " ");
}

constexpr std::string_view kFishFunctions = R"(
function __vornixpath_begins
    test (count (commandline -opc)) -eq 1
end

# Whether the command is $argv[1].
function __vornixpath_in
    set -l words (commandline -opc)
    test (count $words) -ge 2 -a "$words[2]" = $argv[1]
end

# Whether the command is $argv[1], and what comes next is number $argv[2] of what is no option.
function __vornixpath_at
    __vornixpath_in $argv[1]; or return
    set -q argv[2]; or return 0
    set -l words (commandline -opc)
    set -l number 1
    set -l verbatim no
    set -l isArgument no
    for word in $words[3..-1]
        if test $isArgument = yes
            set isArgument no
        else if test "$word" = --
            set verbatim yes
        else if test $verbatim = no; and string match -q -- '-?*' "$word"
            contains -- "$word" $__vornixpath_takes; and set isArgument yes
        else
            set number (math $number + 1)
        end
    end
    test $number -eq $argv[2]
end

# Of folders with ':' between, the last is completed.
function __vornixpath_folders
    set -l typed (commandline -ct | string replace -r -- '^--[^=]*=' '')
    set -l before (string match -r -- '^.*:' $typed)
    for folder in (__fish_complete_directories (string replace -r -- '^.*:' '' $typed))
        echo -- "$before$folder"
    end
end

complete -c vornixpath -f
)";

}  // namespace

std::string FishCompletion(const DescribedProgram& program) {
  std::string text = "# What fish completes for vornixpath.\n\nset -g __vornixpath_takes " +
                     NamesWithArguments(program) + "\n" + std::string(kFishFunctions);
  const std::string help(kHelpCommand);
  for (const DescribedOption& option : program.options) text += FishOption("__vornixpath_begins", option);
  text += Complete("__vornixpath_begins", Proposed(help, kHelpDescription));
  text += FishCommands(program, "__vornixpath_begins") + FishCommands(program, "__vornixpath_at " + help + " 1");
  text += Complete("__vornixpath_at " + help + " 1", " -a " + FishWord(JoinedNames(HelpTopicNames(), " ", " ")));
  for (const DescribedCommand& command : program.commands) text += FishCommand(command);
  return text;
}

}  // namespace vornixpath
