#include <gmock/gmock.h>

#include <fakes/failing_storage_provider.hpp>
#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <foundation/storage/vfs/ofstream.hpp>
#include <string>
#include <support/storage_matchers.hpp>

namespace foundation::storage::vfs {
namespace {

using fakes::FailingStorageProvider;
using fakes::StorageOperation;

constexpr auto kOut = std::ios_base::out;

class OfstreamTest : public testing::Test {
 protected:
  [[nodiscard]] std::string Content() const {
    const auto bytes = memory_->Map(location_);
    return {reinterpret_cast<const char*>(bytes->data()), bytes->size()};
  }

  void FailOn(StorageOperation operation) {
    storage_->Plan({.operation = operation, .error = std::make_error_code(std::errc::no_space_on_device)});
  }

  const AbsoluteIRI location_{u"memory:///f"};
  std::shared_ptr<MemoryStorageProvider> memory_ = std::make_shared<MemoryStorageProvider>();
  std::shared_ptr<FailingStorageProvider> storage_ = std::make_shared<FailingStorageProvider>(memory_);
  MountHandle mount_ = VornixStorageSystem::Mount(u"memory", storage_);
  File file_{location_, VornixStorageSystem::GetStorageSystemReference()};
  ofstream stream_;
};

TEST_F(OfstreamTest, WritesWhatIsPutIntoIt) {
  stream_.open(file_, kOut);
  stream_ << "answer: " << 42 << '\n';
  stream_.close();

  EXPECT_EQ(Content(), "answer: 42\n");
  EXPECT_FALSE(stream_.is_open());
}

TEST_F(OfstreamTest, WritesMoreThanItGathers) {
  const std::string much(100'000, 'x');
  stream_.open(file_, kOut);
  stream_ << much << 'y';
  stream_.close();

  EXPECT_EQ(Content(), much + "y");
}

TEST_F(OfstreamTest, EmptiesTheFileThatIsThere) {
  memory_->AddFile(u"/f", "old content");
  stream_.open(file_, kOut);
  stream_ << "new";
  stream_.close();

  EXPECT_EQ(Content(), "new");
}

TEST_F(OfstreamTest, GoesOnAtTheEndWhenItAppends) {
  memory_->AddFile(u"/f", "old,");
  stream_.open(file_, kOut | std::ios_base::app);
  stream_ << "new";
  stream_.close();

  EXPECT_EQ(Content(), "old,new");
}

TEST_F(OfstreamTest, WritesBytesAsTheyAreInEveryMode) {
  stream_.open(file_, kOut | std::ios_base::binary | std::ios_base::trunc | std::ios_base::ate);
  stream_ << "a\r\nb\n";
  stream_.close();

  EXPECT_EQ(Content(), "a\r\nb\n");
}

TEST_F(OfstreamTest, ShowsWhatWasFlushed) {
  stream_.open(file_, kOut);
  stream_ << "part" << std::flush;

  EXPECT_EQ(Content(), "part");
}

TEST_F(OfstreamTest, ClosesWhenItGoes) {
  {
    ofstream stream;
    stream.open(file_, kOut);
    stream << "kept";
  }
  EXPECT_EQ(Content(), "kept");
}

TEST_F(OfstreamTest, WritesThroughAnAlias) {
  const MountHandle alias = VornixStorageSystem::MountAlias(u"ram", u"memory");
  stream_.open(File(AbsoluteIRI(u"ram:///f"), VornixStorageSystem::GetStorageSystemReference()), kOut);
  stream_ << "there";
  stream_.close();

  EXPECT_EQ(Content(), "there");
}

TEST_F(OfstreamTest, ThrowsWhenStorageRefusesToOpen) {
  FailOn(StorageOperation::OpenForWriting);

  EXPECT_THAT([&] { stream_.open(file_, kOut); },
              FailsAbout(u"memory:///f", "cannot open \"memory:///f\": No space left on device"));
  EXPECT_FALSE(stream_.is_open());
}

TEST_F(OfstreamTest, ThrowsWhenAskedForMoreThanWriting) {
  EXPECT_THAT([&] { stream_.open(file_, kOut | std::ios_base::in); }, FailsWith(std::errc::invalid_argument));
  EXPECT_THAT([&] { stream_.open(file_, std::ios_base::openmode()); }, FailsWith(std::errc::invalid_argument));
  EXPECT_THAT([&] { stream_.open(file_, std::ios_base::app | std::ios_base::trunc); },
              FailsWith(std::errc::invalid_argument));
}

TEST_F(OfstreamTest, ThrowsWhenAFileIsOpenAlreadyAndKeepsThatOne) {
  stream_.open(file_, kOut);

  EXPECT_THAT([&] { stream_.open(file_, kOut); }, FailsWith(std::errc::device_or_resource_busy));

  stream_ << "still here";
  stream_.close();
  EXPECT_EQ(Content(), "still here");
}

TEST_F(OfstreamTest, FailsToWriteWhenNothingIsOpen) {
  stream_ << "lost";
  EXPECT_TRUE(stream_.bad());
}

TEST_F(OfstreamTest, TurnsBadWhenAWriteFails) {
  stream_.open(file_, kOut);
  FailOn(StorageOperation::Write);

  stream_ << "lost" << std::flush;

  EXPECT_TRUE(stream_.bad());
}

TEST_F(OfstreamTest, ThrowsStoragesOwnExceptionWhenTheMaskAsksForIt) {
  stream_.open(file_, kOut);
  stream_.exceptions(std::ios_base::badbit | std::ios_base::failbit);
  FailOn(StorageOperation::Write);

  EXPECT_THAT([&] { stream_ << std::string(100'000, 'x'); },
              FailsAbout(u"memory:///f", "cannot write \"memory:///f\": No space left on device"));
}

TEST_F(OfstreamTest, DropsAfterAFailedWriteWhatCouldNotBeWrittenAndClosesQuietly) {
  stream_.open(file_, kOut);
  stream_.exceptions(std::ios_base::badbit | std::ios_base::failbit);
  FailOn(StorageOperation::Write);
  EXPECT_ANY_THROW(stream_ << "lost" << std::flush);

  EXPECT_NO_THROW(stream_.close());

  EXPECT_EQ(Content(), "");
  EXPECT_EQ(storage_->GetFailureCount(), 1U);
  EXPECT_NO_THROW(file_.removeFile());
}

TEST_F(OfstreamTest, TakesNothingMoreAfterAFailedWriteEvenWhenItsStateIsCleared) {
  stream_.open(file_, kOut);
  FailOn(StorageOperation::Write);
  stream_ << "lost" << std::flush;

  stream_.clear();
  stream_ << "more" << std::flush;

  EXPECT_TRUE(stream_.bad());
  EXPECT_EQ(Content(), "");
}

TEST_F(OfstreamTest, ThrowsOnceWhenTheLastWriteFailsAtTheClose) {
  stream_.open(file_, kOut);
  stream_ << "lost";
  FailOn(StorageOperation::Write);

  EXPECT_THAT([&] { stream_.close(); }, FailsWith(std::errc::no_space_on_device));

  EXPECT_TRUE(stream_.bad());
  EXPECT_FALSE(stream_.is_open());
  EXPECT_NO_THROW(stream_.close());
}

TEST_F(OfstreamTest, ThrowsStoragesExceptionFromTheCloseWhateverTheMaskSays) {
  stream_.open(file_, kOut);
  stream_.exceptions(std::ios_base::badbit | std::ios_base::failbit);
  FailOn(StorageOperation::Close);

  EXPECT_THAT([&] { stream_.close(); },
              FailsAbout(u"memory:///f", "cannot close \"memory:///f\": No space left on device"));
}

TEST_F(OfstreamTest, KeepsSilentAboutAFailedWriteWhenItGoes) {
  EXPECT_NO_THROW({
    ofstream stream;
    stream.open(file_, kOut);
    stream << "lost";
    FailOn(StorageOperation::Write);
  });
  EXPECT_EQ(storage_->GetFailureCount(), 1U);
}

TEST_F(OfstreamTest, MayBeOpenedAgain) {
  stream_.open(file_, kOut);
  FailOn(StorageOperation::Write);
  stream_ << "lost" << std::flush;
  stream_.close();

  stream_.open(file_, kOut);
  stream_ << "written";
  stream_.close();

  EXPECT_TRUE(stream_.good());
  EXPECT_EQ(Content(), "written");
}

}  // namespace
}  // namespace foundation::storage::vfs
