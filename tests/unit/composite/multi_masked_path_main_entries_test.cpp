// The list of main entries is filtered once and kept.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <support/mock_path.hpp>

#include "masked_folders.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using support::APath;
using support::Folder;
using support::InjectedFailure;
using support::LocationsOf;
using support::MockPath;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;
using testing::NiceMock;
using testing::Return;

TEST(MultiMaskedPath, ListsTheMainEntriesThatAreNotMasked) {
  const MaskedFolders folders;

  EXPECT_THAT(*folders.Without({"/c", "/a"}).GetMainEntries(), ElementsAre(folders.At("/b"), folders.At("/d")));
  EXPECT_THAT(*folders.Without({"/a", "/b", "/c", "/d"}).GetMainEntries(), IsEmpty());
}

TEST(MultiMaskedPath, HandsOutTheSameVectorOfMainEntriesEveryTime) {
  const MaskedFolders folders;
  const MultiMaskedPath masked = folders.Without({"/a"});

  const auto once = masked.GetMainEntries();
  const auto again = masked.GetMainEntries();

  EXPECT_EQ(once, again);
  EXPECT_THAT(folders.log->GetOperations(), ElementsAre("path.GetMainEntries"));
}

TEST(MultiMaskedPath, KeepsACopyOfItsOwnEvenWithNothingMasked) {
  const auto path = std::make_shared<const ConcatenatedPath>(PathPtrs{MaskedFolders().path});
  const MultiMaskedPath masked(path, {});

  EXPECT_EQ(*masked.GetMainEntries(), *path->GetMainEntries());
  EXPECT_NE(masked.GetMainEntries(), path->GetMainEntries());
  EXPECT_EQ(masked.GetMainEntries(), masked.GetMainEntries());
}

TEST(MultiMaskedPath, TellsMainEntriesApartAsObjectsNotByLocation) {
  const auto path = APath().With(Folder("/a")).With(Folder("/a")).Build();
  const auto twins = path->GetMainEntries();
  const auto stranger = APath().With(Folder("/a")).Build()->EntryAt("/a");

  EXPECT_THAT(*MultiMaskedPath(path, {twins->at(1)}).GetMainEntries(), ElementsAre(twins->at(0)));
  EXPECT_THAT(*MultiMaskedPath(path, {stranger}).GetMainEntries(), ElementsAre(twins->at(0), twins->at(1)));
}

TEST(MultiMaskedPath, KeepsTheOldMainEntriesWhenThoseOfThePathChange) {
  const auto mock = std::make_shared<NiceMock<MockPath>>();
  const auto source = APath().With(Folder("/a")).With(Folder("/b")).Build();
  const MultiMaskedPath masked(mock, {});

  ON_CALL(*mock, GetMainEntries)
      .WillByDefault(Return(std::make_shared<const MockPath::Entries>(MockPath::Entries{source->EntryAt("/a")})));
  EXPECT_THAT(LocationsOf(*masked.GetMainEntries()), ElementsAre("/a"));

  ON_CALL(*mock, GetMainEntries).WillByDefault(Return(source->GetMainEntries()));
  EXPECT_THAT(LocationsOf(*masked.GetMainEntries()), ElementsAre("/a"));
}

TEST(MultiMaskedPath, IsOutlivedByItsListOfMainEntries) {
  std::shared_ptr<const std::vector<EntryPtr>> entries;
  entries = MaskedFolders().Without({"/b"}).GetMainEntries();

  EXPECT_THAT(LocationsOf(*entries), ElementsAre("/a", "/c", "/d"));
}

TEST(MultiMaskedPath, RefusesToListMainEntriesWhenMoreAreMaskedThanThereAre) {
  const auto path = APath().With(Folder("/a")).Build();
  const EntryPtr a = path->EntryAt("/a");
  const EntryPtr stranger = APath().With(Folder("/x")).Build()->EntryAt("/x");

  EXPECT_THROW(static_cast<void>(MultiMaskedPath(path, {a, stranger}).GetMainEntries()), std::length_error);
  EXPECT_THROW(static_cast<void>(MultiMaskedPath(path, {a, a}).GetMainEntries()), std::length_error);
  EXPECT_THROW(static_cast<void>(MultiMaskedPath(APath().Build(), {stranger}).GetMainEntries()), std::length_error);
}

