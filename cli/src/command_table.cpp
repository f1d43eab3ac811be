#include "command_table.hpp"

#include <algorithm>
#include <iterator>
#include <string>

#include "help_topics.hpp"

namespace vornixpath {

namespace {

constexpr CommandEntry kCommands[] = {
    {"which", AddWhich},     {"why", AddWhy},       {"match", AddMatch},       {"files", AddFiles},
    {"shadows", AddShadows}, {"path", AddPath},     {"packages", AddPackages}, {"status", AddStatus},
    {"doctor", AddDoctor},   {"report", AddReport}, {"cache", AddCache},       {"snapshot", AddSnapshot},
    {"compare", AddCompare}, {"watch", AddWatch},   {"add", AddAdd},           {"remove", AddRemove},
    {"undo", AddUndo},       {"log", AddLog},       {"split", AddSplit},       {"iri", AddIri}};

}  // namespace

std::span<const CommandEntry> AllCommands() { return kCommands; }

const CommandEntry* FindCommand(std::string_view name) {
  const auto* const found = std::find_if(std::begin(kCommands), std::end(kCommands),
                                         [name](const CommandEntry& command) { return command.name == name; });
  return found == std::end(kCommands) ? nullptr : found;
}

void DescribeProgram(CLI::App& app) {
  app.name("vornixpath");
  app.description("Tells which file a name means on a search path, and why; keeps such a path.");
  app.set_version_flag("--version", "vornixpath " VORNIXPATH_VERSION);
  app.require_subcommand(1);
  app.get_formatter()->label("SUBCOMMAND", "COMMAND");
  app.footer("'vornixpath help COMMAND' tells more; so does 'vornixpath help TOPIC', of " + HelpTopics() +
             ".\nWhat follows '--' is never taken as an option.");
}

}  // namespace vornixpath
