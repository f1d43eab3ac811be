#include "location_table.hpp"

#include <gmock/gmock.h>

#include "made_entry.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using PathManagement::FilenameMatchingPolicy;
using PathManagement::PathEntryType;
using testing::Optional;

constexpr auto anyone = [](const LocationTable::Slot& /*slot*/) { return true; };

std::optional<Ordinal> OrdinalOf(const std::optional<LocationTable::Match>& match) {
  if (!match) return std::nullopt;
  return match->ordinal;
}

std::optional<Ordinal> Found(const LocationTable& table, const std::u16string& iri) {
  return OrdinalOf(table.FindLocation(AbsoluteIRI(iri), anyone));
}

std::optional<Ordinal> FoundUnder(const LocationTable& table, FilenameMatchingPolicy policy, const AbsoluteIRI& iri) {
  return OrdinalOf(table.FindLocationUnder(policy, iri, anyone));
}

TEST(LocationTable, NumbersEntriesInWalkOrderWithParentAndMainEntry) {
  const auto cls = MadeClass(u"memory:///b/+p/@c");
  const auto package = MadeEntry(u"memory:///b/+p").OfKind(PathEntryType::Package).WithClass(cls).Create();
  const auto first = MadeEntry(u"memory:///a").Create();
  const auto second = MadeEntry(u"memory:///b").WithPackage(package).Create();

  const LocationTable table({first, second});

  ASSERT_EQ(table.GetSlots().size(), 4U);
  const std::vector<FolderEntryPtr> order = {first, second, package, cls};
  const std::vector<Ordinal> parents = {kNoOrdinal, kNoOrdinal, 1, 2};
  const std::vector<Ordinal> mains = {0, 1, 1, 1};
  for (std::size_t i = 0; i < order.size(); ++i) {
    EXPECT_EQ(table.GetSlots()[i].entry, order[i]);
    EXPECT_EQ(table.GetSlots()[i].parent, parents[i]);
    EXPECT_EQ(table.GetSlots()[i].main, mains[i]);
  }
}

TEST(LocationTable, FindsEachOfTheEntriesThatShareALocation) {
  const auto inside = MadeEntry(u"memory:///a/+p").OfKind(PathEntryType::Package).Create();
  const auto listed = MadeEntry(u"memory:///a/+p").Create();
  const auto listedAgain = MadeEntry(u"memory:///a/+p").Create();
  const auto outside = MadeEntry(u"memory:///a").WithPackage(inside).Create();

  const LocationTable table({outside, listed, listedAgain});

  EXPECT_THAT(table.Find(*outside), Optional(0U));
  EXPECT_THAT(table.Find(*inside), Optional(1U));
  EXPECT_THAT(table.Find(*listed), Optional(2U));
  EXPECT_THAT(table.Find(*listedAgain), Optional(3U));
}

TEST(LocationTable, DoesNotTakeAnEntryForAnotherAtTheSameLocation) {
  const LocationTable table({MadeEntry(u"memory:///a").Create()});

  EXPECT_EQ(table.Find(*MadeEntry(u"memory:///a").Create()), std::nullopt);
  EXPECT_EQ(table.Find(*MadeEntry(u"memory:///b").Create()), std::nullopt);
}

TEST(LocationTable, PrefersAMainEntryAtALocation) {
  const auto inside = MadeEntry(u"memory:///a/+p").OfKind(PathEntryType::Package).Create();
  const LocationTable table(
      {MadeEntry(u"memory:///a").WithPackage(inside).Create(), MadeEntry(u"memory:///a/+p").Create()});

  EXPECT_THAT(Found(table, u"memory:///a/+p"), Optional(2U));
}

TEST(LocationTable, PrefersTheSpellingOverTheCanonicalPlace) {
  const LocationTable table(
      {MadeEntry(u"memory:///link").Canonically(u"memory:///real").Create(), MadeEntry(u"memory:///real").Create()});

  EXPECT_THAT(Found(table, u"memory:///real"), Optional(1U));
  EXPECT_THAT(Found(table, u"memory:///link"), Optional(0U));
}

TEST(LocationTable, PrefersAMainEntryAtACanonicalPlace) {
  const auto inside =
      MadeEntry(u"memory:///a/+p").OfKind(PathEntryType::Package).Canonically(u"memory:///real").Create();
  const LocationTable table({MadeEntry(u"memory:///a").WithPackage(inside).Create(),
                             MadeEntry(u"memory:///link").Canonically(u"memory:///real").Create()});

  EXPECT_THAT(Found(table, u"memory:///real"), Optional(2U));
}

