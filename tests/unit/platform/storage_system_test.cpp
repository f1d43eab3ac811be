#include <gmock/gmock.h>

#include <foundation/storage/vfs/file_storage_provider.hpp>
#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <stdexcept>
#include <support/run_together.hpp>
#include <support/storage_matchers.hpp>
#include <utility>

namespace foundation::storage::vfs {
namespace {

std::shared_ptr<IStorageProvider> Provider() { return std::make_shared<MemoryStorageProvider>(); }

std::shared_ptr<IStorageProvider> Find(const std::u16string& scheme) {
  return VornixStorageSystem::GetStorageSystemReference().FindProvider(scheme);
}

TEST(StorageSystem, ServesLocalFilesFromTheStart) {
  EXPECT_NE(dynamic_cast<FileStorageProvider*>(Find(u"file").get()), nullptr);
}

TEST(StorageSystem, ServesASchemeAsLongAsItIsMounted) {
  const auto provider = Provider();
  {
    const MountHandle handle = VornixStorageSystem::Mount(u"Mounted", provider);
    EXPECT_EQ(Find(u"mounted"), provider);
  }
  EXPECT_EQ(Find(u"mounted"), nullptr);
  EXPECT_EQ(provider.use_count(), 1);
}

TEST(StorageSystem, RestoresThePreviousProvider) {
  const auto first = Provider();
  const auto second = Provider();
  const MountHandle outer = VornixStorageSystem::Mount(u"stacked", first);
  {
    const MountHandle inner = VornixStorageSystem::Mount(u"stacked", second);
    EXPECT_EQ(Find(u"stacked"), second);
  }
  EXPECT_EQ(Find(u"stacked"), first);
}

TEST(StorageSystem, LetsHandlesGoInAnyOrder) {
  const auto second = Provider();
  MountHandle outer = VornixStorageSystem::Mount(u"anyorder", Provider());
  MountHandle inner = VornixStorageSystem::Mount(u"anyorder", second);

  outer.Release();
  EXPECT_EQ(Find(u"anyorder"), second);
  inner.Release();
  EXPECT_EQ(Find(u"anyorder"), nullptr);
}

TEST(StorageSystem, GivesTheProviderOfAnIdentifier) {
  const auto provider = Provider();
  const MountHandle handle = VornixStorageSystem::Mount(u"forit", provider);

  EXPECT_EQ(VornixStorageSystem::GetStorageSystemReference().ProviderFor(AbsoluteIRI(u"forit:///a")), provider);
}

TEST(StorageSystem, NamesTheIdentifierThatNobodyServes) {
  EXPECT_THAT([] { return VornixStorageSystem::GetStorageSystemReference().ProviderFor(AbsoluteIRI(u"nobody:///a")); },
              FailsAbout(u"nobody:///a", "cannot find storage for \"nobody:///a\": no storage serves its scheme"));
}

TEST(StorageSystem, RefusesAMalformedSchemeAndANullProvider) {
  EXPECT_THAT([] { return VornixStorageSystem::Mount(u"x", Provider()); },
              FailsAbout(u"x", "malformed identifier \"x\": it is no scheme"));
  EXPECT_THAT([] { return VornixStorageSystem::MountAlias(u"ok", u"not ok"); },
              FailsAbout(u"not ok", "malformed identifier \"not ok\": it is no scheme"));
  EXPECT_THROW(static_cast<void>(VornixStorageSystem::Mount(u"nothing", nullptr)), std::invalid_argument);
}

TEST(StorageSystem, ResolvesAnAliasToTheSchemeItStandsFor) {
  const auto provider = Provider();
  const MountHandle mount = VornixStorageSystem::Mount(u"target", provider);
  const MountHandle alias = VornixStorageSystem::MountAlias(u"alias", u"target");
  const MountHandle aliasOfAlias = VornixStorageSystem::MountAlias(u"other", u"alias");

  EXPECT_EQ(Find(u"other"), provider);
  EXPECT_EQ(AbsoluteIRI(u"other:///a%25").getResolvedIRI(), AbsoluteIRI(u"target:///a%25"));
  EXPECT_EQ(AbsoluteIRI(u"other:a").getResolvedIRI(), AbsoluteIRI(u"target:a"));
  EXPECT_EQ(AbsoluteIRI(u"target:///a").getResolvedIRI(), AbsoluteIRI(u"target:///a"));
}

TEST(StorageSystem, GivesAResolvedIdentifierTheNormalFormOfItsNewScheme) {
  const MountHandle alias = VornixStorageSystem::MountAlias(u"disk", u"file");

  EXPECT_EQ(AbsoluteIRI(u"disk://localhost/a//b").getResolvedIRI().toString(), u"file:///a/b");
}

TEST(StorageSystem, ForgetsAnAliasWithItsHandle) {
  { const MountHandle alias = VornixStorageSystem::MountAlias(u"brief", u"file"); }

  EXPECT_EQ(AbsoluteIRI(u"brief:///a").getResolvedIRI(), AbsoluteIRI(u"brief:///a"));
  EXPECT_EQ(Find(u"brief"), nullptr);
}

TEST(StorageSystem, RefusesAnAliasThatLeadsBackToItself) {
  const MountHandle alias = VornixStorageSystem::MountAlias(u"ring", u"rung");

  EXPECT_THROW(static_cast<void>(VornixStorageSystem::MountAlias(u"rung", u"ring")), std::invalid_argument);
  EXPECT_THROW(static_cast<void>(VornixStorageSystem::MountAlias(u"self", u"self")), std::invalid_argument);
}

TEST(StorageSystem, ServesNobodyOnARingOfAliasesThatHandlesClosedByGoing) {
  const MountHandle there = VornixStorageSystem::MountAlias(u"there", u"back");
  MountHandle hidesIt = VornixStorageSystem::Mount(u"there", Provider());
  const MountHandle back = VornixStorageSystem::MountAlias(u"back", u"there");

  hidesIt.Release();

  EXPECT_EQ(Find(u"there"), nullptr);
  EXPECT_EQ(AbsoluteIRI(u"back:///a").getResolvedIRI(), AbsoluteIRI(u"back:///a"));
}

TEST(StorageSystem, ShowsAMountToEveryReference) {
  const StorageSystemReference early = VornixStorageSystem::GetStorageSystemReference();
  const auto provider = Provider();

  const MountHandle handle = VornixStorageSystem::Mount(u"late", provider);

  EXPECT_EQ(early.FindProvider(u"late"), provider);
}

TEST(StorageSystem, MayBeChangedAndAskedByManyThreads) {
  const auto provider = Provider();
  std::vector<char> served(8, 1);

  Quorvex::PathManagement::support::RunTogether(served.size(), [&](std::size_t index) {
    for (int round = 0; round < 200; ++round) {
      const MountHandle handle = VornixStorageSystem::Mount(u"busy", provider);
      const MountHandle alias = VornixStorageSystem::MountAlias(u"busyalias", u"busy");
      if (Find(u"busyalias") != provider) served[index] = 0;
    }
  });

  EXPECT_THAT(served, testing::Each(1));
  EXPECT_EQ(Find(u"busy"), nullptr);
}

}  // namespace
}  // namespace foundation::storage::vfs
