// All commands, for whoever parses or describes them.
#pragma once

#include <span>
#include <string_view>

#include "command_syntax.hpp"

namespace vornixpath {

struct CommandEntry {
  std::string_view name;
  CommandSyntax (*add)(CLI::App&);
};

/// In the order of the help.
[[nodiscard]] std::span<const CommandEntry> AllCommands();

/// Null when there is none of that name.
[[nodiscard]] const CommandEntry* FindCommand(std::string_view name);

/// Takes the place of a command, but has no parser: it is another spelling of --help, and tells about topics.
inline constexpr std::string_view kHelpCommand = "help";

/// What is typed and told without any command.
void DescribeProgram(CLI::App& app);

}  // namespace vornixpath
