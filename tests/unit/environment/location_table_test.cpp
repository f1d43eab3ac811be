#include "location_table.hpp"

#include <gmock/gmock.h>

#include "made_entry.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using PathManagement::FilenameMatchingPolicy;
using PathManagement::PathEntryType;
using testing::Optional;

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

  EXPECT_THAT(table.FindLocation(AbsoluteIRI(u"memory:///a/+p")), Optional(2U));
}

TEST(LocationTable, PrefersTheSpellingOverTheCanonicalPlace) {
  const LocationTable table(
      {MadeEntry(u"memory:///link").Canonically(u"memory:///real").Create(), MadeEntry(u"memory:///real").Create()});

  EXPECT_THAT(table.FindLocation(AbsoluteIRI(u"memory:///real")), Optional(1U));
  EXPECT_THAT(table.FindLocation(AbsoluteIRI(u"memory:///link")), Optional(0U));
}

TEST(LocationTable, PrefersAMainEntryAtACanonicalPlace) {
  const auto inside =
      MadeEntry(u"memory:///a/+p").OfKind(PathEntryType::Package).Canonically(u"memory:///real").Create();
  const LocationTable table({MadeEntry(u"memory:///a").WithPackage(inside).Create(),
                             MadeEntry(u"memory:///link").Canonically(u"memory:///real").Create()});

  EXPECT_THAT(table.FindLocation(AbsoluteIRI(u"memory:///real")), Optional(2U));
}

TEST(LocationTable, IgnoresCaseOnlyWhereThePolicyLetsIt) {
  const LocationTable table({MadeEntry(u"memory:///Exact").Create(),
                             MadeEntry(u"memory:///Loose").IgnoringCase().Create(),
                             MadeEntry(u"memory:///LOOSE").IgnoringCase().Create()});
  const AbsoluteIRI exact(u"memory:///exact");
  const AbsoluteIRI loose(u"memory:///loose");

  EXPECT_EQ(table.FindLocationUnder(FilenameMatchingPolicy::CaseSensitive, exact), std::nullopt);
  EXPECT_EQ(table.FindLocationUnder(FilenameMatchingPolicy::CaseSensitive, loose), std::nullopt);
  EXPECT_EQ(table.FindLocationUnder(FilenameMatchingPolicy::Native, exact), std::nullopt);
  EXPECT_THAT(table.FindLocationUnder(FilenameMatchingPolicy::Native, loose), Optional(1U));
  EXPECT_THAT(table.FindLocationUnder(FilenameMatchingPolicy::CaseInsensitive, exact), Optional(0U));
  EXPECT_THAT(table.FindLocationUnder(FilenameMatchingPolicy::CaseInsensitive, loose), Optional(1U));
}

TEST(LocationTable, PrefersAMainEntryWhenItIgnoresCase) {
  const auto inside = MadeEntry(u"memory:///a/+P").OfKind(PathEntryType::Package).Create();
  const LocationTable table(
      {MadeEntry(u"memory:///a").WithPackage(inside).Create(), MadeEntry(u"memory:///A/+p").Create()});

  EXPECT_THAT(table.FindLocationUnder(FilenameMatchingPolicy::CaseInsensitive, AbsoluteIRI(u"memory:///a/+p")),
              Optional(2U));
}

TEST(LocationTable, PassesOverAnExactTwinWhenItIgnoresCase) {
  const LocationTable table(
      {MadeEntry(u"memory:///TWIN").Create(), MadeEntry(u"memory:///Twin").IgnoringCase().Create()});

  EXPECT_THAT(table.FindLocationUnder(FilenameMatchingPolicy::Native, AbsoluteIRI(u"memory:///twin")), Optional(1U));
}

TEST(LocationTable, IsEmptyForAnEmptyPath) {
  const LocationTable table({});

  EXPECT_TRUE(table.GetSlots().empty());
  EXPECT_EQ(table.FindLocation(AbsoluteIRI(u"memory:///a")), std::nullopt);
  EXPECT_EQ(table.FindLocationUnder(FilenameMatchingPolicy::CaseInsensitive, AbsoluteIRI(u"memory:///a")),
            std::nullopt);
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
