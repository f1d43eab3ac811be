#include "class_folder_index.hpp"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "made_entry.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

LocationTable TwoFolders() {
  return LocationTable({MadeEntry(u"memory:///a")
                            .WithFiles({u"plain", u"@File"})
                            .WithClass(MadeClass(u"memory:///a/@Shape"))
                            .WithClass(MadeClass(u"memory:///a/@Stra\u00DFe"))
                            .Create(),
                        MadeEntry(u"memory:///b").WithClass(MadeClass(u"memory:///b/@Shape")).Create()});
}

TEST(ClassFolderIndex, GivesTheClassFoldersOfANameWithoutItsMarkInPathOrder) {
  const LocationTable table = TwoFolders();
  const ClassFolderIndex index(table.GetSlots(), ClassFolderIndex::Keys::Exact);

  EXPECT_THAT(index.Find(u"Shape"), ElementsAre(1U, 4U));
  EXPECT_THAT(index.Find(u"@Shape"), IsEmpty());
  EXPECT_THAT(index.Find(u"shape"), IsEmpty());
  EXPECT_THAT(index.Find(u"Shade"), IsEmpty()) << "as long, and alike where the filter looks";
  EXPECT_THAT(index.Find(u"plain"), IsEmpty());
  EXPECT_THAT(index.Find(u"File"), IsEmpty()) << "a file is no class folder, whatever its name";
  EXPECT_THAT(index.Find(u""), IsEmpty());
}

TEST(ClassFolderIndex, JoinsLetterCasesWhenItsKeysAreFolded) {
  const LocationTable table = TwoFolders();
  const ClassFolderIndex index(table.GetSlots(), ClassFolderIndex::Keys::Folded);

  EXPECT_THAT(index.Find(u"sHAPE"), ElementsAre(1U, 4U));
  EXPECT_THAT(index.Find(u"STRASSE"), ElementsAre(2U));
}

TEST(ClassFolderIndex, FindsEveryClassOfALargePath) {
  std::vector<FolderEntryPtr> entries;
  std::vector<std::u16string> names;
  for (std::size_t number = 0; number < 500; ++number) {
    const std::string digits = std::to_string(number * number);
    names.push_back(u"Class" + std::u16string(digits.begin(), digits.end()));
    entries.push_back(
        MadeEntry(u"memory:///" + names.back()).WithClass(MadeClass(u"memory:///x/@" + names.back())).Create());
  }
  const LocationTable table(entries);
  const ClassFolderIndex index(table.GetSlots(), ClassFolderIndex::Keys::Exact);

  for (std::size_t number = 0; number < 500; ++number) {
    ASSERT_THAT(index.Find(names[number]), ElementsAre(static_cast<Ordinal>(2 * number + 1)));
  }
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
