#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <support/mock_path.hpp>
#include <type_traits>

#include "masked_folders.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using support::APath;
using support::Folder;
using support::LocationsOf;
using support::MockPath;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StrictMock;
using testing::ThrowsMessage;

static_assert(std::is_base_of_v<IPath, MultiMaskedPath>);
static_assert(!std::is_base_of_v<ConcatenatedPath, MultiMaskedPath>);

TEST(MultiMaskedPath, AsksThePathNothingUntilItIsAsked) {
  const auto path = std::make_shared<StrictMock<MockPath>>();

  const MultiMaskedPath masked(path, {APath().With(Folder("/a")).Build()->EntryAt("/a")});

  EXPECT_EQ(path.use_count(), 2);
}

TEST(MultiMaskedPath, TakesPathAndMaskedEntriesOver) {
  const MaskedFolders folders;
  PathPtr path = folders.path;
  std::vector<EntryPtr> entries = folders.EntriesAt({"/a"});

  const MultiMaskedPath masked(std::move(path), std::move(entries));

  EXPECT_EQ(path, nullptr);         // NOLINT(bugprone-use-after-move): that is the promise
  EXPECT_THAT(entries, IsEmpty());  // NOLINT(bugprone-use-after-move): that is the promise
  EXPECT_THAT(LocationsOf(*masked.GetMainEntries()), ElementsAre("/b", "/c", "/d"));
}

TEST(MultiMaskedPath, LeavesACallersListOfMaskedEntriesAlone) {
  const MaskedFolders folders;
  const std::vector<EntryPtr> entries = folders.EntriesAt({"/a", "/b"});

  const MultiMaskedPath masked(folders.path, entries);

  EXPECT_THAT(LocationsOf(entries), ElementsAre("/a", "/b"));
  EXPECT_THAT(LocationsOf(*masked.GetMainEntries()), ElementsAre("/c", "/d"));
}

TEST(MultiMaskedPath, RefusesANullPathAndANullEntry) {
  const MaskedFolders folders;

  EXPECT_THAT([] { MultiMaskedPath(nullptr, {}); },
              ThrowsMessage<std::invalid_argument>("the path of a masked path is null"));
  EXPECT_THAT(
      [&] {
        MultiMaskedPath(folders.path, {folders.At("/a"), nullptr});
      },
      ThrowsMessage<std::invalid_argument>("masked entry 1 is null"));
}

TEST(MultiMaskedPath, KeepsThePathAndTheMaskedEntriesAliveAndReleasesThemAtItsEnd) {
  std::shared_ptr<const IPath> path = APath().With(Folder("/a")).Build();
  EntryPtr entry = APath().With(Folder("/x")).Build()->EntryAt("/x");
  const std::weak_ptr<const IPath> watchedPath = path;
  const std::weak_ptr<const IPathEntry> watchedEntry = entry;

  auto masked = std::make_shared<const MultiMaskedPath>(std::move(path), std::vector<EntryPtr>{entry});
  entry.reset();
  EXPECT_FALSE(watchedPath.expired());
  EXPECT_FALSE(watchedEntry.expired());
  masked.reset();

  EXPECT_TRUE(watchedPath.expired());
  EXPECT_TRUE(watchedEntry.expired());
}

TEST(MultiMaskedPath, NeverChangesThePathItShows) {
  const MaskedFolders folders;

  const MultiMaskedPath masked = folders.Without({"/a", "/b", "/c", "/d"});

  EXPECT_THAT(*masked.GetMainEntries(), IsEmpty());
  EXPECT_THAT(LocationsOf(*folders.path->GetMainEntries()), ElementsAre("/a", "/b", "/c", "/d"));
}

TEST(MultiMaskedPath, CanItselfBeMasked) {
  const MaskedFolders folders;
  const auto once = std::make_shared<const MultiMaskedPath>(folders.path, folders.EntriesAt({"/b"}));

  const MultiMaskedPath twice(once, folders.EntriesAt({"/c"}));

  EXPECT_THAT(LocationsOf(*twice.GetMainEntries()), ElementsAre("/a", "/d"));
  EXPECT_THAT(LocationsOf(twice.GetMethodEntries()), ElementsAre("/a/@Cls", "/d/@Cls"));
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
