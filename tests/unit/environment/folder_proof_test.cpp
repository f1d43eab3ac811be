#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <fakes/counting_storage_provider.hpp>
#include <fakes/failing_storage_provider.hpp>
#include <filesystem>
#include <search_path_environment/folder_proof.hpp>
#include <thread>

#include "disk_folder.hpp"
#include "memory_storage.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::fakes::CountingStorageProvider;
using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::fakes::StorageOperation;
using foundation::storage::vfs::FileKind;
using testing::ElementsAre;
using testing::IsEmpty;

Standing StandingOf(const FolderEntry& entry) {
  const auto storage = foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference();
  return StandingOf(*entry.GetProof(), entry.GetLocation(), *storage.ProviderFor(entry.GetLocation()));
}

// Reads a folder on disk again and again until enough time has passed since it was touched.
std::shared_ptr<const FolderEntry> ReadSettledEntry(const AbsoluteIRI& folder) {
  auto entry = ReadEntry(folder);
  while (!entry->GetProof()->CanProve()) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    entry = ReadEntry(folder);
  }
  return entry;
}

TEST(FolderProof, HoldsForAFolderThatNobodyTouched) {
  const MemoryStorage memory = std::move(MemoryStorage().WithFiles({u"/m/f.x"}));
  EXPECT_EQ(StandingOf(*memory.Entry(u"/m")), Standing::Proven);
}

TEST(FolderProof, FailsWhenAFileCame) {
  const MemoryStorage memory = std::move(MemoryStorage().WithFiles({u"/m/f.x"}));
  const auto entry = memory.Entry(u"/m");
  memory.GetProvider().AddFile(u"/m/g.x");
  EXPECT_EQ(StandingOf(*entry), Standing::Changed);
}

TEST(FolderProof, FailsWhenAFileWent) {
  const MemoryStorage memory = std::move(MemoryStorage().WithFiles({u"/m/f.x"}));
  const auto entry = memory.Entry(u"/m");
  memory.GetProvider().Remove(InMemory(u"/m/f.x"));
  EXPECT_EQ(StandingOf(*entry), Standing::Changed);
}

TEST(FolderProof, IsNotAboutTheFoldersBelow) {
  const MemoryStorage memory = std::move(MemoryStorage().WithFiles({u"/m/private/f.x"}));
  const auto entry = memory.Entry(u"/m");
  memory.GetProvider().AddFile(u"/m/private/g.x");
  EXPECT_EQ(StandingOf(*entry), Standing::Proven);
  EXPECT_EQ(StandingOf(*entry->GetChildren().at(0)), Standing::Changed);
}

TEST(FolderProof, TellsAnotherFolderOfTheSameName) {
  const MemoryStorage memory = std::move(MemoryStorage().WithFolders({u"/m"}));
  const auto entry = memory.Entry(u"/m");
  memory.GetProvider().Remove(InMemory(u"/m"));
  memory.GetProvider().AddFolder(u"/m");
  EXPECT_EQ(StandingOf(*entry), Standing::Another);
}

TEST(FolderProof, TellsThatAFolderIsGone) {
  const MemoryStorage memory = std::move(MemoryStorage().WithFolders({u"/m"}));
  const auto entry = memory.Entry(u"/m");
  memory.GetProvider().Remove(InMemory(u"/m"));
  EXPECT_EQ(StandingOf(*entry), Standing::Another);
}

TEST(FolderProof, HoldsForAFolderThatIsStillMissing) {
  const MemoryStorage memory;
  const auto entry = memory.Entry(u"/m");
  EXPECT_EQ(entry->GetProof()->finding, FolderProof::Finding::Missing);
  EXPECT_EQ(StandingOf(*entry), Standing::Proven);
}

TEST(FolderProof, TellsAFolderThatWasMissing) {
  const MemoryStorage memory;
  const auto entry = memory.Entry(u"/m");
  memory.GetProvider().AddFolder(u"/m");
  EXPECT_EQ(StandingOf(*entry), Standing::Another);
}

TEST(FolderProof, NeverHoldsForAFolderThatWasInTrouble) {
  MemoryStorage memory = std::move(MemoryStorage().WithFolders({u"/m"}));
  const auto failing = memory.Through<FailingStorageProvider>();
  failing->Plan({.operation = StorageOperation::List, .error = std::make_error_code(std::errc::permission_denied)});
  const auto entry = memory.Entry(u"/m");
  EXPECT_EQ(entry->GetProof()->finding, FolderProof::Finding::Trouble);
  EXPECT_EQ(StandingOf(*entry), Standing::Changed);
}

