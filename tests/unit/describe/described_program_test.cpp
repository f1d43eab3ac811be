#include "described_program.hpp"

#include <gmock/gmock.h>

#include <algorithm>

namespace vornixpath {
namespace {

using ::testing::ElementsAre;

DescribedCommand CommandNamed(const std::string& name) {
  const DescribedProgram program = DescribedVornixpath();
  const auto found = std::find_if(program.commands.begin(), program.commands.end(),
                                  [&](const DescribedCommand& command) { return command.name == name; });
  return found == program.commands.end() ? DescribedCommand() : *found;
}

DescribedOption OptionNamed(const std::string& command, const std::string& name) {
  const std::vector<DescribedOption> options = CommandNamed(command).options;
  const auto found = std::find_if(options.begin(), options.end(),
                                  [&](const DescribedOption& option) { return option.names.back() == name; });
  return found == options.end() ? DescribedOption() : *found;
}

TEST(DescribedOption, OfAFixedSetHasAllOfIt) {
  EXPECT_THAT(OptionNamed("which", "--cache").argument.value().choices, ElementsAre("auto", "off", "require"));
  EXPECT_THAT(OptionNamed("shadows", "--fail-on").argument.value().choices,
              ElementsAre("same-file", "identical", "different", "letter-case", "kind"));
  EXPECT_THAT(OptionNamed("files", "--scope").argument.value().choices,
              ElementsAre("main", "visible", "all", "package", "class", "private", "resources"));
}

TEST(DescribedOption, TellsFilesFromFoldersAndTexts) {
  EXPECT_EQ(ArgumentKind::File, OptionNamed("which", "--session").argument.value().kind);
  EXPECT_EQ(ArgumentKind::Folder, OptionNamed("which", "--mask").argument.value().kind);
  EXPECT_EQ(ArgumentKind::FolderList, OptionNamed("which", "--path").argument.value().kind);
  EXPECT_EQ(ArgumentKind::Text, OptionNamed("which", "--ext").argument.value().kind);
}

TEST(DescribedOption, IsAFlagWithoutAnArgument) {
  const DescribedOption null = OptionNamed("which", "--null");
  EXPECT_FALSE(null.argument.has_value());
  EXPECT_THAT(null.names, ElementsAre("-0", "--null"));
}

TEST(DescribedOption, MayRepeatWhereEachCounts) {
  EXPECT_TRUE(OptionNamed("which", "--mask").repeats);
  EXPECT_FALSE(OptionNamed("which", "--path").repeats);
}

TEST(DescribedOption, HasAStandardValueWhereOneIsShown) {
  EXPECT_EQ("visible", OptionNamed("files", "--scope").standard);
  EXPECT_EQ("", OptionNamed("which", "--path").standard);
}

TEST(DescribedCommand, HasItsPositionals) {
  const auto cache = CommandNamed("cache").positionals;
  ASSERT_EQ(1U, cache.size());
  EXPECT_THAT(cache[0].choices, ElementsAre("write", "status", "verify", "clear"));
  EXPECT_EQ(2U, CommandNamed("compare").positionals.size());
  EXPECT_TRUE(CommandNamed("undo").positionals.empty());
}

TEST(DescribedCommand, HasAPositionalThatRepeats) {
  const auto add = CommandNamed("add").positionals;
  ASSERT_EQ(1U, add.size());
  EXPECT_EQ("FOLDER", add[0].label);
  EXPECT_EQ(ArgumentKind::Folder, add[0].kind);
  EXPECT_TRUE(add[0].repeats);
}

TEST(Headline, IsTheFirstClause) {
  EXPECT_EQ("Keep the folders at or below FOLDER alone",
            Headline("Keep the folders at or below FOLDER alone; else all"));
  EXPECT_EQ("Split at ':' or ';'", Headline("Split at ':' or ';'. Really"));
  EXPECT_EQ("Take .vnx and nothing else.", Headline("Take .vnx and nothing else."));
}

}  // namespace
}  // namespace vornixpath
