#include <gmock/gmock.h>

#include <fakes/counting_storage_provider.hpp>
#include <fakes/forbidding_storage_provider.hpp>

#include "memory_storage.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::fakes::CountingStorageProvider;
using foundation::storage::fakes::ForbiddingStorageProvider;
using foundation::storage::fakes::StorageOperation;
using foundation::storage::vfs::CanonicalAbsoluteIRI;

MemoryStorage ATree() {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f.x", u"/a/+p/@c/f.x", u"/a/private/g", u"/a/plain/f.x", u"/b/resources/f.x"});
  return storage;
}

TEST(FolderPathStorage, IsListedOnceAFolderAndOnlyWhereSpecialFoldersAre) {
  MemoryStorage storage = ATree();
  const auto counting = storage.Through<CountingStorageProvider>();

  static_cast<void>(storage.Path({u"/a", u"/b", u"/a"}));

  for (const auto* folder : {u"/a", u"/a/+p", u"/a/+p/@c", u"/a/private", u"/b", u"/b/resources"}) {
    EXPECT_EQ(counting->GetCount(StorageOperation::List, InMemory(folder)), 1U) << Shown(InMemory(folder));
  }
  EXPECT_EQ(counting->GetCount(StorageOperation::List), 6U) << "a plain subfolder costs nothing";
  EXPECT_EQ(counting->GetCount(StorageOperation::Stat), 0U) << "a listing tells kinds";
  EXPECT_EQ(counting->GetCount(StorageOperation::OpenForReading), 0U);
}

TEST(FolderPathStorage, IsNotTouchedAfterLoading) {
  MemoryStorage storage = ATree();
  const auto forbidding = storage.Through<ForbiddingStorageProvider>();
  const auto path = storage.Path({u"/a", u"/b"});

  forbidding->Forbid();

  for (const auto policy : {kCaseSensitive, kCaseInsensitive, kNative}) {
    EXPECT_EQ(Shown(path->FindFirstInScope(kEveryKind, Wanted{u"f", {u".x"}}.Target(), policy)), "/a: f.x");
    EXPECT_EQ(Shown(path->FindFirstInScope(kEveryKind, Wanted{u"p/c/f", {u".x"}}.Target(), policy)), "/a/+p/@c: f.x");
    EXPECT_EQ(path->FindAllInScope(kEveryKind, Wanted{u"f", {u".x"}}.Target(), policy).size(), 3U);
    EXPECT_EQ(path->GetMethodEntriesByName(kEveryKind, u"c", policy).size(), 1U);
    EXPECT_EQ(path->GetPartiallyMatchingEntries(kEveryKind, u"a", policy).size(), 1U);
    EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(InMemory(u"/gone"), policy), nullptr);
  }
  EXPECT_EQ(Shown(path->GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(InMemory(u"/b"), u""))), "/b");
  EXPECT_EQ(Walk(*path).size(), 6U);
  for (const auto& entry : path->GetMethodEntries()) {
    EXPECT_NE(entry->GetItems(), nullptr);
    EXPECT_TRUE(path->IsEntryOnPath(*entry));
    EXPECT_NE(path->GetParentEntryForEntry(*entry), nullptr);
  }
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
