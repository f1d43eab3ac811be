// Folders of the path that cannot serve as such, and what can be done about them.

#include "folder_findings.hpp"

#include <gmock/gmock.h>

#include <fakes/failing_storage_provider.hpp>
#include <unit/environment/memory_storage.hpp>

#include "empty_folders.hpp"
#include "path_troubles.hpp"
#include "told_findings.hpp"

namespace vornixpath {
namespace {

using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::fakes::Persistence;
using foundation::storage::fakes::StorageOperation;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::DistinctFolders;
using Quorvex::PathEnvironment::InMemory;
using Quorvex::PathEnvironment::MemoryStorage;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

const FolderRemoval kFromVariable({"VORNIX_PATH", {}}, true, 100, "");
const FolderRemoval kFromSession({"the session S", InMemory(u"/s")}, true, 100, "");

std::vector<Finding> UnusableOn(const Examination& examination, const FolderRemoval& removal = kFromVariable) {
  return UnusableFolders(examination.Get(), TroublesOf(examination.GetPath()), removal);
}

std::vector<std::string> EmptyOn(const Examination& examination) {
  return InWords(EmptyFolders(examination.Get(), TroublesOf(examination.GetPath()), kFromVariable));
}

std::vector<Finding> RepeatedAmong(const std::vector<std::u16string>& folders, const FolderRemoval& removal) {
  std::vector<AbsoluteIRI> locations;
  for (const std::u16string& folder : folders) locations.push_back(InMemory(folder));
  return RepeatedFolders(DistinctFolders(locations, VornixStorageSystem::GetStorageSystemReference()).GetDropped(),
                         removal);
}

void RefuseToList(MemoryStorage& storage, const std::u16string& folder) {
  storage.Through<FailingStorageProvider>()->Plan({.operation = StorageOperation::List,
                                                   .location = InMemory(folder),
                                                   .error = std::make_error_code(std::errc::permission_denied),
                                                   .persistence = Persistence::Persistent});
}

TEST(UnusableFolders, AreThoseWhereNothingOrNoFolderStands) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFolders({u"/a"}).WithFiles({u"/f"}));

  EXPECT_THAT(InWords(UnusableOn(Examination(storage.Path({u"/a", u"/gone", u"/a", u"/f"})))),
              ElementsAre("error missing-folder: /gone (2)", "error missing-folder: /f (4)"));
}

TEST(UnusableFolders, AreThoseThatStorageRefusesToList) {
  MemoryStorage storage = std::move(MemoryStorage().WithFolders({u"/a", u"/b"}));
  RefuseToList(storage, u"/b");

  const std::vector<Finding> findings = UnusableOn(Examination(storage.Path({u"/a", u"/b"})));

  ASSERT_THAT(InWords(findings), ElementsAre("error unreadable-folder: /b (2)"));
  EXPECT_EQ(findings[0].sentence, "it cannot be read: Permission denied");
  EXPECT_EQ(findings[0].fix, Fix{"make it readable, or take it off VORNIX_PATH"});
}

TEST(UnusableFolders, MayStandWithinFoldersOfThePathWhereNothingIsTakenOff) {
  MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/a/+p/f.vnx"}));
  RefuseToList(storage, u"/a/+p");

  const std::vector<Finding> findings = UnusableOn(Examination(storage.Path({u"/a"})), kFromSession);

  ASSERT_THAT(InWords(findings), ElementsAre("error unreadable-folder: /a/+p (1)"));
  EXPECT_EQ(findings[0].fix, Fix{"make it readable"});
}

TEST(UnusableFolders, AreNoGraveMatterWhereTheyLeadBackToAFolderAroundThem) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/a/+p/f.vnx"}).WithLink(u"/a/+p/+p", u"/a/+p"));

  const std::vector<Finding> findings = UnusableOn(Examination(storage.Path({u"/a"})));

  ASSERT_THAT(InWords(findings), ElementsAre("note looping-folder: /a/+p/+p (1)"));
  EXPECT_EQ(findings[0].fix, Fix{"delete the link that leads back"});
}

TEST(UnusableFolders, OfASavedPathAreRemovedByALineToType) {
  const MemoryStorage storage;

  const std::vector<Finding> findings = UnusableOn(Examination(storage.Path({u"/it's"})), kFromSession);

  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].fix, (Fix{"make it, or take it off the session S",  //
                                  R"(vornixpath remove 'memory:///it'\''s')"}));
}

