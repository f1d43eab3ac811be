#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vornixpath {

/// What may stand for an argument, as its label says.
enum class ArgumentKind { Text, Choice, File, Folder, FolderList };

struct DescribedArgument {
  std::string label;
  ArgumentKind kind;
  std::vector<std::string> choices;  ///< of a Choice
  bool repeats = false;              ///< of a positional: any number of them
};

struct DescribedOption {
  std::vector<std::string> names;  ///< with their dashes, short ones first
  std::optional<DescribedArgument> argument;
  std::string standard;     ///< what it is when it is not given, or empty
  std::string description;  ///< without line breaks
  bool repeats = false;
};

struct DescribedCommand {
  std::string name;
  std::vector<DescribedArgument> positionals;
  std::string description;
  std::vector<DescribedOption> options;
  std::string footer;  ///< the lines of help below the options
};

struct DescribedProgram {
  std::string name;
  std::string version;  ///< with the name before it
  std::string description;
  std::vector<DescribedOption> options;
  std::vector<DescribedCommand> commands;
  std::string footer;  ///< the lines of help below all that
};

/// What the parsers of vornixpath know.
[[nodiscard]] DescribedProgram DescribedVornixpath();

/// What is said of `help`, which has no parser.
inline constexpr const char* kHelpDescription = "Tell about a command, or what concerns more than one";

/// The first clause of a description, for where there is one line.
[[nodiscard]] std::string Headline(const std::string& description);

}  // namespace vornixpath
