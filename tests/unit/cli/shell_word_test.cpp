#include "shell_word.hpp"

#include <gtest/gtest.h>

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <search_path_utilities/path_editing.hpp>

namespace vornixpath {
namespace {

std::string WordFor(const std::u16string& path) { return ShellWord(Quorvex::PathManagement::GetIRIFromString(path)); }

TEST(ShellWord, StandsInQuotationMarks) {
  EXPECT_EQ(ShellWord(""), "''");
  EXPECT_EQ(ShellWord("a b;$(c)\"*"), "'a b;$(c)\"*'");
}

TEST(ShellWord, MayHoldAQuotationMark) { EXPECT_EQ(ShellWord("it's"), R"('it'\''s')"); }

TEST(ShellWord, OfALocationIsItsPath) { EXPECT_EQ(WordFor(u"/a b/\u00E4'"), "'/a b/\u00E4'\\'''"); }

TEST(ShellWord, OfALocationThatATerminalWouldActOnIsItsIdentifier) {
  EXPECT_EQ(WordFor(u"/a\u001Bb"), "'file:///a%1Bb'");
  EXPECT_EQ(WordFor(u"/back\\slash"), "'file:///back\\slash'");
}

}  // namespace
}  // namespace vornixpath
