#include <gtest/gtest.h>

#include <fakes/counting_storage_provider.hpp>
#include <foundation/storage/vfs/memory_storage_provider.hpp>

namespace foundation::storage::fakes {
namespace {

using vfs::AbsoluteIRI;

class CountingStorage : public testing::Test {
 protected:
  CountingStorage() { memory_->AddFile(u"/f", "content"); }

  const AbsoluteIRI root_{u"memory:///"};
  const AbsoluteIRI file_{u"memory:///f"};
  std::shared_ptr<vfs::MemoryStorageProvider> memory_ = std::make_shared<vfs::MemoryStorageProvider>();
  CountingStorageProvider storage_{memory_};
};

TEST_F(CountingStorage, CountsByOperationAndByLocation) {
  static_cast<void>(storage_.List(root_));
  storage_.CheckFolder(root_);
  static_cast<void>(storage_.Stat(root_));
  static_cast<void>(storage_.Stat(file_));

  EXPECT_EQ(storage_.GetCount(), 4U);
  EXPECT_EQ(storage_.GetCount(StorageOperation::List), 1U);
  EXPECT_EQ(storage_.GetCount(StorageOperation::CheckFolder, root_), 1U);
  EXPECT_EQ(storage_.GetCount(StorageOperation::Stat), 2U);
  EXPECT_EQ(storage_.GetCount(StorageOperation::Stat, file_), 1U);
  EXPECT_EQ(storage_.GetCount(StorageOperation::Remove), 0U);
}

TEST_F(CountingStorage, CountsFailedCallsToo) {
  EXPECT_ANY_THROW(storage_.Remove(root_.getChild(u"missing")));
  EXPECT_EQ(storage_.GetCount(StorageOperation::Remove), 1U);
}

TEST_F(CountingStorage, CountsTheCallsToOpenedFiles) {
  const auto file = storage_.OpenForWriting(file_, vfs::WriteMode::Append);
  file->Write({});
  file->Flush();
  file->Close();

  EXPECT_EQ(storage_.GetCount(StorageOperation::Write, file_), 1U);
  EXPECT_EQ(storage_.GetCount(StorageOperation::Flush, file_), 1U);
  EXPECT_EQ(storage_.GetCount(StorageOperation::Close, file_), 1U);
}

TEST_F(CountingStorage, StartsAgainFromZero) {
  static_cast<void>(storage_.List(root_));

  storage_.Reset();

  EXPECT_EQ(storage_.GetCount(), 0U);
  EXPECT_EQ(storage_.GetCount(StorageOperation::List, root_), 0U);
}

}  // namespace
}  // namespace foundation::storage::fakes
