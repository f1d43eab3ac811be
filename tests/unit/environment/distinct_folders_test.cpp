#include <gmock/gmock.h>
#include <sched.h>
#include <sys/mount.h>

#include <algorithm>
#include <fakes/counting_storage_provider.hpp>
#include <fakes/failing_storage_provider.hpp>
#include <foundation/storage/vfs/file_storage_provider.hpp>
#include <future>
#include <search_path_environment/distinct_folders.hpp>
#include <support/without_privileges.hpp>

#include "disk_folder.hpp"
#include "memory_storage.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::fakes::CountingStorageProvider;
using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::fakes::StorageOperation;
using foundation::storage::vfs::FileStorageProvider;
using foundation::storage::vfs::VornixStorageSystem;
using PathManagement::support::WithoutPrivileges;
using testing::ElementsAre;
using testing::IsEmpty;

DistinctFolders Distinct(const std::vector<AbsoluteIRI>& folders,
                         FolderQuestion question = FolderQuestion::WhatIsThere) {
  return {folders, VornixStorageSystem::GetStorageSystemReference(), question};
}

std::vector<AbsoluteIRI> AllInMemory(const std::vector<std::u16string>& paths) {
  std::vector<AbsoluteIRI> locations;
  locations.reserve(paths.size());
  for (const auto& path : paths) locations.push_back(InMemory(path));
  return locations;
}

DistinctFolders DistinctInMemory(const std::vector<std::u16string>& paths) { return Distinct(AllInMemory(paths)); }

/// Position and spelling: "0 /a".
Texts Kept(const DistinctFolders& folders) {
  Texts texts;
  for (const KeptFolder& folder : folders.GetKept()) {
    texts.push_back(std::to_string(folder.position) + " " + Shown(folder.location));
  }
  return texts;
}

/// The same, and the reason.
Texts Dropped(const DistinctFolders& folders) {
  Texts texts;
  for (const DroppedFolder& folder : folders.GetDropped()) {
    texts.push_back(std::to_string(folder.position) + " " + Shown(folder.location) + ": " + ReasonOf(folder));
  }
  return texts;
}

TEST(DistinctFolders, KeepsTheFirstSpellingOfAFolderAndDropsALinkToIt) {
  MemoryStorage storage;
  storage.WithFolders({u"/real", u"/other"}).WithLink(u"/link", u"/real");

  const DistinctFolders folders = DistinctInMemory({u"/link", u"/other", u"/real"});

  EXPECT_THAT(Kept(folders), ElementsAre("0 /link", "1 /other"));
  EXPECT_THAT(Dropped(folders),
              ElementsAre("2 /real: it is the same folder as \"memory:///link\", folder 1 of the path: "
                          "same device and inode"));
  EXPECT_EQ(folders.GetDropped()[0].staying, InMemory(u"/link"));
  EXPECT_EQ(folders.GetDropped()[0].stayingPosition, 0U);
  EXPECT_EQ(folders.GetDropped()[0].reason, SameFolder::ByIdentity);
}

TEST(DistinctFolders, TakesDotSegmentsForTheTextTheyStandFor) {
  MemoryStorage storage;
  storage.WithFolders({u"/a"});

  const DistinctFolders folders = DistinctInMemory({u"/a", u"/a/../a", u"/a/./"});

  EXPECT_THAT(Kept(folders), ElementsAre("0 /a"));
  EXPECT_THAT(Dropped(folders),
              ElementsAre("1 /a: it is the same folder as \"memory:///a\", folder 1 of the path: same identifier",
                          "2 /a: it is the same folder as \"memory:///a\", folder 1 of the path: same identifier"));
}

TEST(DistinctFolders, TellsOfARepeatedSpellingWhyItWasDroppedFirst) {
  MemoryStorage storage;
  storage.WithFolders({u"/real"}).WithLink(u"/link", u"/real");

  const DistinctFolders folders = DistinctInMemory({u"/real", u"/link", u"/link", u"/real"});

  ASSERT_EQ(folders.GetDropped().size(), 3U);
  EXPECT_EQ(folders.GetDropped()[0].reason, SameFolder::ByIdentity);
  EXPECT_EQ(folders.GetDropped()[1].reason, SameFolder::ByIdentity);
  EXPECT_EQ(folders.GetDropped()[2].reason, SameFolder::ByText);
  EXPECT_EQ(folders.GetDropped()[1].staying, InMemory(u"/real"));
}

