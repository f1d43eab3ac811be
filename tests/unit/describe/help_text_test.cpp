#include "help_text.hpp"

#include <gmock/gmock.h>

#include <ostream>

namespace vornixpath {

static bool operator==(const HelpPart& left, const HelpPart& right) {
  return left.kind == right.kind && left.term == right.term && left.text == right.text;
}

static void PrintTo(const HelpPart& part, std::ostream* out) {
  *out << static_cast<int>(part.kind) << " [" << part.term << "] " << part.text;
}

namespace {

using ::testing::ElementsAre;
using enum HelpPart::Kind;

TEST(HelpText, GoesOnInAParagraphUntilALineIsEmpty) {
  EXPECT_THAT(PartsOfHelp("Told are\nfolders.\n\nNothing else is.\n"),
              ElementsAre(HelpPart{Paragraph, "", "Told are folders."}, HelpPart{Paragraph, "", "Nothing else is."}));
}

TEST(HelpText, TellsTheExitStatusInAParagraphOfItsOwn) {
  EXPECT_THAT(PartsOfHelp("The last 20 are kept.\nExit status: 0 listed,\n2 wrong usage."),
              ElementsAre(HelpPart{Paragraph, "", "The last 20 are kept."},
                          HelpPart{Paragraph, "", "Exit status: 0 listed, 2 wrong usage."}));
}

TEST(HelpText, KnowsItemsByTheGapAfterTheirTerm) {
  EXPECT_THAT(PartsOfHelp("0  Yes.\n3  Answered, but\n   not at ease.\nSo it is.\n"),
              ElementsAre(HelpPart{Item, "0", "Yes."}, HelpPart{Item, "3", "Answered, but not at ease."},
                          HelpPart{Paragraph, "", "So it is."}));
}

TEST(HelpText, KnowsItemsThatAreSetOff) {
  EXPECT_THAT(PartsOfHelp("Any of:\n\n  --path FOLDERS    split\n                    at ':'\n  what was saved\n"),
              ElementsAre(HelpPart{Paragraph, "", "Any of:"}, HelpPart{Item, "--path FOLDERS", "split at ':'"},
                          HelpPart{Item, "what was saved", ""}));
}

TEST(HelpText, KnowsExamples) {
  EXPECT_THAT(PartsOfHelp("It ends.\n\n  vornixpath log\n  vornixpath split '/a:/b;/c'"),
              ElementsAre(HelpPart{Paragraph, "", "It ends."}, HelpPart{Example, "", "vornixpath log"},
                          HelpPart{Example, "", "vornixpath split '/a:/b;/c'"}));
}

}  // namespace
}  // namespace vornixpath
