#include <gmock/gmock.h>

#include <foundation/storage/vfs/folder.hpp>
#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <support/storage_matchers.hpp>

namespace foundation::storage::vfs {
namespace {

class FolderTest : public testing::Test {
 protected:
  [[nodiscard]] static Folder At(const std::u16string& text) {
    return {AbsoluteIRI(text), VornixStorageSystem::GetStorageSystemReference()};
  }

  std::shared_ptr<MemoryStorageProvider> storage_ = std::make_shared<MemoryStorageProvider>();
  MountHandle mount_ = VornixStorageSystem::Mount(u"memory", storage_);
};

TEST_F(FolderTest, KeepsItsLocationAsGiven) {
  EXPECT_EQ(At(u"memory:///link/a").getLocation(), AbsoluteIRI(u"memory:///link/a"));
}

TEST_F(FolderTest, FollowsLinksToItsCanonicalLocation) {
  storage_->AddFolder(u"/real/a");
  storage_->AddLink(u"/link", u"/real");

  const CanonicalAbsoluteIRI canonical = At(u"memory:///link/a").getCanonicalLocation();

  EXPECT_EQ(canonical.getAbsoluteIRI(), AbsoluteIRI(u"memory:///real/a"));
  EXPECT_EQ(canonical.getShownText(), u"memory:///link/a");
}

TEST_F(FolderTest, FollowsAliasesToItsCanonicalLocation) {
  const MountHandle alias = VornixStorageSystem::MountAlias(u"ram", u"memory");
  storage_->AddFolder(u"/a");

  EXPECT_EQ(At(u"ram:///a").getCanonicalLocation().getAbsoluteIRI(), AbsoluteIRI(u"memory:///a"));
}

TEST_F(FolderTest, HasACanonicalLocationEvenWhenItIsMissing) {
  EXPECT_EQ(At(u"memory:///no/where").getCanonicalLocation().getAbsoluteIRI(), AbsoluteIRI(u"memory:///no/where"));
}

TEST_F(FolderTest, PassesStoragesRefusalOn) {
  EXPECT_THAT([] { return At(u"nobody:///a").getCanonicalLocation(); }, FailsWith(std::errc::protocol_not_supported));
  EXPECT_THAT([] { return At(u"memory:rel").getCanonicalLocation(); }, FailsWith(std::errc::invalid_argument));
}

}  // namespace
}  // namespace foundation::storage::vfs