TEST(DistinctFolders, KnowsTwoSpellingsOfAMissingFolderByTheirCanonicalLocation) {
  MemoryStorage storage;
  storage.WithFolders({u"/real"}).WithLink(u"/link", u"/real");

  const DistinctFolders folders = DistinctInMemory({u"/real/missing", u"/link/missing", u"/missing"});

  EXPECT_THAT(Kept(folders), ElementsAre("0 /real/missing", "2 /missing"));
  ASSERT_EQ(folders.GetDropped().size(), 1U);
  EXPECT_EQ(folders.GetDropped()[0].reason, SameFolder::ByCanonicalLocation);
  EXPECT_THAT(ReasonOf(folders.GetDropped()[0]), testing::EndsWith(": same canonical location"));
  EXPECT_EQ(folders.GetKept()[0].error, std::errc::no_such_file_or_directory);
}

TEST(DistinctFolders, KeepsFoldersAboutWhichStorageSaysNothing) {
  MemoryStorage storage;
  storage.WithLink(u"/loop", u"/loop").WithLink(u"/loop2", u"/loop");

  const DistinctFolders folders = Distinct({InMemory(u"/loop"), InMemory(u"/loop2"), AbsoluteIRI(u"nobody:///serves"),
                                            AbsoluteIRI(u"memory:rootless"), InMemory(u"/loop")});

  EXPECT_EQ(folders.GetKept().size(), 4U);
  EXPECT_EQ(folders.GetKept()[0].error, std::errc::too_many_symbolic_link_levels);
  ASSERT_EQ(folders.GetDropped().size(), 1U);
  EXPECT_EQ(folders.GetDropped()[0].reason, SameFolder::ByText);
}

TEST(DistinctFolders, ComparesIdentifiersAloneWithoutStorage) {
  MemoryStorage storage;
  storage.WithFolders({u"/real"}).WithLink(u"/link", u"/real");
  const auto counting = storage.Through<CountingStorageProvider>();

  const DistinctFolders folders(AllInMemory({u"/real", u"/link", u"/real"}));

  EXPECT_THAT(Kept(folders), ElementsAre("0 /real", "1 /link"));
  EXPECT_EQ(folders.GetDropped().size(), 1U);
  EXPECT_EQ(folders.IndexOf(InMemory(u"/link")), 1U);
  EXPECT_EQ(folders.IndexOf(InMemory(u"/real/../link")), 1U);
  EXPECT_EQ(folders.IndexOf(InMemory(u"/elsewhere")), std::nullopt);
  EXPECT_EQ(counting->GetCount(), 0U);
}

TEST(DistinctFolders, AsksStorageOnceAboutEachIdentifierThatIsThere) {
  MemoryStorage storage;
  std::vector<std::u16string> paths;
  for (char16_t name = u'\u4E00'; name < u'\u4E00' + 500; ++name) paths.push_back(std::u16string(u"/") + name);
  storage.WithFolders(paths);
  paths.push_back(paths.front());
  const auto counting = storage.Through<CountingStorageProvider>();

  EXPECT_EQ(DistinctInMemory(paths).GetKept().size(), 500U);
  EXPECT_EQ(counting->GetCount(), 500U);

  counting->Reset();
  EXPECT_EQ(Distinct(AllInMemory(paths), FolderQuestion::CanItBeListed).GetKept().size(), 500U);
  EXPECT_EQ(counting->GetCount(), 500U);
  EXPECT_EQ(counting->GetCount(StorageOperation::CheckFolder), 500U);
}

