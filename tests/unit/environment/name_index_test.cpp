#include "name_index.hpp"

#include <gmock/gmock.h>

#include <string>
#include <string_view>
#include <vector>

#include "made_entry.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<NameIndex::Posting> PostingsOf(const NameIndex& index, std::u16string_view name) {
  const NameIndex::Posting* const first = index.FindFirst(name);
  if (first == nullptr) return {};
  std::vector<NameIndex::Posting> postings = {*first};
  const auto others = index.OthersLike(*first);
  postings.insert(postings.end(), others.begin(), others.end());
  return postings;
}

std::vector<Ordinal> HoldersOf(const NameIndex& index, std::u16string_view name) {
  std::vector<Ordinal> holders;
  for (const auto& posting : PostingsOf(index, name)) holders.push_back(posting.entry);
  return holders;
}

TEST(NameIndex, GivesTheHoldersOfABaseNameInPathOrder) {
  const LocationTable table({MadeEntry(u"memory:///a").WithFiles({u"f.x", u"g"}).Create(),
                             MadeEntry(u"memory:///b").WithFiles({u"g.x"}).Create(),
                             MadeEntry(u"memory:///c").WithFiles({u"f"}).Create()});
  const NameIndex index(table.GetSlots(), NameIndex::Keys::Exact);

  EXPECT_THAT(HoldersOf(index, u"f"), ElementsAre(0U, 2U));
  EXPECT_THAT(HoldersOf(index, u"g"), ElementsAre(0U, 1U));
  EXPECT_THAT(HoldersOf(index, u"F"), IsEmpty());
  EXPECT_THAT(HoldersOf(index, u"f.x"), IsEmpty()) << "it is kept under the base name";
}

TEST(NameIndex, GivesEveryFileOfABaseNameWithItsPlaceInTheFolder) {
  const LocationTable table({MadeEntry(u"memory:///a").WithFiles({u"f.x", u"e", u"f"}).Create(),
                             MadeEntry(u"memory:///b").WithFiles({u"f.z"}).Create()});
  const NameIndex index(table.GetSlots(), NameIndex::Keys::Exact);

  std::vector<std::u16string> files;
  for (const auto& posting : PostingsOf(index, u"f")) {
    files.push_back(table.GetSlots()[posting.entry].names.FullName(posting.item).ToString());
  }
  EXPECT_THAT(files, ElementsAre(u"f", u"f.x", u"f.z"));
}

TEST(NameIndex, JoinsLetterCasesWhenItsKeysAreFolded) {
  const auto inside = MadeClass(u"memory:///a/@Stra\u00DFe", {u"FOO.x"});
  const LocationTable table({MadeEntry(u"memory:///a").WithFiles({u"Foo", u"foo.y", u"fOO"}).WithClass(inside).Create(),
                             MadeEntry(u"memory:///b").WithFiles({u"foo", u"STRASSE.x"}).Create()});
  const NameIndex index(table.GetSlots(), NameIndex::Keys::Folded);

  EXPECT_THAT(HoldersOf(index, u"foO"), ElementsAre(0U, 0U, 0U, 1U, 2U));
  EXPECT_THAT(HoldersOf(index, u"strasse"), ElementsAre(2U));
}

TEST(NameIndex, IsEmptyForAnEmptyPath) {
  const LocationTable table({});
  const NameIndex index(table.GetSlots(), NameIndex::Keys::Exact);

  EXPECT_THAT(HoldersOf(index, u"f"), IsEmpty());
}

TEST(NameIndex, FindsEveryNameOfALargePath) {
  std::vector<FolderEntryPtr> entries;
  const auto nameOf = [](std::size_t number) {
    std::u16string name = u"Name";
    for (const char digit : std::to_string(number)) name.push_back(static_cast<char16_t>(digit));
    return name;
  };
  for (std::size_t folder = 0; folder < 50; ++folder) {
    std::vector<std::u16string> files;
    for (std::size_t number = folder; number < folder + 200; ++number) files.push_back(nameOf(number) + u".x");
    entries.push_back(MadeEntry(u"memory:///" + nameOf(folder)).WithFiles(files).Create());
  }
  const LocationTable table(entries);
  const NameIndex exact(table.GetSlots(), NameIndex::Keys::Exact);
  const NameIndex folded(table.GetSlots(), NameIndex::Keys::Folded);

  for (std::size_t number = 0; number < 250; ++number) {
    std::vector<Ordinal> expected;
    for (std::size_t folder = 0; folder < 50; ++folder) {
      if (folder <= number && number < folder + 200) expected.push_back(static_cast<Ordinal>(folder));
    }
    ASSERT_EQ(HoldersOf(exact, nameOf(number)), expected);
    ASSERT_EQ(HoldersOf(folded, u"nAmE" + nameOf(number).substr(4)), expected);
  }
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
