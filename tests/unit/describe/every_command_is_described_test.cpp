// Whatever the parsers know stands in the manual and in the completions of each shell.

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "command_table.hpp"
#include "descriptions.hpp"
#include "help_topics.hpp"
#include "roff.hpp"

namespace vornixpath {
namespace {

using ::testing::HasSubstr;

struct KnownOption {
  std::string command;
  std::string name;  // with its dashes
};

std::vector<KnownOption> KnownOptions() {
  std::vector<KnownOption> known;
  for (const CommandEntry& entry : AllCommands()) {
    CLI::App app;
    const CommandSyntax command = entry.add(app);
    for (const CLI::Option* const option : command.parser->get_options()) {
      for (const std::string& name : option->get_snames()) known.push_back({std::string(entry.name), "-" + name});
      for (const std::string& name : option->get_lnames()) known.push_back({std::string(entry.name), "--" + name});
    }
  }
  return known;
}

// From `begin` up to `end`, without either.
std::string Between(const std::string& text, const std::string& begin, const std::string& end) {
  const std::size_t at = text.find(begin);
  if (at == std::string::npos) return "";
  const std::size_t first = at + begin.size();
  return text.substr(first, text.find(end, first) - first);
}

bool IsOfEveryCommand(const std::string& option) { return option == "-h" || option == "--help"; }

TEST(TheManual, TellsEveryOptionOfEveryCommand) {
  const std::string page = ManPage(DescribedVornixpath());
  for (const auto& [command, option] : KnownOptions()) {
    const std::string section =
        IsOfEveryCommand(option) ? Between(page, ".SH OPTIONS\n", ".SH") : Between(page, ".SS " + command + "\n", ".S");
    EXPECT_THAT(section, HasSubstr("\\fB" + Roff(option) + "\\fR")) << command;
  }
}

TEST(TheManual, TellsEveryTopic) {
  const std::string page = ManPage(DescribedVornixpath());
  for (const char* const title : {"ENVIRONMENT", "EXIT STATUS", "FOLDERS", "NAMES", "OUTPUT"}) {
    EXPECT_THAT(page, HasSubstr(std::string(".SH ") + title + "\n"));
  }
  EXPECT_EQ(5U, HelpTopicNames().size());
}

TEST(BashCompletion, KnowsEveryOptionOfEveryCommand) {
  const std::string script = BashCompletion(DescribedVornixpath());
  for (const auto& [command, option] : KnownOptions()) {
    const std::string options = " " + Between(script, "    " + command + ") echo '", "'") + " ";
    EXPECT_THAT(options, HasSubstr(" " + option + " ")) << command;
  }
}

TEST(ZshCompletion, KnowsEveryOptionOfEveryCommand) {
  const std::string script = ZshCompletion(DescribedVornixpath());
  for (const auto& [command, option] : KnownOptions()) {
    const std::string options = Between(script, "    " + command + ")\n", ";;");
    EXPECT_THAT(options, ::testing::AnyOf(HasSubstr(")" + option + "["), HasSubstr(")" + option + "=["),
                                          HasSubstr("*" + option + "=[")))
        << command;
  }
}

TEST(FishCompletion, KnowsEveryOptionOfEveryCommand) {
  const std::string script = FishCompletion(DescribedVornixpath());
  for (const auto& [command, option] : KnownOptions()) {
    const bool isLong = option.starts_with("--");
    const std::string told = isLong ? " -l " + option.substr(2) + " " : " -s " + option.substr(1) + " ";
    const std::string condition = "-n '__vornixpath_in " + command + "'";
    std::string options;
    for (std::size_t at = script.find(condition); at != std::string::npos; at = script.find(condition, at + 1)) {
      options += script.substr(at, script.find('\n', at) - at);
    }
    EXPECT_THAT(options, HasSubstr(told)) << command;
  }
}

TEST(EveryShell, KnowsEveryCommandAndTopic) {
  const DescribedProgram program = DescribedVornixpath();
  const std::string bash = BashCompletion(program);
  const std::string inBash = " " + Between(bash, "_vornixpath_commands='", "'") + " ";
  const std::string helpInBash = " " + Between(bash, "help:1) echo 'words ", "'") + " ";
  for (const CommandEntry& command : AllCommands()) {
    const std::string name(command.name);
    EXPECT_THAT(inBash, HasSubstr(" " + name + " "));
    EXPECT_THAT(helpInBash, HasSubstr(" " + name + " "));
    EXPECT_THAT(ZshCompletion(program), HasSubstr("\n    '" + name + ":"));
    EXPECT_THAT(FishCompletion(program), HasSubstr("-n '__vornixpath_begins' -a '" + name + "' -d "));
    EXPECT_THAT(FishCompletion(program), HasSubstr("-n '__vornixpath_at help 1' -a '" + name + "' -d "));
  }
  for (const std::string_view topic : HelpTopicNames())
    EXPECT_THAT(helpInBash, HasSubstr(" " + std::string(topic) + " "));
}

}  // namespace
}  // namespace vornixpath