TEST(DistinctFolders, TellsWhetherAFolderCanBeListedWhenAskedThat) {
  MemoryStorage storage;
  storage.WithFolders({u"/folder", u"/refused"}).WithFiles({u"/file"}).WithLink(u"/link", u"/refused");
  const auto failing = storage.Through<FailingStorageProvider>();
  for (const char16_t* const folder : {u"/refused", u"/link"}) {
    failing->Plan({.operation = StorageOperation::CheckFolder,
                   .location = InMemory(folder),
                   .error = std::make_error_code(std::errc::permission_denied)});
  }

  const DistinctFolders folders =
      Distinct(AllInMemory({u"/folder", u"/file", u"/missing", u"/refused", u"/link"}), FolderQuestion::CanItBeListed);

  EXPECT_THAT(Kept(folders), ElementsAre("0 /folder", "1 /file", "2 /missing", "3 /refused"));
  EXPECT_FALSE(folders.GetKept()[0].error);
  EXPECT_EQ(folders.GetKept()[1].error, std::errc::not_a_directory);
  EXPECT_EQ(folders.GetKept()[2].error, std::errc::no_such_file_or_directory);
  EXPECT_EQ(folders.GetKept()[3].error, std::errc::permission_denied);
  ASSERT_EQ(folders.GetDropped().size(), 1U);
  EXPECT_EQ(folders.GetDropped()[0].reason, SameFolder::ByIdentity) << "though neither can be listed";
}

TEST(DistinctFolders, FindsAKeptFolderInAnySpelling) {
  MemoryStorage storage;
  storage.WithFolders({u"/real", u"/other"})
      .WithLink(u"/link", u"/real")
      .WithLink(u"/third", u"/link")
      .WithLink(u"/up", u"/");
  const DistinctFolders folders = DistinctInMemory({u"/other", u"/link", u"/real", u"/real/missing"});

  EXPECT_EQ(folders.IndexOf(InMemory(u"/other")), 0U);
  EXPECT_EQ(folders.IndexOf(InMemory(u"/real")), 1U) << "the one of which the link stayed";
  EXPECT_EQ(folders.IndexOf(InMemory(u"/third")), 1U) << "not on the list";
  EXPECT_EQ(folders.IndexOf(InMemory(u"/up/link/missing")), 2U);
  EXPECT_EQ(folders.IndexOf(InMemory(u"/up")), std::nullopt);
  EXPECT_EQ(folders.IndexOf(AbsoluteIRI(u"nobody:///serves")), std::nullopt);
}

TEST(DistinctFolders, ComparesLetterCaseAsTheStorageDoes) {
  const MemoryStorage exact;
  const MemoryStorage loose(NameComparison::IgnoreCase, u"loose");
  exact.GetProvider().AddFolder(u"/a");
  exact.GetProvider().AddFolder(u"/A");
  loose.GetProvider().AddFolder(u"/a");

  EXPECT_EQ(DistinctInMemory({u"/a", u"/A"}).GetKept().size(), 2U);
  EXPECT_EQ(Distinct({InMemory(u"/a", u"loose"), InMemory(u"/A", u"loose")}).GetKept().size(), 1U);
}

TEST(DistinctFolders, KnowsOneFolderUnderAnAliasOfItsScheme) {
  const MemoryStorage storage;
  storage.GetProvider().AddFolder(u"/a");
  const auto alias = VornixStorageSystem::MountAlias(u"other", u"memory");

  const DistinctFolders folders =
      Distinct({InMemory(u"/a"), InMemory(u"/a", u"other"), InMemory(u"/missing"), InMemory(u"/missing", u"other")});

  EXPECT_THAT(Kept(folders), ElementsAre("0 /a", "2 /missing"));
}

TEST(DistinctFolders, ComparesNoIdentitiesOfDifferentProviders) {
  const DiskFolder disk;
  disk.AddFolder("a");
  const auto mounted = VornixStorageSystem::Mount(u"disk", std::make_shared<FileStorageProvider>());
  const AbsoluteIRI elsewhere(u"disk" + disk.LocationOf("a").toString().substr(4));

  EXPECT_EQ(Distinct({disk.LocationOf("a"), elsewhere}).GetKept().size(), 2U);
}

