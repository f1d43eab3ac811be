// A platform whose stream opens its file, and is left failed by that all the same. Ours never is, but others may be.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <foundation/storage/vfs/ofstream.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <memory>
#include <search_path_utilities/services.hpp>
#include <support/mock_factories.hpp>

namespace foundation::storage::vfs {

// Stands before the platform's own, because a program comes before the libraries that it links.
void ofstream::open(const File& file, std::ios_base::openmode mode) {
  const auto provider = file.getStorageSystem().ProviderFor(file.getLocation());
  provider->OpenForWriting(file.getLocation(), WriteMode::Truncate)->Close();
  setstate(mode == std::ios_base::out ? std::ios_base::failbit : std::ios_base::goodbit);
}

}  // namespace foundation::storage::vfs

namespace Quorvex::PathManagement {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::MemoryStorageProvider;
using foundation::storage::vfs::VornixStorageSystem;

TEST(ToolboxPathCacheOverAStreamThatOpeningLeftFailed, IsRemovedAndTheFactoryIsNotAsked) {
  const auto memory = std::make_shared<MemoryStorageProvider>();
  const auto mount = VornixStorageSystem::Mount(u"memory", memory);
  memory->AddFile(u"/cache", "old");
  const testing::StrictMock<support::MockPathEntryFactory> factory;

  EXPECT_THROW(WriteToolboxPathCache(AbsoluteIRI(u"memory:///cache"), AbsoluteIRI(u"file:///toolbox"), factory),
               UnableToSaveToolboxCacheException);

  EXPECT_TRUE(memory->List(AbsoluteIRI(u"memory:///")).entries.empty());
}

}  // namespace
}  // namespace Quorvex::PathManagement
