#include "described_program.hpp"

#include <algorithm>
#include <sstream>
#include <string_view>

#include "command_table.hpp"

namespace vornixpath {

namespace {

std::vector<std::string> SplitAt(char separator, const std::string& text) {
  std::vector<std::string> parts;
  std::istringstream rest(text);
  for (std::string part; std::getline(rest, part, separator);) parts.push_back(part);
  return parts;
}

std::string OnOneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

ArgumentKind KindOf(std::string_view label) {
  if (label.find('|') != std::string_view::npos) return ArgumentKind::Choice;
  if (label == "FOLDER") return ArgumentKind::Folder;
  if (label == "FOLDERS") return ArgumentKind::FolderList;
  // The sides of a comparison are mostly files, too.
  if (label == "FILE" || label == "OLD" || label == "NEW") return ArgumentKind::File;
  return ArgumentKind::Text;
}

DescribedArgument Argument(std::string label) {
  constexpr std::string_view dots = "...";
  const bool repeats = label.ends_with(dots);
  if (repeats) label.resize(label.size() - dots.size());
  const ArgumentKind kind = KindOf(label);
  return {label, kind, kind == ArgumentKind::Choice ? SplitAt('|', label) : std::vector<std::string>(), repeats};
}

DescribedOption Described(const CLI::Option& option) {
  DescribedOption described;
  for (const std::string& name : option.get_snames()) described.names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) described.names.push_back("--" + name);
  if (option.get_items_expected_max() > 0) described.argument = Argument(option.get_type_name());
  described.standard = option.get_default_str();
  described.description = OnOneLine(option.get_description());
  described.repeats = option.get_trigger_on_parse();
  return described;
}

std::vector<DescribedOption> OptionsOf(const CLI::App& parser) {
  std::vector<DescribedOption> options;
  for (const CLI::Option* const option : parser.get_options()) options.push_back(Described(*option));
  return options;
}

DescribedCommand Described(const CLI::App& parser) {
  DescribedCommand command{parser.get_name(), {}, parser.get_description(), OptionsOf(parser), parser.get_footer()};
  for (const std::string& label : SplitAt(' ', PositionalsOf(parser))) command.positionals.push_back(Argument(label));
  return command;
}

}  // namespace

DescribedProgram DescribedVornixpath() {
  CLI::App app;
  DescribeProgram(app);
  DescribedProgram program{app.get_name(), app.version(), app.get_description(), OptionsOf(app), {}, app.get_footer()};
  for (const CommandEntry& command : AllCommands()) program.commands.push_back(Described(*command.add(app).parser));
  return program;
}

std::string Headline(const std::string& description) {
  for (std::size_t i = 0; i + 1 < description.size(); ++i) {
    const bool endsClause = description[i] == '.' || description[i] == ':' || description[i] == ';';
    if (endsClause && description[i + 1] == ' ') return description.substr(0, i);
  }
  return description;
}

}  // namespace vornixpath