TEST(FolderProof, FailsWhenStorageDoesNotAnswer) {
  MemoryStorage memory = std::move(MemoryStorage().WithFolders({u"/m"}));
  const auto entry = memory.Entry(u"/m");
  const auto failing = memory.Through<FailingStorageProvider>();
  failing->Plan({.operation = StorageOperation::Stat});
  EXPECT_EQ(StandingOf(*entry), Standing::Changed);
}

TEST(FolderProof, FailsWhenALinkInTheFolderLeadsToNothingAnyMore) {
  const MemoryStorage memory = std::move(MemoryStorage().WithFiles({u"/else/f.x"}).WithLink(u"/m/l.x", u"/else/f.x"));
  const auto entry = memory.Entry(u"/m");
  EXPECT_THAT(entry->GetProof()->links, ElementsAre(LinkedEntry{u"l.x", FileKind::File}));
  EXPECT_EQ(StandingOf(*entry), Standing::Proven);

  memory.GetProvider().Remove(InMemory(u"/else/f.x"));
  EXPECT_EQ(StandingOf(*entry), Standing::Changed);
}

TEST(FolderProof, FailsWhenALinkThatLedNowhereLeadsSomewhere) {
  const MemoryStorage memory = std::move(MemoryStorage().WithLink(u"/m/l.x", u"/else/f.x"));
  const auto entry = memory.Entry(u"/m");
  EXPECT_EQ(StandingOf(*entry), Standing::Proven);

  memory.GetProvider().AddFile(u"/else/f.x");
  EXPECT_EQ(StandingOf(*entry), Standing::Changed);
}

TEST(FolderProof, TakesOneQuestionAndOneForEachLink) {
  MemoryStorage memory = std::move(MemoryStorage().WithFiles({u"/m/f.x"}).WithLink(u"/m/l.x", u"/m/f.x"));
  const auto entry = memory.Entry(u"/m");
  const auto counting = memory.Through<CountingStorageProvider>();
  static_cast<void>(StandingOf(*entry));
  EXPECT_EQ(counting->GetCount(StorageOperation::Stat), 2U);
  EXPECT_EQ(counting->GetCount(), 2U);
}

TEST(FolderProof, ProvesAFolderThatWasTouchedJustBeforeOnlyIfTheClockHasTicked) {
  const DiskFolder disk;
  disk.AddFile("f.x");
  const auto entry = ReadEntry(disk.LocationOf());
  // The clock that stamps files may or may not have ticked in between.
  const bool hasTicked = entry->GetProof()->stamp.changeTime < entry->GetProof()->readAt;
  EXPECT_EQ(entry->GetProof()->CanProve(), hasTicked);
  EXPECT_EQ(StandingOf(*entry), hasTicked ? Standing::Proven : Standing::Changed);
}

TEST(FolderProof, SeesAChangeThatWasGivenTheOldModificationTime) {
  const DiskFolder disk;
  disk.AddFile("f.x");
  const auto entry = ReadSettledEntry(disk.LocationOf());
  struct stat before {};
  ASSERT_EQ(::stat(disk.PathOf().c_str(), &before), 0);

  ASSERT_EQ(::rename(disk.PathOf("f.x").c_str(), disk.PathOf("g.x").c_str()), 0);
  const struct timespec times[] = {before.st_atim, before.st_mtim};
  ASSERT_EQ(::utimensat(AT_FDCWD, disk.PathOf().c_str(), times, 0), 0);
  EXPECT_EQ(StandingOf(*entry), Standing::Changed);
}

TEST(FolderProof, SeesThatAFolderMayNoLongerBeRead) {
  const DiskFolder disk;
  const auto entry = ReadSettledEntry(disk.LocationOf());
  ASSERT_EQ(::chmod(disk.PathOf().c_str(), 0300), 0);
  EXPECT_EQ(StandingOf(*entry), Standing::Changed);
  ASSERT_EQ(::chmod(disk.PathOf().c_str(), 0700), 0);
}

TEST(FolderProof, IsRenewedWhenAFolderIsReadAgainAndHoldsTheSame) {
  const MemoryStorage memory = std::move(MemoryStorage().WithFiles({u"/m/f.x", u"/m/private/g.x"}));
  const FolderEntryFactory factory(foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference());
  const auto entry = std::static_pointer_cast<const FolderEntry>(factory.CreateMainEntry(InMemory(u"/m")));
  for (const auto* file : {u"/m/h.x", u"/m/private/h.x"}) {
    memory.GetProvider().AddFile(file);
    memory.GetProvider().Remove(InMemory(file));
  }
  EXPECT_EQ(StandingOf(*entry), Standing::Changed);

  EXPECT_EQ(factory.CreateMainEntry(InMemory(u"/m")), entry);
  EXPECT_EQ(StandingOf(*entry), Standing::Proven);
  EXPECT_EQ(StandingOf(*entry->GetChildren().at(0)), Standing::Proven);
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
