#include <algorithm>
#include <cctype>
#include <iterator>

#include "command_table.hpp"
#include "descriptions.hpp"
#include "help_text.hpp"
#include "help_topics.hpp"
#include "roff.hpp"

namespace vornixpath {

namespace {

const std::string kParagraph = ".PP\n";

std::string Bold(const std::string& text) { return "\\fB" + Roff(text) + "\\fR"; }
std::string Italic(const std::string& text) { return "\\fI" + Roff(text) + "\\fR"; }

// Of words to choose from, those are typed as they stand.
std::string Shown(const DescribedArgument& argument) {
  const std::string label = argument.kind == ArgumentKind::Choice ? Bold(argument.label) : Italic(argument.label);
  return argument.repeats ? label + " ..." : label;
}

std::string Example(const std::string& text) { return ".EX\n" + Roff(text) + "\n.EE\n"; }

std::string Shown(const HelpPart& part) {
  switch (part.kind) {
    case HelpPart::Kind::Item:
      return ".TP\n" + Bold(part.term) + "\n" + RoffLines(part.text);
    case HelpPart::Kind::Example:
      return Example(part.text);
    case HelpPart::Kind::Paragraph:
      break;
  }
  return kParagraph + RoffLines(part.text);
}

std::string Section(const std::string& title, const std::string& content) {
  // A heading begins the first paragraph already.
  return ".SH " + title + "\n" + (content.starts_with(kParagraph) ? content.substr(kParagraph.size()) : content);
}

std::string RoffOptions(const std::vector<DescribedOption>& options) {
  std::string text;
  for (const DescribedOption& option : options) {
    std::string names;
    for (const std::string& name : option.names) names += (names.empty() ? "" : ", ") + Bold(name);
    text += ".TP\n" + names + (option.argument ? " " + Shown(*option.argument) : "") + "\n";
    text += RoffLines(option.description + (option.description.ends_with('.') ? "" : "."));
    if (!option.standard.empty()) text += "The default is " + Bold(option.standard) + ".\n";
  }
  return text;
}

// Those that every command has are told once.
std::vector<DescribedOption> OwnOptions(const DescribedCommand& command, const DescribedProgram& program) {
  std::vector<DescribedOption> own;
  std::copy_if(command.options.begin(), command.options.end(), std::back_inserter(own), [&](const auto& option) {
    return std::none_of(program.options.begin(), program.options.end(),
                        [&](const auto& common) { return common.names == option.names; });
  });
  return own;
}

std::string RoffCommand(const DescribedCommand& command, const DescribedProgram& program) {
  std::string text = ".SS " + Roff(command.name) + "\n" + Bold(program.name + " " + command.name);
  for (const DescribedArgument& argument : command.positionals) text += " " + Shown(argument);
  const std::vector<DescribedOption> options = OwnOptions(command, program);
  text += (options.empty() ? "" : " [" + Italic("OPTIONS") + "]") + "\n" + kParagraph +
          RoffLines(command.description + ".");
  text += RoffOptions(options);
  for (const HelpPart& part : PartsOfHelp(command.footer)) {
    if (part.kind != HelpPart::Kind::Example) text += Shown(part);
  }
  return text;
}

std::string RoffCommands(const DescribedProgram& program) {
  std::string text;
  for (const DescribedCommand& command : program.commands) text += RoffCommand(command, program);
  return text;
}

std::string Prose(std::string_view help) {
  std::string text;
  for (const HelpPart& part : PartsOfHelp(help)) text += Shown(part);
  return text;
}

std::string Topic(std::string_view name) {
  std::string title(name);
  for (char& letter : title) letter = letter == '-' ? ' ' : static_cast<char>(std::toupper(letter));
  return Section(title, Prose(HelpAbout(name).value_or("")));
}

// Readers look for the last two after all others.
std::string RoffTopics() {
  const std::vector<std::string_view> last = {"exit-status", "environment"};
  std::string text;
  for (const std::string_view name : HelpTopicNames()) {
    if (std::find(last.begin(), last.end(), name) == last.end()) text += Topic(name);
  }
  for (const std::string_view name : last) text += Topic(name);
  return text;
}

std::string Examples(const DescribedProgram& program) {
  std::string text;
  for (const DescribedCommand& command : program.commands) {
    text += kParagraph + RoffLines(command.description + ":") + ".RS 4\n";
    for (const HelpPart& part : PartsOfHelp(command.footer)) {
      if (part.kind == HelpPart::Kind::Example) text += Example(part.text);
    }
    text += ".RE\n";
  }
  return text;
}

std::string Synopsis(const std::string& name) {
  return Bold(name) + " " + Italic("COMMAND") + " [" + Italic("ARGUMENTS") + "] [" + Italic("OPTIONS") + "]\n.br\n" +
         Bold(name + " " + std::string(kHelpCommand)) + " [" + Italic("COMMAND") + "|" + Italic("TOPIC") + "]\n";
}

constexpr const char* kDescription =
    R"(A search path is an ordered list of folders. NAMES tells what a name means on one, FOLDERS which path is asked, and
OUTPUT what answers look like.)";

// Where they stand is told by the variables.
constexpr const char* kFiles = R"(vornixpath/path           the default session's path, a text for people, too
vornixpath/path.versions  a folder: what the path was before each edit that can be taken back
vornixpath/path.lock      empty; who edits the path holds it
vornixpath/toolbox.cache  the cache, as 'vornixpath cache' keeps it

They stand where ENVIRONMENT tells; a --session FILE has its versions and its lock beside it.)";

}  // namespace

std::string ManPage(const DescribedProgram& program) {
  // Without a date: the same sources make the same page.
  return ".TH VORNIXPATH 1 \"\" \"" + Roff(program.version) + "\" \"User Commands\"\n" +
         Section("NAME", Roff(program.name) + " \\- " + RoffLines(program.description)) +
         Section("SYNOPSIS", Synopsis(program.name)) +
         Section("DESCRIPTION", Prose(std::string(kDescription) + "\n\n" + program.footer)) +
         Section("OPTIONS", RoffOptions(program.options)) + Section("COMMANDS", RoffCommands(program)) + RoffTopics() +
         Section("FILES", Prose(kFiles)) + Section("EXAMPLES", Examples(program));
}

}  // namespace vornixpath
