#include <string>
#include <string_view>

#include "command_table.hpp"
#include "descriptions.hpp"
#include "help_topics.hpp"
#include "joined_names.hpp"
#include "shell_word.hpp"

namespace vornixpath {

namespace {

// What the shell's functions below know an argument by.
std::string TakenBy(const DescribedArgument& argument) {
  switch (argument.kind) {
    case ArgumentKind::Choice:
      return ShellWord("words " + JoinedNames(argument.choices, " ", " "));
    case ArgumentKind::File:
      return "file";
    case ArgumentKind::Folder:
      return "folder";
    case ArgumentKind::FolderList:
      return "folders";
    case ArgumentKind::Text:
      break;
  }
  return "text";
}

std::string NamesOf(const std::vector<DescribedOption>& options) {
  std::string names;
  for (const DescribedOption& option : options) {
    names += (names.empty() ? "" : " ") + JoinedNames(option.names, " ", " ");
  }
  return names;
}

std::string BashCommands(const DescribedProgram& program) {
  std::string names(kHelpCommand);
  for (const DescribedCommand& command : program.commands) names += " " + command.name;
  return names;
}

// A line of `case`: the positionals by their numbers, the last for all that follow when it repeats.
std::string BashPositionals(const DescribedCommand& command) {
  std::string lines;
  for (std::size_t i = 0; i < command.positionals.size(); ++i) {
    const DescribedArgument& argument = command.positionals[i];
    const std::string number = argument.repeats ? "*" : std::to_string(i + 1);
    lines += "    " + command.name + ":" + number + ") echo " + TakenBy(argument) + " ;;\n";
  }
  return lines;
}

std::string BashArguments(const DescribedCommand& command) {
  std::string lines;
  for (const DescribedOption& option : command.options) {
    if (!option.argument) continue;
    for (const std::string& name : option.names) {
      lines += "    " + command.name + ":" + name + ") echo " + TakenBy(*option.argument) + " ;;\n";
    }
  }
  return lines;
}

std::string BashSyntax(const DescribedProgram& program) {
  std::string options;
  std::string arguments;
  std::string positionals;
  for (const DescribedCommand& command : program.commands) {
    options += "    " + command.name + ") echo " + ShellWord(NamesOf(command.options)) + " ;;\n";
    arguments += BashArguments(command);
    positionals += BashPositionals(command);
  }
  const std::string topics = JoinedNames(HelpTopicNames(), " ", " ");
  positionals += "    " + std::string(kHelpCommand) + ":1) echo " +
                 ShellWord("words " + BashCommands(program).substr(kHelpCommand.size() + 1) + " " + topics) + " ;;\n";
  return "# The options of command $1.\n"
         "_vornixpath_options() {\n  case $1 in\n" +
         options +
         "  esac\n}\n\n"
         "# What option $2 of command $1 takes; nothing when it is none, or a flag.\n"
         "_vornixpath_argument() {\n  case $1:$2 in\n" +
         arguments +
         "  esac\n}\n\n"
         "# What stands as number $2 of what is no option of command $1.\n"
         "_vornixpath_positional() {\n  case $1:$2 in\n" +
         positionals + "  esac\n}\n\n";
}

constexpr std::string_view kBegin = R"(# What bash completes for vornixpath.

)";

constexpr std::string_view kBashFunctions = R"(# Proposes what may stand for $2, of which $1 is said to be taken.
_vornixpath_propose() {
  case $1 in
    'words '*) mapfile -t COMPREPLY < <(compgen -W "${1#words }" -- "$2") ;;
    file)
      compopt -o filenames -o default
      mapfile -t COMPREPLY < <(compgen -f -- "$2")
      ;;
    folder | folders)
      compopt -o filenames -o dirnames
      mapfile -t COMPREPLY < <(compgen -d -- "$2")
      ;;
  esac
}

# Sets `words` to what was typed after the program, up to the cursor. To bash '=' and ':' are words of their own; here
# they belong to the word around them.
_vornixpath_words() {
  local part glue=''
  words=()
  for part in "${COMP_WORDS[@]:1:COMP_CWORD}"; do
    if [[ ${#words[@]} -gt 0 && ($part == +([=:]) || $glue) ]]; then
      words[-1]+=$part
    else
      words+=("$part")
    fi
    glue=''
    if [[ $part == +([=:]) ]]; then
      glue=yes
    fi
  done
}

# Sets `taken` and `options` to what may stand for the last of `words`, and `word` to what is there of it.
_vornixpath_expected() {
  local part command=${words[0]} number=1 verbatim=''
  if [[ ${#words[@]} -eq 1 ]]; then
    taken="words $_vornixpath_commands" options=$_vornixpath_program_options
    return
  fi
  for part in "${words[@]:1:${#words[@]}-2}"; do
    if [[ $taken ]]; then
      taken=''
    elif [[ $part == -- ]]; then
      verbatim=yes
    elif [[ ! $verbatim && $part == -?* ]]; then
      taken=$(_vornixpath_argument "$command" "$part")
    else
      ((++number))
    fi
  done
  if [[ $taken ]]; then
    return
  elif [[ ! $verbatim && $word == --*=* ]]; then
    taken=$(_vornixpath_argument "$command" "${word%%=*}")
    word=${word#*=}
    return
  fi
  taken=$(_vornixpath_positional "$command" "$number")
  if [[ ! $verbatim ]]; then
    options=$(_vornixpath_options "$command")
  fi
}

_vornixpath() {
  local words taken='' options='' current=${COMP_WORDS[COMP_CWORD]} i
  _vornixpath_words
  local word=${words[-1]}
  _vornixpath_expected
  if [[ $options && $word == -* ]]; then
    taken="words $options"
  elif [[ $taken == folders ]]; then
    word=${word##*:}
  fi
  COMPREPLY=()
  _vornixpath_propose "$taken" "$word"

  # What bash replaces may begin earlier or later than what was completed.
  if [[ $current == +([=:]) ]]; then
    current=''
  fi
  for i in "${!COMPREPLY[@]}"; do
    if [[ $current == *"$word" ]]; then
      COMPREPLY[i]=${current%"$word"}${COMPREPLY[i]}
    else
      COMPREPLY[i]=${COMPREPLY[i]#"${word%"$current"}"}
    fi
  done
}

complete -F _vornixpath vornixpath
)";

}  // namespace

std::string BashCompletion(const DescribedProgram& program) {
  return std::string(kBegin) + "_vornixpath_commands=" + ShellWord(BashCommands(program)) +
         "\n_vornixpath_program_options=" + ShellWord(NamesOf(program.options)) + "\n\n" + BashSyntax(program) +
         std::string(kBashFunctions);
}

}  // namespace vornixpath
