#include "roff.hpp"

#include <gtest/gtest.h>

#include <string>

namespace vornixpath {
namespace {

TEST(Roff, LeavesNothingToTheFormatter) {
  EXPECT_EQ(R"(\-\-path \(aqa\(aq \(dqb\(dq \(ti/c \(rs\(rs \(ga\(ha)", Roff(R"(--path 'a' "b" ~/c \\ `^)"));
}

TEST(Roff, KeepsADotAtTheBeginningFromBeingAMacro) {
  EXPECT_EQ("\\&.vnx is one", Roff(".vnx is one"));
  EXPECT_EQ("\\(aqa", Roff("'a"));
}

TEST(RoffLines, BreaksBetweenWordsWhereALineWouldGetTooLong) {
  const std::string word(39, 'x');
  EXPECT_EQ(word + " " + word + "\n\\&.vnx\n", RoffLines(word + " " + word + " .vnx"));
}

TEST(RoffLines, KeepsAWordThatIsTooLong) {
  const std::string word(100, 'x');
  EXPECT_EQ("a\n" + word + "\nb\n", RoffLines("a " + word + " b"));
}

TEST(RoffLines, HasNoLineForNothing) { EXPECT_EQ("", RoffLines("")); }

}  // namespace
}  // namespace vornixpath