TEST(LocationTable, PassesOverEntriesThatAreNotAlive) {
  const LocationTable table({MadeEntry(u"memory:///a").Create(),
                             MadeEntry(u"memory:///link").Canonically(u"memory:///a").Create(),
                             MadeEntry(u"memory:///other").Canonically(u"memory:///a").Create()});
  const auto after = [](Position position) {
    return [position](const LocationTable::Slot& slot) { return slot.position > position; };
  };
  const AbsoluteIRI location(u"memory:///a");

  const auto spelled = table.FindLocation(location, anyone);
  const auto canonical = table.FindLocation(location, after(0));
  EXPECT_THAT(OrdinalOf(canonical), Optional(1U));
  EXPECT_THAT(OrdinalOf(table.FindLocation(location, after(1))), Optional(2U));
  EXPECT_EQ(table.FindLocation(location, after(2)), std::nullopt);
  EXPECT_LT(*spelled, *canonical);
}

TEST(LocationTable, KeepsThePositionsItIsGiven) {
  const auto package = MadeEntry(u"memory:///b/+p").OfKind(PathEntryType::Package).Create();
  const LocationTable table(
      {MadeEntry(u"memory:///a").Create(), MadeEntry(u"memory:///b").WithPackage(package).Create()}, {3, 7});

  std::vector<Position> positions;
  for (const auto& slot : table.GetSlots()) positions.push_back(slot.position);
  EXPECT_THAT(positions, testing::ElementsAre(3U, 7U, 7U));
  EXPECT_EQ(table.GetSlots()[2].kind, PathEntryType::Package);
}

TEST(LocationTable, IgnoresCaseOnlyWhereThePolicyLetsIt) {
  const LocationTable table({MadeEntry(u"memory:///Exact").Create(),
                             MadeEntry(u"memory:///Loose").IgnoringCase().Create(),
                             MadeEntry(u"memory:///LOOSE").IgnoringCase().Create()});
  const AbsoluteIRI exact(u"memory:///exact");
  const AbsoluteIRI loose(u"memory:///loose");

  EXPECT_EQ(FoundUnder(table, FilenameMatchingPolicy::CaseSensitive, exact), std::nullopt);
  EXPECT_EQ(FoundUnder(table, FilenameMatchingPolicy::CaseSensitive, loose), std::nullopt);
  EXPECT_EQ(FoundUnder(table, FilenameMatchingPolicy::Native, exact), std::nullopt);
  EXPECT_THAT(FoundUnder(table, FilenameMatchingPolicy::Native, loose), Optional(1U));
  EXPECT_THAT(FoundUnder(table, FilenameMatchingPolicy::CaseInsensitive, exact), Optional(0U));
  EXPECT_THAT(FoundUnder(table, FilenameMatchingPolicy::CaseInsensitive, loose), Optional(1U));
}

TEST(LocationTable, PrefersAMainEntryWhenItIgnoresCase) {
  const auto inside = MadeEntry(u"memory:///a/+P").OfKind(PathEntryType::Package).Create();
  const LocationTable table(
      {MadeEntry(u"memory:///a").WithPackage(inside).Create(), MadeEntry(u"memory:///A/+p").Create()});

  EXPECT_THAT(FoundUnder(table, FilenameMatchingPolicy::CaseInsensitive, AbsoluteIRI(u"memory:///a/+p")), Optional(2U));
}

TEST(LocationTable, PassesOverAnExactTwinWhenItIgnoresCase) {
  const LocationTable table(
      {MadeEntry(u"memory:///TWIN").Create(), MadeEntry(u"memory:///Twin").IgnoringCase().Create()});

  EXPECT_THAT(FoundUnder(table, FilenameMatchingPolicy::Native, AbsoluteIRI(u"memory:///twin")), Optional(1U));
}

TEST(LocationTable, IsEmptyForAnEmptyPath) {
  const LocationTable table({});

  EXPECT_TRUE(table.GetSlots().empty());
  EXPECT_EQ(Found(table, u"memory:///a"), std::nullopt);
  EXPECT_EQ(FoundUnder(table, FilenameMatchingPolicy::CaseInsensitive, AbsoluteIRI(u"memory:///a")), std::nullopt);
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