TEST(MultiMaskedPath, RefusesAgainAndAgainAndAnswersAllElse) {
  const auto path = APath().With(Folder("/a").WithClass(Folder("Cls"))).Build();
  const EntryPtr a = path->EntryAt("/a");
  const MultiMaskedPath masked(path, {a, a});

  EXPECT_THROW(static_cast<void>(masked.GetMainEntries()), std::length_error);
  EXPECT_THROW(static_cast<void>(masked.GetMainEntries()), std::length_error);
  EXPECT_THAT(masked.GetMethodEntries(), IsEmpty());
  EXPECT_FALSE(masked.IsEntryOnPath(*a));
}

TEST(MultiMaskedPath, ListsMainEntriesOnceThePathHasEnoughOfThem) {
  const auto source = APath().With(Folder("/a")).With(Folder("/b")).Build();
  const auto mock = std::make_shared<NiceMock<MockPath>>();
  ON_CALL(*mock, GetMainEntries).WillByDefault(Return(std::make_shared<const MockPath::Entries>()));
  const MultiMaskedPath masked(mock, {source->EntryAt("/a")});
  EXPECT_THROW(static_cast<void>(masked.GetMainEntries()), std::length_error);

  ON_CALL(*mock, GetMainEntries).WillByDefault(Return(source->GetMainEntries()));

  EXPECT_THAT(LocationsOf(*masked.GetMainEntries()), ElementsAre("/b"));
}

TEST(MultiMaskedPath, ListsNothingWhenAsManyAreMaskedAsThereAre) {
  const auto path = APath().With(Folder("/a")).With(Folder("/b")).Build();

  EXPECT_THAT(*MultiMaskedPath(path, *path->GetMainEntries()).GetMainEntries(), IsEmpty());
  EXPECT_THAT(*MultiMaskedPath(APath().Build(), {}).GetMainEntries(), IsEmpty());
}

TEST(MultiMaskedPath, SetsRoomAsideForAsManyMainEntriesAsAreNotMasked) {
  const MaskedFolders folders;
  const EntryPtr stranger = APath().With(Folder("/x")).Build()->EntryAt("/x");

  EXPECT_EQ(folders.Without({"/a"}).GetMainEntries()->capacity(), 3U);
  EXPECT_EQ(folders.Without({}).GetMainEntries()->capacity(), 4U);
  EXPECT_THAT(MultiMaskedPath(folders.path, {stranger}).GetMainEntries()->capacity(), Ge(4U)) << "one too few is found";
}

TEST(MultiMaskedPath, LeavesTheSpareRoomThatMoreEntriesThanExpectedMade) {
  // Ten entries, of which nine seem to be masked: room is made for one, and then by doubling, for 16.
  APath folders;
  for (int number = 0; number < 10; ++number) folders.With(Folder("/" + std::to_string(number)));
  const auto path = folders.Build();
  const EntryPtr stranger = APath().With(Folder("/x")).Build()->EntryAt("/x");

  const auto entries = MultiMaskedPath(path, std::vector<EntryPtr>(9, stranger)).GetMainEntries();

  EXPECT_EQ(entries->size(), 10U);
  EXPECT_GT(entries->capacity(), entries->size());
}

TEST(MultiMaskedPath, BuildsItsMainEntriesFromTheStartAfterAFailedBuild) {
  const MaskedFolders folders;
  const MultiMaskedPath masked = folders.Without({"/a"});
  folders.log->FailNext("path.GetMainEntries", 2);

  EXPECT_THROW(static_cast<void>(masked.GetMainEntries()), InjectedFailure);
  EXPECT_THROW(static_cast<void>(masked.GetMainEntries()), InjectedFailure);
  folders.log->Clear();

  EXPECT_THAT(LocationsOf(*masked.GetMainEntries()), ElementsAre("/b", "/c", "/d"));
  EXPECT_THAT(LocationsOf(*masked.GetMainEntries()), ElementsAre("/b", "/c", "/d"));
  EXPECT_THAT(folders.log->GetOperations(), ElementsAre("path.GetMainEntries"));
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
