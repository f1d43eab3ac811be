#include <gmock/gmock.h>

#include <fakes/failing_storage_provider.hpp>
#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <support/storage_matchers.hpp>

namespace foundation::storage::fakes {
namespace {

using vfs::AbsoluteIRI;
using vfs::FailsAbout;
using vfs::FailsWith;

class FailingStorage : public testing::Test {
 protected:
  FailingStorage() { memory_->AddFile(u"/f", "content"); }

  const std::error_code refused_ = std::make_error_code(std::errc::permission_denied);
  const AbsoluteIRI root_{u"memory:///"};
  const AbsoluteIRI file_{u"memory:///f"};
  std::shared_ptr<vfs::MemoryStorageProvider> memory_ = std::make_shared<vfs::MemoryStorageProvider>();
  FailingStorageProvider storage_{memory_};
};

TEST_F(FailingStorage, FailsAtTheCallThatWasPlannedAndAtNoOther) {
  storage_.Plan({.operation = StorageOperation::List, .call = 2, .error = refused_});

  EXPECT_NO_THROW(static_cast<void>(storage_.List(root_)));
  EXPECT_THAT([&] { return storage_.List(root_); },
              FailsAbout(u"memory:///", "cannot list \"memory:///\": Permission denied"));
  EXPECT_NO_THROW(static_cast<void>(storage_.List(root_)));
  EXPECT_EQ(storage_.GetFailureCount(), 1U);
}

TEST_F(FailingStorage, FailsFromThatCallOnWhenTheFaultPersists) {
  storage_.Plan(
      {.operation = StorageOperation::Stat, .call = 2, .error = refused_, .persistence = Persistence::Persistent});

  EXPECT_NO_THROW(static_cast<void>(storage_.Stat(file_)));
  EXPECT_THAT([&] { return storage_.Stat(file_); }, FailsWith(std::errc::permission_denied));
  EXPECT_THAT([&] { return storage_.Stat(file_); }, FailsWith(std::errc::permission_denied));
}

TEST_F(FailingStorage, FailsAtOneLocationWhateverTheOperation) {
  storage_.Plan({.location = file_, .persistence = Persistence::Persistent});

  EXPECT_NO_THROW(static_cast<void>(storage_.List(root_)));
  EXPECT_THAT([&] { return storage_.Stat(file_); }, FailsWith(std::errc::io_error));
  EXPECT_THAT([&] { return storage_.OpenForReading(file_); }, FailsWith(std::errc::io_error));
}

TEST_F(FailingStorage, CountsEveryCallWhenTheFaultNamesNone) {
  storage_.Plan({.call = 3});

  static_cast<void>(storage_.Stat(file_));
  const auto file = storage_.OpenForReading(file_);

  std::byte bytes[1];
  EXPECT_THAT([&] { return file->Read(bytes); },
              FailsAbout(u"memory:///f", "cannot read \"memory:///f\": Input/output error"));
  EXPECT_EQ(file->Read(bytes), 1U);
}

TEST_F(FailingStorage, KeepsAFailedCallFromTheInnerStorage) {
  storage_.Plan({.operation = StorageOperation::Remove});

  EXPECT_THAT([&] { storage_.Remove(file_); }, FailsWith(std::errc::io_error));

  EXPECT_NO_THROW(static_cast<void>(memory_->Stat(file_)));
}

TEST_F(FailingStorage, CanFailEveryOperation) {
  const auto reading = storage_.OpenForReading(file_);
  const auto writing = storage_.OpenForWriting(file_, vfs::WriteMode::Append);
  storage_.Plan({.persistence = Persistence::Persistent});
  std::byte bytes[1]{};
  const auto failed = FailsWith(std::errc::io_error);

  EXPECT_THAT([&] { return storage_.List(root_); }, failed);
  EXPECT_THAT([&] { storage_.CheckFolder(root_); }, failed);
  EXPECT_THAT([&] { return storage_.Stat(file_); }, failed);
  EXPECT_THAT([&] { return storage_.CanonicalLocation(file_); }, failed);
  EXPECT_THAT([&] { return storage_.ComparesNamesExactly(root_); }, failed);
  EXPECT_THAT([&] { return storage_.OpenForReading(file_); }, failed);
  EXPECT_THAT([&] { return reading->Read(bytes); }, failed);
  EXPECT_THAT([&] { return storage_.Map(file_); }, failed);
  EXPECT_THAT([&] { return storage_.OpenForWriting(file_, vfs::WriteMode::Append); }, failed);
  EXPECT_THAT([&] { writing->Write(bytes); }, failed);
  EXPECT_THAT([&] { writing->Flush(); }, failed);
  EXPECT_THAT([&] { writing->Close(); }, failed);
  EXPECT_THAT([&] { storage_.FlushFolder(root_); }, failed);
  EXPECT_THAT([&] { storage_.Rename(file_, root_.getChild(u"g")); }, failed);
  EXPECT_THAT([&] { storage_.Remove(file_); }, failed);
  EXPECT_THAT([&] { storage_.CreateFolder(root_.getChild(u"d")); }, failed);
  EXPECT_THAT([&] { return storage_.Lock(file_, std::chrono::milliseconds(0)); }, failed);
  EXPECT_EQ(storage_.GetFailureCount(), 17U);
}

TEST_F(FailingStorage, WorksAgainWhenItsFaultsAreForgotten) {
  storage_.Plan({.persistence = Persistence::Persistent});

  storage_.Clear();

  EXPECT_NO_THROW(static_cast<void>(storage_.Stat(file_)));
}

TEST_F(FailingStorage, CountsForEachFaultByItself) {
  storage_.Plan({.operation = StorageOperation::Stat, .call = 1, .error = refused_});
  storage_.Plan({.operation = StorageOperation::Stat, .call = 2});

  EXPECT_THAT([&] { return storage_.Stat(file_); }, FailsWith(std::errc::permission_denied));
  EXPECT_THAT([&] { return storage_.Stat(file_); }, FailsWith(std::errc::io_error));
  EXPECT_NO_THROW(static_cast<void>(storage_.Stat(file_)));
}

}  // namespace
}  // namespace foundation::storage::fakes
