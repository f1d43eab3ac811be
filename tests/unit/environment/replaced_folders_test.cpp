#include "replaced_folders.hpp"

#include <gmock/gmock.h>

#include <stdexcept>

#include "made_entry.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::size_t kNoLimit = 1'000'000;

// An entry that can be told by the name of its only file.
FolderEntryPtr Marked(const std::u16string& mark) { return MadeEntry(u"memory:///a").WithFiles({mark}).Create(); }

ReplacedFolders WithAll(const ReplacedFolders& replaced, const ReplacedFolders::Entries& entries) {
  auto result = replaced.With(entries, kNoLimit);
  if (!result) throw std::logic_error("a limit was passed where there is none");
  return *std::move(result);
}
ReplacedFolders WithOne(const ReplacedFolders& replaced, Position position, const FolderEntryPtr& entry) {
  return WithAll(replaced, {{position, entry}});
}

// The entries that count at a position, of all levels.
std::vector<FolderEntryPtr> AliveAt(const ReplacedFolders& replaced, Position position) {
  std::vector<FolderEntryPtr> alive;
  replaced.ForEachLevel([&](const PathLayer& layer, const auto& isAlive) {
    for (const auto& slot : layer.GetSlots()) {
      if (slot.position == position && isAlive(slot)) alive.push_back(slot.entry);
    }
  });
  return alive;
}

TEST(ReplacedFolders, HoldWhatWasReplacedAndNothingElse) {
  const ReplacedFolders replaced = WithOne({}, 3, Marked(u"new"));

  EXPECT_TRUE(replaced.Hold(3));
  EXPECT_FALSE(replaced.Hold(2));
  EXPECT_FALSE(ReplacedFolders().Hold(3));
}

TEST(ReplacedFolders, CountInTheNewestLevelThatHoldsThem) {
  const auto second = Marked(u"second");
  ReplacedFolders replaced =
      WithAll({}, {{0, Marked(u"a")}, {1, Marked(u"first")}, {2, Marked(u"c")}, {3, Marked(u"d")}});

  replaced = WithOne(replaced, 1, second);

  ASSERT_EQ(replaced.CountLevels(), 2U);
  EXPECT_THAT(AliveAt(replaced, 1), ElementsAre(second));
  EXPECT_EQ(AliveAt(replaced, 0).size(), 1U);
}

TEST(ReplacedFolders, CountInTheNewestLevelAfterLevelsWereJoined) {
  const auto second = Marked(u"second");
  ReplacedFolders replaced = WithOne({}, 1, Marked(u"first"));

  replaced = WithOne(replaced, 1, second);

  EXPECT_EQ(replaced.CountLevels(), 1U);
  EXPECT_THAT(AliveAt(replaced, 1), ElementsAre(second));
}

TEST(ReplacedFolders, LeaveFormerOnesAlone) {
  const auto first = Marked(u"first");
  const ReplacedFolders former = WithOne({}, 1, first);

  const ReplacedFolders later = WithOne(WithOne(former, 1, Marked(u"second")), 2, Marked(u"other"));

  EXPECT_THAT(AliveAt(former, 1), ElementsAre(first));
  EXPECT_THAT(AliveAt(former, 2), IsEmpty());
  EXPECT_TRUE(later.Hold(2));
}

TEST(ReplacedFolders, StandInFewLevels) {
  ReplacedFolders replaced;
  std::size_t most = 0;
  for (Position position = 0; position < 1024; ++position) {
    replaced = WithOne(replaced, position, Marked(u"f"));
    most = std::max(most, replaced.CountLevels());
  }

  EXPECT_LE(most, 11U);
  EXPECT_GE(most, 4U);
  for (Position position = 0; position < 1024; ++position)
    ASSERT_EQ(AliveAt(replaced, position).size(), 1U) << position;
}

TEST(ReplacedFolders, AreNoLongerKeptApartWhenTheyPassTheLimit) {
  const ReplacedFolders replaced = WithOne(WithOne({}, 0, Marked(u"a")), 1, Marked(u"b"));

  EXPECT_TRUE(replaced.With({{2, Marked(u"c")}}, 3).has_value());
  EXPECT_FALSE(replaced.With({{2, Marked(u"c")}}, 2).has_value());
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
