#include "side_by_side.hpp"

#include <gmock/gmock.h>

#include <unit/environment/memory_storage.hpp>

#include "read_after.hpp"

namespace vornixpath {
namespace {

using Quorvex::PathEnvironment::MemoryStorage;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Lines = std::vector<std::string>;

// "+/a": the mark, and the text without what all of them begin with.
std::string Short(const std::optional<ComparedCell>& cell) {
  if (!cell) return "";
  const std::string beginning = "memory://";
  const std::string text = cell->text.starts_with(beginning) ? cell->text.substr(beginning.size()) : cell->text;
  return (cell->change ? MarkOf(*cell->change) : ' ') + text;
}

class SideBySide : public testing::Test {
 protected:
  SideBySide() { storage_.WithFolders({u"/a", u"/b", u"/c", u"/d", u"/e", u"/f"}); }

  // Each row as "left|right". `newFiles` come in between.
  Lines Rows(const std::vector<std::u16string>& before, const std::vector<std::u16string>& after,
             const std::vector<std::u16string>& newFiles = {}) {
    const auto oldPath = storage_.Path(before);
    storage_.WithFiles(newFiles);
    const auto newPath = ReadAfter(*oldPath, after);
    Lines lines;
    for (const ComparedRow& row : RowsOf(Compare(oldPath, newPath, {}))) {
      lines.push_back(Short(row.before) + "|" + Short(row.after));
    }
    return lines;
  }

  MemoryStorage storage_;
};

TEST_F(SideBySide, PutsWhatStaysIntoOneRowAndTheRestWhereItStands) {
  EXPECT_THAT(Rows({u"/a", u"/b", u"/c"}, {u"/d", u"/a", u"/c"}), ElementsAre("|+/d", " /a| /a", "-/b|", " /c| /c"));
  EXPECT_THAT(Rows({u"/a"}, {}), ElementsAre("-/a|"));
  EXPECT_THAT(Rows({}, {u"/a"}), ElementsAre("|+/a"));
  EXPECT_THAT(Rows({}, {}), IsEmpty());
}

TEST_F(SideBySide, ShowsAMovedFolderAtBothOfItsPlaces) {
  EXPECT_THAT(Rows({u"/a", u"/b", u"/c"}, {u"/c", u"/a", u"/b"}), ElementsAre("|~/c", " /a| /a", " /b| /b", "~/c|"));
}

TEST_F(SideBySide, PutsARefreshedFolderIntoOneRowUnlessItMovedAcrossAnother) {
  EXPECT_THAT(Rows({u"/a", u"/b"}, {u"/a", u"/d", u"/b"}, {u"/b/new.vnx"}), ElementsAre(" /a| /a", "|+/d", "*/b|*/b"));
  EXPECT_THAT(Rows({u"/a", u"/c"}, {u"/c", u"/a"}, {u"/c/new.vnx"}), ElementsAre("|*/c", " /a| /a", "*/c|"));
  EXPECT_THAT(Rows({u"/e", u"/f"}, {u"/f", u"/e"}, {u"/e/new.vnx", u"/f/new.vnx"}),
              ElementsAre("|*/f", "*/e|*/e", "*/f|"));
}

TEST_F(SideBySide, CountsALongRunOfUnchangedFolders) {
  EXPECT_THAT(Rows({u"/a", u"/b", u"/c", u"/d"}, {u"/a", u"/b", u"/c", u"/d", u"/e"}),
              ElementsAre(" (4 unchanged)| (4 unchanged)", "|+/e"));
  EXPECT_THAT(Rows({u"/a", u"/b", u"/c"}, {u"/a", u"/b", u"/c", u"/e"}), SizeIs(4));
}

const ComparedCell kPlain{std::nullopt, "/tools"};
const ComparedCell kAdded{ChangeKind::Added, "/added"};
const ComparedCell kRemoved{ChangeKind::Removed, "/removed"};

TEST(LayOut, FitsTwoColumnsIntoTheWidth) {
  EXPECT_EQ(LayOut({{kPlain, kPlain}, {kRemoved, std::nullopt}, {std::nullopt, kAdded}}, {27, false}),
            (Lines{"  /tools     |   /tools",  //
                   "- /removed   |",           //
                   "             | + /added"}));
}

TEST(LayOut, CutsTheBeginningOfWhatIsTooLong) {
  const ComparedCell tooLong{ChangeKind::Added, "/very/long/name/of/folder"};
  EXPECT_EQ(LayOut({{std::nullopt, tooLong}}, {33, false}), (Lines{"                | + .../of/folder"}));
}

TEST(LayOut, CountsCharactersAndNotBytes) {
  const ComparedCell umlauts{std::nullopt, "/äöüäöü"};
  const ComparedCell tooLong{std::nullopt, "/äöüäöüäöüäöü"};
  EXPECT_EQ(LayOut({{umlauts, kPlain}, {tooLong, kPlain}}, {27, false}),
            (Lines{"  /äöüäöü    |   /tools",  //
                   "  ...üäöüäöü |   /tools"}));
}

TEST(LayOut, PaintsWhatChangedAndNothingElse) {
  EXPECT_EQ(LayOut({{kPlain, kPlain}, {kRemoved, std::nullopt}, {std::nullopt, kAdded}}, {27, true}),
            (Lines{"  /tools     |   /tools",        //
                   "\x1b[31m- /removed\x1b[0m   |",  //
                   "             | \x1b[32m+ /added\x1b[0m"}));
}

TEST(LayOut, NeverGoesBelowTwentyColumns) {
  EXPECT_EQ(LayOut({{kRemoved, kPlain}}, {1, false}), LayOut({{kRemoved, kPlain}}, {20, false}));
}

}  // namespace
}  // namespace vornixpath
