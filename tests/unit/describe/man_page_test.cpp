#include <gmock/gmock.h>

#include "descriptions.hpp"

namespace vornixpath {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

const DescribedArgument kFolder = {"FOLDER", ArgumentKind::Folder, {}};

DescribedProgram SortingProgram() {
  const DescribedOption help = {{"-h", "--help"}, std::nullopt, "", "Print this"};
  const DescribedOption order = {
      {"--order"}, DescribedArgument{"up|down", ArgumentKind::Choice, {"up", "down"}}, "up", "Which comes first"};
  const DescribedCommand sort = {
      "sort", {kFolder}, "Sort FOLDER", {help, order}, "Nothing is lost.\n\n  vornixpath sort ~/a"};
  return {"vornixpath", "vornixpath 7.1", "Does things.", {help}, {sort}, ""};
}

TEST(ManPage, HasTheVersionAndNoDate) {
  EXPECT_THAT(ManPage(SortingProgram()), StartsWith(".TH VORNIXPATH 1 \"\" \"vornixpath 7.1\" \"User Commands\"\n"));
}

TEST(ManPage, TellsACommandWithItsOptions) {
  EXPECT_THAT(ManPage(SortingProgram()), HasSubstr(".SS sort\n"
                                                   "\\fBvornixpath sort\\fR \\fIFOLDER\\fR [\\fIOPTIONS\\fR]\n"
                                                   ".PP\nSort FOLDER.\n"
                                                   ".TP\n\\fB\\-\\-order\\fR \\fBup|down\\fR\n"
                                                   "Which comes first.\nThe default is \\fBup\\fR.\n"
                                                   ".PP\nNothing is lost.\n"));
}

TEST(ManPage, GathersExamples) {
  EXPECT_THAT(ManPage(SortingProgram()),
              HasSubstr(".SH EXAMPLES\nSort FOLDER:\n.RS 4\n.EX\nvornixpath sort \\(ti/a\n.EE\n.RE\n"));
}

TEST(ManPage, ShowsNoOptionsWhereACommandHasNoneOfItsOwn) {
  DescribedProgram program = SortingProgram();
  program.commands[0].options.pop_back();
  EXPECT_THAT(ManPage(program), HasSubstr("\\fBvornixpath sort\\fR \\fIFOLDER\\fR\n.PP\n"));
  EXPECT_THAT(ManPage(program), Not(HasSubstr("\\-\\-order")));
}

}  // namespace
}  // namespace vornixpath
