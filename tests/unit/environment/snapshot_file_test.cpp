#include <gmock/gmock.h>

#include <fakes/failing_storage_provider.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_environment/snapshot_file.hpp>
#include <search_path_environment/utc_time.hpp>
#include <search_path_environment/whole_file.hpp>

#include "memory_storage.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::VornixStorageSystem;
using testing::AllOf;
using testing::Property;
using testing::StrEq;
using testing::Throws;

const auto kTaken = *TimeFromText("2026-11-21T12:00:00Z");

class ASnapshotFile : public testing::Test {
 protected:
  static foundation::storage::vfs::StorageSystemReference System() {
    return VornixStorageSystem::GetStorageSystemReference();
  }

  [[nodiscard]] PathSnapshot SnapshotOf(const std::vector<std::u16string>& folders) const {
    return {storage_.Path(folders), kTaken};
  }

  [[nodiscard]] std::size_t FilesBeside() const {
    return storage_.GetProvider().List(InMemory(u"/kept")).entries.size();
  }

  MemoryStorage storage_ = std::move(MemoryStorage().WithFiles({u"/a/x.vnx", u"/b/y.vnx"}).WithFolders({u"/kept"}));
  AbsoluteIRI file_ = InMemory(u"/kept/then");
};

TEST_F(ASnapshotFile, GivesBackWhatWasWritten) {
  const PathSnapshot snapshot = SnapshotOf({u"/a", u"/b"});

  WriteSnapshotFile(System(), file_, snapshot);

  EXPECT_EQ(ReadSnapshotFile(System(), file_).ToBytes(), snapshot.ToBytes());
  EXPECT_EQ(FilesBeside(), 1U);
}

TEST_F(ASnapshotFile, SharesWithAPredecessorWhatIsTheSame) {
  WriteSnapshotFile(System(), file_, SnapshotOf({u"/a", u"/b"}));
  const PathSnapshot before = SnapshotOf({u"/b"});

  const PathSnapshot after = ReadSnapshotFile(System(), file_, before.path.get());

  EXPECT_EQ((*after.path->GetMainEntries())[1], (*before.path->GetMainEntries())[0]);
}

TEST_F(ASnapshotFile, NamesTheFileAndTheLineThatIsDamaged) {
  ReplaceWholeFile(storage_.GetProvider(), file_, {"not a snapshot\n"}, Durability::Whole);

  EXPECT_THAT(
      [&] { static_cast<void>(ReadSnapshotFile(System(), file_)); },
      Throws<SnapshotError>(
          AllOf(Property(&SnapshotError::GetLine, 1U),
                Property(&SnapshotError::what,
                         StrEq("the snapshot \"memory:///kept/then\" cannot be used: line 1: this is no snapshot of a "
                               "path, or it was cut off")))));
}

TEST_F(ASnapshotFile, TakesThePlaceOfASnapshotOrOfAnEmptyFileOnly) {
  ReplaceWholeFile(storage_.GetProvider(), file_, {""}, Durability::Whole);
  WriteSnapshotFile(System(), file_, SnapshotOf({u"/a"}));
  WriteSnapshotFile(System(), file_, SnapshotOf({u"/b"}));
  EXPECT_EQ(ReadSnapshotFile(System(), file_).ToBytes(), SnapshotOf({u"/b"}).ToBytes());

  ReplaceWholeFile(storage_.GetProvider(), file_, {"somebody's work"}, Durability::Whole);
  EXPECT_THAT([&] { WriteSnapshotFile(System(), file_, SnapshotOf({u"/a"})); },
              Throws<Exception>(Property(&Exception::GetError, std::errc::file_exists)));
  EXPECT_EQ(ReadWholeFile(storage_.GetProvider(), file_), "somebody's work");
}

TEST_F(ASnapshotFile, TakesThePlaceOfNoFolderAndNoLinkThatLeadsNowhere) {
  storage_.WithFolders({u"/kept/folder"}).WithLink(u"/kept/link", u"/nowhere");

  for (const auto* const name : {u"/kept/folder", u"/kept/link"}) {
    EXPECT_THAT([&] { WriteSnapshotFile(System(), InMemory(name), SnapshotOf({u"/a"})); },
                Throws<Exception>(Property(&Exception::GetError, std::errc::operation_not_supported)));
  }
  EXPECT_EQ(FilesBeside(), 2U);
}

TEST_F(ASnapshotFile, IsTheOldOneStillWhateverFailsWhileANewOneIsWritten) {
  const PathSnapshot old = SnapshotOf({u"/a"});
  const PathSnapshot other = SnapshotOf({u"/b"});
  WriteSnapshotFile(System(), file_, old);
  const auto storage = storage_.Through<FailingStorageProvider>();

  std::size_t call = 1;
  for (;; ++call) {
    storage->Clear();
    storage->Plan({std::nullopt, std::nullopt, call, std::make_error_code(std::errc::no_space_on_device)});
    const std::size_t failures = storage->GetFailureCount();
    try {
      WriteSnapshotFile(System(), file_, other);
      if (storage->GetFailureCount() == failures) break;
    } catch (const Exception&) {
      storage->Clear();
      EXPECT_EQ(ReadSnapshotFile(System(), file_).ToBytes(), old.ToBytes()) << call;
      EXPECT_EQ(FilesBeside(), 1U) << "a draft is left, " << call;
    }
  }
  storage->Clear();
  EXPECT_GT(call, 5U) << "too few calls failed to show anything";
  EXPECT_EQ(ReadSnapshotFile(System(), file_).ToBytes(), other.ToBytes());
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