TEST(DistinctFolders, KnowsAFolderOnDiskBehindLinks) {
  const DiskFolder disk;
  disk.AddFolder("a");
  disk.AddFolder("b");
  disk.AddLink("link", "a");
  disk.AddLink("up", ".");

  const DistinctFolders folders =
      Distinct({disk.LocationOf("link"), disk.LocationOf("a"), disk.LocationOf("b"), disk.LocationOf("up/a"),
                disk.LocationOf("up/missing"), disk.LocationOf("missing")});

  ASSERT_EQ(folders.GetKept().size(), 3U);
  EXPECT_EQ(folders.GetKept()[2].location, disk.LocationOf("up/missing"));
  EXPECT_THAT(Dropped(folders)[0], testing::HasSubstr("as \"" + disk.PathOf("link") + "\", folder 1 of the path"));
}

TEST(DistinctFolders, KeepsApartWhatNobodyMayLookAt) {
  const DiskFolder disk;
  disk.AddFolder("shut");
  disk.AddFolder("shut/a");
  disk.AddLink("link", "shut");
  ASSERT_EQ(::chmod(disk.PathOf("shut").c_str(), 0), 0);

  WithoutPrivileges([&disk] {
    const DistinctFolders folders = Distinct({disk.LocationOf("shut/a"), disk.LocationOf("link/a")});

    ASSERT_EQ(folders.GetKept().size(), 2U);
    EXPECT_EQ(folders.GetKept()[0].error, std::errc::permission_denied);
  });
  ASSERT_EQ(::chmod(disk.PathOf("shut").c_str(), 0777), 0);
}

// Mounts `from` on `to`, for the calling thread alone. False when that is not allowed.
bool MountForThisThread(const std::string& from, const std::string& to) {
  return ::unshare(CLONE_NEWNS) == 0 && ::mount("", "/", "", MS_REC | MS_PRIVATE, nullptr) == 0 &&
         ::mount(from.c_str(), to.c_str(), "", MS_BIND, nullptr) == 0;
}

TEST(DistinctFolders, KnowsAFolderThatIsMountedTwice) {
  const DiskFolder disk;
  disk.AddFolder("a");
  disk.AddFolder("mounted");

  const bool mayMount = std::async(std::launch::async, [&disk] {
                          if (!MountForThisThread(disk.PathOf("a"), disk.PathOf("mounted"))) return false;
                          const DistinctFolders folders = Distinct({disk.LocationOf("a"), disk.LocationOf("mounted")});
                          EXPECT_EQ(folders.GetKept().size(), 1U);
                          EXPECT_EQ(folders.IndexOf(disk.LocationOf("mounted")), 0U);
                          return true;
                        }).get();
  if (!mayMount) GTEST_SKIP() << "mounting is not allowed here";
}

TEST(FolderPathFactory, MakesAPathOverDistinctFoldersAndReportsTheOthersWhereTheyStand) {
  MemoryStorage storage;
  storage.WithFiles({u"/real/f", u"/b/f"}).WithLink(u"/link", u"/real");
  const FolderEntryFactory entries(VornixStorageSystem::GetStorageSystemReference());

  const auto path = FolderPathFactory().CreateFolderPath(
      DistinctInMemory({u"/link", u"/link", u"/real", u"/b", u"/missing"}), entries);

  EXPECT_THAT(AllShown(*path->GetMainEntries()), ElementsAre("/link", "/b", "/missing"));
  EXPECT_THAT(path->GetPositions(), ElementsAre(0, 3, 4));
  EXPECT_THAT(AllShown(path->GetProblems()),
              ElementsAre("1 /link: it stands earlier on the path", "2 /real: it stands earlier on the path",
                          "4 /missing: there is no such folder"));
  EXPECT_EQ(path->GetProblems()[1].kind, ProblemKind::Repeated);
}

TEST(DistinctFolders, OfNoneAreNone) {
  const DistinctFolders folders = Distinct({});

  EXPECT_THAT(folders.GetKept(), IsEmpty());
  EXPECT_THAT(folders.GetDropped(), IsEmpty());
  EXPECT_EQ(folders.IndexOf(InMemory(u"/a")), std::nullopt);
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
