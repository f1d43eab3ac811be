#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <memory>
#include <search_path_utilities/path_editing.hpp>
#include <string>
#include <support/storage_matchers.hpp>

namespace Quorvex::PathManagement {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::FailsWith;
using foundation::storage::vfs::MemoryStorageProvider;
using foundation::storage::vfs::VornixStorageSystem;
using testing::Property;
using testing::Throws;

/// A tree in memory, mounted under `memory`.
class GetCanonicalIRITest : public testing::Test {
 protected:
  std::shared_ptr<MemoryStorageProvider> memory_ = std::make_shared<MemoryStorageProvider>();
  foundation::storage::vfs::MountHandle mount_ = VornixStorageSystem::Mount(u"memory", memory_);
};

TEST_F(GetCanonicalIRITest, FollowsLinks) {
  memory_->AddFolder(u"/real/sub");
  memory_->AddLink(u"/link", u"/real");

  EXPECT_EQ(GetCanonicalIRI(AbsoluteIRI(u"memory:///link")).getAbsoluteIRI(), AbsoluteIRI(u"memory:///real"));
  EXPECT_EQ(GetCanonicalIRI(AbsoluteIRI(u"memory:///link/sub")).getAbsoluteIRI(), AbsoluteIRI(u"memory:///real/sub"));
}

TEST_F(GetCanonicalIRITest, LeavesAPlainFolderAsItIs) {
  memory_->AddFolder(u"/real");

  EXPECT_EQ(GetCanonicalIRI(AbsoluteIRI(u"memory:///real")).getAbsoluteIRI(), AbsoluteIRI(u"memory:///real"));
}

TEST_F(GetCanonicalIRITest, ShowsTheLocationAsItWasGiven) {
  memory_->AddFolder(u"/real");
  memory_->AddLink(u"/link", u"/real");

  EXPECT_EQ(GetCanonicalIRI(AbsoluteIRI(u"memory:///link")).getShownText(), u"memory:///link");
}

TEST_F(GetCanonicalIRITest, PlacesWhatIsMissingInItsDeepestExistingFolder) {
  memory_->AddFolder(u"/real");
  memory_->AddLink(u"/link", u"/real");

  EXPECT_EQ(GetCanonicalIRI(AbsoluteIRI(u"memory:///link/gone/x")).getAbsoluteIRI(),
            AbsoluteIRI(u"memory:///real/gone/x"));
}

TEST_F(GetCanonicalIRITest, AsksTheSessionsStorageAnewEachTime) {
  memory_->AddFolder(u"/real");
  memory_->AddFolder(u"/other");
  memory_->AddLink(u"/link", u"/real");
  const AbsoluteIRI link(u"memory:///link");
  const auto before = GetCanonicalIRI(link);

  memory_->AddLink(u"/link", u"/other");

  EXPECT_EQ(before.getAbsoluteIRI(), AbsoluteIRI(u"memory:///real"));
  EXPECT_EQ(GetCanonicalIRI(link).getAbsoluteIRI(), AbsoluteIRI(u"memory:///other"));
}

TEST_F(GetCanonicalIRITest, LetsTheFailureOfStoragePass) {
  memory_->AddLink(u"/loop", u"/loop");

  EXPECT_THAT([] { return GetCanonicalIRI(AbsoluteIRI(u"memory:///loop")); },
              FailsWith(std::errc::too_many_symbolic_link_levels));
}

TEST_F(GetCanonicalIRITest, FailsUnderASchemeThatNothingServes) {
  EXPECT_THAT([] { return GetCanonicalIRI(AbsoluteIRI(u"nowhere-mounted:///a")); },
              Throws<Exception>(Property(&Exception::GetOffendingText, u"nowhere-mounted:///a")));
}

TEST_F(GetCanonicalIRITest, FailsForARelativePathWhichNoStorageAccepts) {
  EXPECT_THAT([] { return GetCanonicalIRI(GetIRIFromString(u"a/b")); },
              Throws<Exception>(Property(&Exception::GetOffendingText, u"file:a/b")));
}

}  // namespace
}  // namespace Quorvex::PathManagement