TEST(UnusableFolders, OfASessionOfTheirOwnAreRemovedFromThatOne) {
  const MemoryStorage storage;
  const FolderRemoval removal({"the session S", InMemory(u"/s")}, false, 100, "");

  const std::vector<Finding> findings = UnusableOn(Examination(storage.Path({u"/gone"})), removal);

  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].fix.command, "vornixpath remove --session 'memory:///s' 'memory:///gone'");
}

TEST(UnusableFolders, OfAPackageAreAMatterOfItsManifest) {
  const MemoryStorage storage;
  const FolderRemoval removal({"the session S", InMemory(u"/s")}, true, 1, "manifests");

  const std::vector<Finding> findings = UnusableOn(Examination(storage.Path({u"/gone", u"/added"})), removal);

  ASSERT_EQ(findings.size(), 2U);
  EXPECT_EQ(findings[0].fix.command, "vornixpath remove 'memory:///gone'");
  EXPECT_EQ(findings[1].fix, Fix{"make it, or correct the manifest in manifests that adds it"});
}

TEST(RepeatedFolders, AreFoundUnderEverySpelling) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFolders({u"/a"}).WithLink(u"/l", u"/a"));

  const std::vector<Finding> findings = RepeatedAmong({u"/a", u"/l", u"/a"}, kFromSession);

  ASSERT_THAT(InWords(findings), ElementsAre("note repeated-folder: /l (2)", "note repeated-folder: /a (3)"));
  EXPECT_EQ(findings[0].fix.command, "vornixpath remove 'memory:///l'");
}

TEST(RepeatedFolders, AreFoundWhereNothingStandsToo) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFolders({u"/a"}).WithLink(u"/l", u"/a"));

  EXPECT_THAT(InWords(RepeatedAmong({u"/a/gone", u"/l/gone"}, kFromVariable)),
              ElementsAre("note repeated-folder: /l/gone (2)"));
}

TEST(RepeatedFolders, OfOneSpellingAreNotRemovedAllAtOnce) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFolders({u"/a"}));

  EXPECT_THAT(RepeatedAmong({u"/a", u"/a"}, kFromSession),
              ElementsAre(Field(&Finding::fix, Fix{"delete one of its mentions in the session S"})));
}

TEST(RepeatedFolders, OfAPackageNeedNothing) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFolders({u"/a"}));

  EXPECT_THAT(RepeatedAmong({u"/a", u"/a"}, FolderRemoval({"--path", {}}, true, 1, "manifests")),
              ElementsAre(Field(&Finding::fix, Fix{"none is needed: it counts where it stands first"})));
}

TEST(EmptyFolders, HoldNoFileThatALookupCouldFind) {
  const MemoryStorage storage =
      std::move(MemoryStorage()
                    .WithFolders({u"/none", u"/hollow/+p/@K"})
                    .WithFiles({u"/a/f.vnx", u"/other/f.txt", u"/deep/+p/@K/m.vnx", u"/own/private/f.vnx",
                                u"/labels/resources/f.vnx", u"/plain/sub/f.vnx"}));

  EXPECT_THAT(
      EmptyOn(Examination(
          storage.Path({u"/none", u"/a", u"/other", u"/hollow", u"/deep", u"/own", u"/labels", u"/plain"}))),
      ElementsAre("note empty-folder: /none (1)", "note empty-folder: /other (3)", "note empty-folder: /hollow (4)",
                  "note empty-folder: /labels (7)", "note empty-folder: /plain (8)"));
}

TEST(EmptyFolders, GoByTheExtensionsThatAreTried) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/a/f.vnx", u"/b/f.h", u"/c/f"}));

  EXPECT_THAT(EmptyOn(Examination(storage.Path({u"/a", u"/b", u"/c"}), {u".h", u""})),
              ElementsAre("note empty-folder: /a (1)"));
}

TEST(EmptyFolders, AreNotThoseOfWhichNobodyKnowsWhatTheyHold) {
  MemoryStorage storage = std::move(MemoryStorage().WithFolders({u"/a/+p", u"/b"}));
  RefuseToList(storage, u"/a/+p");

  EXPECT_THAT(EmptyOn(Examination(storage.Path({u"/a", u"/gone"}))), IsEmpty());
}

}  // namespace
}  // namespace vornixpath
