// A description may hold whatever people write.

#include <gmock/gmock.h>

#include "descriptions.hpp"

namespace vornixpath {
namespace {

using ::testing::HasSubstr;

DescribedProgram ProgramOf(const std::string& description, const DescribedOption& option) {
  return {"vornixpath", "vornixpath 1", "Does things.", {}, {{"sort", {}, description, {option}, ""}}, ""};
}

const DescribedOption kAwkward = {{"--by"}, DescribedArgument{"a:b", ArgumentKind::Text, {}}, "", R"(It's [x] \y)"};

TEST(CompletionQuoting, KeepsAnApostropheWithinAWordOfZsh) {
  EXPECT_THAT(ZshCompletion(ProgramOf("What's this: that", kAwkward)), HasSubstr(R"('sort:What'\''s this: that')"));
}

TEST(CompletionQuoting, KeepsBracketsAndColonsWithinALineOfZsh) {
  EXPECT_THAT(ZshCompletion(ProgramOf("", kAwkward)), HasSubstr(R"('(--by)--by=[It'\''s \[x\] \\y]:a\:b: ')"));
}

TEST(CompletionQuoting, KeepsApostrophesAndBackslashesWithinAWordOfFish) {
  EXPECT_THAT(FishCompletion(ProgramOf("What's this", kAwkward)), HasSubstr(R"( -d 'What\'s this')"));
  EXPECT_THAT(FishCompletion(ProgramOf("", kAwkward)), HasSubstr(R"( -l by -x -d 'It\'s [x] \\y')"));
}

}  // namespace
}  // namespace vornixpath
