#include <gmock/gmock.h>

#include <fakes/forbidding_storage_provider.hpp>
#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <stdexcept>

namespace foundation::storage::fakes {
namespace {

using testing::ThrowsMessage;
using vfs::AbsoluteIRI;

class ForbiddingStorage : public testing::Test {
 protected:
  ForbiddingStorage() { memory_->AddFolder(u"/d"); }

  const AbsoluteIRI folder_{u"memory:///d"};
  std::shared_ptr<vfs::MemoryStorageProvider> memory_ = std::make_shared<vfs::MemoryStorageProvider>();
  ForbiddingStorageProvider storage_{memory_};
};

TEST_F(ForbiddingStorage, LetsEachFolderBeListedOnce) {
  EXPECT_NO_THROW(static_cast<void>(storage_.List(folder_)));
  EXPECT_NO_THROW(static_cast<void>(storage_.List(folder_.getParent())));
  EXPECT_THAT([&] { return storage_.List(folder_); },
              ThrowsMessage<std::logic_error>("a folder is listed twice: list memory:///d"));
}

TEST_F(ForbiddingStorage, LetsOtherCallsBeRepeated) {
  static_cast<void>(storage_.Stat(folder_));
  storage_.CheckFolder(folder_);
  EXPECT_NO_THROW(static_cast<void>(storage_.Stat(folder_)));
  EXPECT_NO_THROW(storage_.CheckFolder(folder_));
}

TEST_F(ForbiddingStorage, RefusesEveryCallWhileCallsAreForbidden) {
  storage_.Forbid();

  EXPECT_THAT([&] { return storage_.Stat(folder_); },
              ThrowsMessage<std::logic_error>("storage is forbidden: examine memory:///d"));
  EXPECT_THAT([&] { storage_.CheckFolder(folder_); },
              ThrowsMessage<std::logic_error>("storage is forbidden: check memory:///d"));
}

TEST_F(ForbiddingStorage, AllowsCallsAgainAndForgetsWhatWasListed) {
  static_cast<void>(storage_.List(folder_));
  storage_.Forbid();

  storage_.Permit();

  EXPECT_NO_THROW(static_cast<void>(storage_.List(folder_)));
}

}  // namespace
}  // namespace foundation::storage::fakes
