#include <gmock/gmock.h>

#include <foundation/storage/vfs/file.hpp>
#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <support/storage_matchers.hpp>

namespace foundation::storage::vfs {
namespace {

class FileTest : public testing::Test {
 protected:
  [[nodiscard]] static File At(const std::u16string& text) {
    return {AbsoluteIRI(text), VornixStorageSystem::GetStorageSystemReference()};
  }

  std::shared_ptr<MemoryStorageProvider> storage_ = std::make_shared<MemoryStorageProvider>();
  MountHandle mount_ = VornixStorageSystem::Mount(u"memory", storage_);
};

TEST_F(FileTest, FollowsLinksToItsCanonicalLocation) {
  storage_->AddFile(u"/real/f");
  storage_->AddLink(u"/link", u"real");

  const File file = At(u"memory:///link/f");

  EXPECT_EQ(file.getLocation(), AbsoluteIRI(u"memory:///link/f"));
  EXPECT_EQ(file.getCanonicalLocation().getAbsoluteIRI(), AbsoluteIRI(u"memory:///real/f"));
}

TEST_F(FileTest, RemovesItself) {
  storage_->AddFile(u"/f");

  At(u"memory:///f").removeFile();

  EXPECT_THAT([&] { return storage_->Stat(AbsoluteIRI(u"memory:///f")); },
              FailsWith(std::errc::no_such_file_or_directory));
}

TEST_F(FileTest, RemovesItselfThroughAnAlias) {
  const MountHandle alias = VornixStorageSystem::MountAlias(u"ram", u"memory");
  storage_->AddFile(u"/f");

  At(u"ram:///f").removeFile();

  EXPECT_TRUE(storage_->List(AbsoluteIRI(u"memory:///")).entries.empty());
}

TEST_F(FileTest, CannotBeRemovedWhenItIsNotThere) {
  EXPECT_THAT([] { At(u"memory:///no").removeFile(); },
              FailsAbout(u"memory:///no", "cannot remove \"memory:///no\": No such file or directory"));
}

}  // namespace
}  // namespace foundation::storage::vfs
