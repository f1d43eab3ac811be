#include <gtest/gtest.h>

#include <memory>
#include <search_path_interfaces/found_item.hpp>
#include <support/fake_path.hpp>
#include <type_traits>
#include <utility>

namespace Quorvex::PathManagement {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using support::APath;
using support::EntryPtr;
using support::Folder;

const std::u16string kFolder = u"file:///a";

std::shared_ptr<const PathItem> Item(const std::u16string& baseName, const std::u16string& extension,
                                     const std::u16string& folder = kFolder) {
  return std::make_shared<const PathItem>(PathItem{baseName, extension, AbsoluteIRI(folder)});
}

EntryPtr AnEntry() { return APath().With(Folder("/a")).Build()->EntryAt("/a"); }

TEST(FoundItem, GivesBackTheItemAndTheEntryItWasMadeOf) {
  const auto item = Item(u"foo", u".vnx");
  const auto entry = AnEntry();

  const FoundItem found(item, entry);

  EXPECT_EQ(found.GetPathItem(), item);
  EXPECT_EQ(found.GetPathEntry(), entry);
}

TEST(FoundItem, IsEqualWhenTheSameFileWasFoundInTheSameEntryObject) {
  const auto entry = AnEntry();

  EXPECT_TRUE(FoundItem(Item(u"foo", u".vnx"), entry) == FoundItem(Item(u"foo", u".vnx"), entry));
}

TEST(FoundItem, DiffersWithTheBaseNameTheExtensionAndTheFolderOfTheItem) {
  const auto entry = AnEntry();
  const FoundItem found(Item(u"foo", u".vnx"), entry);

  EXPECT_FALSE(found == FoundItem(Item(u"fob", u".vnx"), entry));
  EXPECT_FALSE(found == FoundItem(Item(u"foo", u".src"), entry));
  EXPECT_FALSE(found == FoundItem(Item(u"foo", u".vnx", u"file:///b"), entry));
}

TEST(FoundItem, DiffersWhenTheSameFullNameIsCutElsewhere) {
  const auto entry = AnEntry();

  EXPECT_FALSE(FoundItem(Item(u"foo.tar", u".gz"), entry) == FoundItem(Item(u"foo", u".tar.gz"), entry));
}

TEST(FoundItem, DiffersWhenAnotherEntryObjectStandsForTheSameFolder) {
  const auto item = Item(u"foo", u".vnx");

  EXPECT_FALSE(FoundItem(item, AnEntry()) == FoundItem(item, AnEntry()));
}

TEST(FoundItem, ComparesWithoutAnItemOrAnEntry) {
  const auto item = Item(u"foo", u".vnx");

  EXPECT_TRUE(FoundItem(nullptr, nullptr) == FoundItem(nullptr, nullptr));
  EXPECT_FALSE(FoundItem(item, nullptr) == FoundItem(nullptr, nullptr));
  EXPECT_FALSE(FoundItem(nullptr, nullptr) == FoundItem(item, nullptr));
}

TEST(FoundItem, CanBeCopiedAndMoved) {
  const auto item = Item(u"foo", u".vnx");
  FoundItem original(item, AnEntry());

  const FoundItem copy = original;
  const FoundItem moved = std::move(original);

  EXPECT_TRUE(copy == moved);
  EXPECT_EQ(moved.GetPathItem(), item);
}

}  // namespace
}  // namespace Quorvex::PathManagement
