#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fakes/counting_storage_provider.hpp>
#include <fakes/failing_storage_provider.hpp>
#include <filesystem>
#include <fl/filesystem/displayed_text.hpp>
#include <fstream>
#include <memory>
#include <search_path_environment/manifest_registry.hpp>
#include <search_path_utilities/services.hpp>
#include <string>
#include <support/folder_list.hpp>
#include <support/storage_matchers.hpp>
#include <support/temporary_folder.hpp>
#include <support/without_privileges.hpp>
#include <variant>
#include <vector>

#include "memory_storage.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::fakes::CountingStorageProvider;
using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::fakes::Persistence;
using foundation::storage::fakes::StorageOperation;
using foundation::storage::vfs::FailsWith;
using foundation::storage::vfs::VornixStorageSystem;
using PathManagement::support::NamesOf;
using PathManagement::support::TemporaryFolder;
using PathManagement::support::WithoutPrivileges;
using testing::ElementsAre;
using testing::IsEmpty;
using VornixComponents::ComponentIdentifier;
using Texts = std::vector<std::string>;

ManifestRegistry RegistryOver(const AbsoluteIRI& folder) {
  return ManifestRegistry(folder, VornixStorageSystem::GetStorageSystemReference());
}

Texts ComponentsOf(const ManifestRegistry& registry) {
  Texts components;
  for (const ManifestFile& file : registry.GetManifests()) {
    components.push_back(fl::filesystem::to_displayed_text(file.manifest.component.GetText()));
  }
  return components;
}

/// Each as "a.json:3:5: reason".
Texts ProblemsOf(const ManifestRegistry& registry) {
  Texts problems;
  for (const ManifestProblem& problem : registry.GetProblems()) {
    problems.push_back(fl::filesystem::to_displayed_text(problem.file.getName()) + ":" + std::to_string(problem.line) +
                       ":" + std::to_string(problem.column) + ": " + problem.reason);
  }
  return problems;
}

std::string ManifestOf(const std::string& component, const std::string& fields = R"("pathFolders": ["core"])") {
  return R"({"component": ")" + component + R"(", "enabled": true, "root": ")" + component + "\",\n" + fields + "}";
}

/// A folder of manifests in memory.
class ManifestRegistryTest : public testing::Test {
 protected:
  ManifestRegistryTest() { storage_.WithFolders({u"/packages"}); }

  void Put(const std::u16string& name, const std::string& content) {
    storage_.GetProvider().AddFile(u"/packages/" + name, content);
  }
  [[nodiscard]] ManifestRegistry Registry() const { return RegistryOver(InMemory(u"/packages")); }

  MemoryStorage storage_;
};

TEST_F(ManifestRegistryTest, KnowsNothingOverAnEmptyFolder) {
  const ManifestRegistry registry = Registry();

  EXPECT_THAT(registry.GetManifests(), IsEmpty());
  EXPECT_THAT(registry.GetProblems(), IsEmpty());
  EXPECT_EQ(registry.GetPackage(ComponentIdentifier(u"signal")), nullptr);
}

TEST_F(ManifestRegistryTest, AnswersForAPackageAsItsManifestDoes) {
  Put(u"signal.json", ManifestOf("signal", R"("pathFolders": ["core", "extra"], "properties": {"Level": 3})"));
  const auto package = Registry().GetPackage(ComponentIdentifier(u"signal"));

  ASSERT_NE(package, nullptr);
  EXPECT_TRUE(package->IsEnabled());
  EXPECT_FALSE(package->IsRootFolderPackage());
  EXPECT_EQ(package->GetRootFolder(), InMemory(u"/packages/signal"));
  const auto folders = package->GetPathFolders();
  ASSERT_EQ(folders->size(), 2U);
  EXPECT_EQ((*folders)[1].folder, InMemory(u"/packages/signal/extra"));
  EXPECT_EQ(package->GetProperty(u"Level"), PackageRegistry::PackageProperty(std::int64_t{3}));
  EXPECT_EQ(package->GetProperty(u"level"), std::nullopt);
}

TEST_F(ManifestRegistryTest, GivesAPackageThatOutlivesIt) {
  Put(u"signal.json", ManifestOf("signal"));
  const auto folders = Registry().GetPackage(ComponentIdentifier(u"signal"))->GetPathFolders();

  EXPECT_EQ(folders->front().folder, InMemory(u"/packages/signal/core"));
}

TEST_F(ManifestRegistryTest, ReadsManifestsInTheOrderOfTheirNames) {
  Put(u"b.json", ManifestOf("one"));
  Put(u"B.json", ManifestOf("two"));
  Put(u"a.json", ManifestOf("three"));
  Put(u"\u00e9.json", ManifestOf("four"));
  Put(u"a-1.json", ManifestOf("five"));

  EXPECT_THAT(ComponentsOf(Registry()), ElementsAre("two", "five", "three", "one", "four"));
}

TEST_F(ManifestRegistryTest, PassesOverWhatIsNotNamedLikeAManifest) {
  Put(u"notes.txt", "");
  Put(u"a.json~", "");
  Put(u"a.JSON", "");
  Put(u"json", "");
  Put(u".json", "");
  Put(u".#a.json", "");
  storage_.WithFiles({u"/packages/below/a.json"});

  EXPECT_THAT(ComponentsOf(Registry()), IsEmpty());
  EXPECT_THAT(ProblemsOf(Registry()), IsEmpty());
}

TEST_F(ManifestRegistryTest, TellsWhatIsWrongWithAManifestAndKeepsTheOthers) {
  Put(u"a.json", "{\n  \"component\": oops");
  Put(u"b.json", ManifestOf("good"));
  Put(u"c.json", ManifestOf("both", "\"rootFolderPackage\": true, \"pathFolders\": []"));
  Put(u"d.json", "");

  EXPECT_THAT(ComponentsOf(Registry()), ElementsAre("good"));
  EXPECT_THAT(ProblemsOf(Registry()), ElementsAre("a.json:2:16: it is not JSON: syntax error",
                                                  "c.json:2:0: a root-folder package has no \"pathFolders\"",
                                                  "d.json:1:0: it is not JSON: incomplete JSON"));
}

TEST_F(ManifestRegistryTest, CountsTheFirstOfTwoManifestsForOneComponent) {
  Put(u"a.json", "{}");
  Put(u"b.json", ManifestOf("signal"));
  Put(u"c.json", "\n\n" + ManifestOf("signal", "\"rootFolderPackage\": true"));

  const ManifestRegistry registry = Registry();

  EXPECT_FALSE(registry.GetPackage(ComponentIdentifier(u"signal"))->IsRootFolderPackage());
  EXPECT_THAT(ProblemsOf(registry), ElementsAre("a.json:1:0: the field \"component\" is missing",
                                                "c.json:3:0: the component \"signal\" is that of \"b.json\" already"));
}

TEST_F(ManifestRegistryTest, LetsAManifestThatIsRefusedClaimNoComponent) {
  Put(u"a.json", ManifestOf("signal", "\"pathFolders\": [\"..\"]"));
  Put(u"b.json", ManifestOf("signal"));

  EXPECT_THAT(ComponentsOf(Registry()), ElementsAre("signal"));
}

TEST_F(ManifestRegistryTest, TakesNoFolderForAManifest) {
  storage_.WithFolders({u"/packages/a.json"});
  EXPECT_THAT(ProblemsOf(Registry()), ElementsAre("a.json:0:0: it cannot be read: Is a directory"));
}

TEST_F(ManifestRegistryTest, FollowsLinksButNotToNowhere) {
  storage_.GetProvider().AddFile(u"/elsewhere/signal.json", ManifestOf("signal"));
  storage_.WithLink(u"/packages/link.json", u"/elsewhere/signal.json");
  storage_.WithLink(u"/packages/nowhere.json", u"/gone");
  storage_.WithLink(u"/packages/loop.json", u"/packages/loop.json");

  const ManifestRegistry registry = Registry();

  EXPECT_EQ(registry.GetManifests().front().manifest.rootFolder, InMemory(u"/packages/signal"))
      << "against the folder in which the link stands";
  EXPECT_THAT(ProblemsOf(registry), ElementsAre("loop.json:0:0: it cannot be read: Too many levels of symbolic links",
                                                "nowhere.json:0:0: it cannot be read: No such file or directory"));
}

TEST_F(ManifestRegistryTest, ReadsUpToAMebibyteAndNoMore) {
  const std::string manifest = ManifestOf("large");
  const std::size_t limit = ManifestRegistry::kLargestManifest;
  Put(u"fits.json", manifest + std::string(limit - manifest.size(), ' '));
  Put(u"toolarge.json", ManifestOf("toolarge") + std::string(limit, ' '));
  const auto storage = storage_.Through<CountingStorageProvider>();

  const ManifestRegistry registry = Registry();

  EXPECT_THAT(ComponentsOf(registry), ElementsAre("large"));
  EXPECT_THAT(ProblemsOf(registry), ElementsAre("toolarge.json:0:0: it cannot be read: File too large"));
  EXPECT_EQ(storage->GetCount(StorageOperation::Read, InMemory(u"/packages/toolarge.json")), 0U);
}

TEST_F(ManifestRegistryTest, TellsWhichFileCouldNotBeRead) {
  Put(u"a.json", ManifestOf("a"));
  Put(u"b.json", ManifestOf("b"));
  for (const auto operation : {StorageOperation::OpenForReading, StorageOperation::Stat, StorageOperation::Read}) {
    const auto storage = storage_.Through<FailingStorageProvider>();
    storage->Plan({.operation = operation, .location = InMemory(u"/packages/a.json")});

    EXPECT_THAT(ComponentsOf(Registry()), ElementsAre("b"));
    storage->Plan({.operation = operation, .location = InMemory(u"/packages/a.json")});
    EXPECT_THAT(ProblemsOf(Registry()), ElementsAre("a.json:0:0: it cannot be read: Input/output error"));
  }
}

TEST_F(ManifestRegistryTest, CannotBeMadeOverAFolderThatCannotBeListed) {
  EXPECT_THAT([] { RegistryOver(InMemory(u"/nowhere")); }, FailsWith(std::errc::no_such_file_or_directory));
  Put(u"a.json", "");
  EXPECT_THAT([] { RegistryOver(InMemory(u"/packages/a.json")); }, FailsWith(std::errc::not_a_directory));
}

TEST_F(ManifestRegistryTest, AsksStorageNothingOnceItIsMade) {
  Put(u"a.json", ManifestOf("signal"));
  const auto storage = storage_.Through<CountingStorageProvider>();
  const ManifestRegistry registry = Registry();
  storage->Reset();

  static_cast<void>(registry.GetPackage(ComponentIdentifier(u"signal"))->GetPathFolders());

  EXPECT_EQ(storage->GetCount(), 0U);
}

TEST_F(ManifestRegistryTest, GivesTheLibraryTheFoldersOfItsPackages) {
  Put(u"a.json", ManifestOf("folders", R"("pathFolders": ["x", "y"])"));
  Put(u"b.json", ManifestOf("byhand", R"("rootFolderPackage": true, "properties": {"ManualInstall": true})"));
  Put(u"c.json", ManifestOf("bundled", R"("rootFolderPackage": true)"));
  Put(u"d.json", ManifestOf("odd", R"("rootFolderPackage": true, "properties": {"ManualInstall": 1})"));
  const ManifestRegistry registry = Registry();
  const auto foldersOf = [&registry](const std::vector<std::u16string>& names) {
    const std::vector<ComponentIdentifier> components(names.begin(), names.end());
    return NamesOf(PathManagement::GetPathFoldersForPackages(registry, components));
  };

  EXPECT_EQ(foldersOf({u"byhand", u"bundled", u"unknown", u"folders"}),
            "packages/byhand packages/folders/x packages/folders/y");
  EXPECT_THROW(foldersOf({u"folders", u"odd"}), std::bad_variant_access);
}

/// A folder of manifests on the disk, with what memory does not have.
class ManifestRegistryOnDisk : public testing::Test {
 protected:
  [[nodiscard]] std::filesystem::path File(const std::string& name) const { return folder_.GetPath() / name; }
  void Put(const std::string& name, const std::string& content) const { std::ofstream(File(name)) << content; }
  [[nodiscard]] ManifestRegistry Registry() const {
    return RegistryOver(AbsoluteIRI(u"file://" + folder_.GetPath().u16string()));
  }

  TemporaryFolder folder_;
};

TEST_F(ManifestRegistryOnDisk, DoesNotWaitForAFifo) {
  ASSERT_EQ(::mkfifo(File("fifo.json").c_str(), 0644), 0);
  Put("good.json", ManifestOf("good"));

  const ManifestRegistry registry = Registry();

  EXPECT_THAT(ComponentsOf(registry), ElementsAre("good"));
  ASSERT_EQ(registry.GetProblems().size(), 1U);
  EXPECT_THAT(registry.GetProblems().front().reason, testing::StartsWith("it cannot be read: "));
}

TEST_F(ManifestRegistryOnDisk, ReadsNoDeviceBehindALink) {
  std::filesystem::create_symlink("/dev/zero", File("zero.json"));
  EXPECT_EQ(Registry().GetProblems().size(), 1U);
}

TEST_F(ManifestRegistryOnDisk, TellsThatAFileMayNotBeRead) {
  Put("secret.json", ManifestOf("secret"));
  std::filesystem::permissions(File("secret.json"), std::filesystem::perms(0));
  WithoutPrivileges([this] {
    EXPECT_THAT(ProblemsOf(Registry()), ElementsAre("secret.json:0:0: it cannot be read: Permission denied"));
  });
}

TEST_F(ManifestRegistryOnDisk, TellsThatALinkLeadsNowhere) {
  std::filesystem::create_symlink("gone", File("nowhere.json"));
  EXPECT_THAT(ProblemsOf(Registry()), ElementsAre("nowhere.json:0:0: it cannot be read: No such file or directory"));
}

TEST_F(ManifestRegistryOnDisk, DoesNotReadAFileOfGibibytes) {
  Put("sparse.json", "");
  std::filesystem::resize_file(File("sparse.json"), std::uintmax_t{10} << 30U);
  EXPECT_THAT(ProblemsOf(Registry()), ElementsAre("sparse.json:0:0: it cannot be read: File too large"));
}

TEST_F(ManifestRegistryOnDisk, ReadsAManifestWhoseNameIsNoUnicode) {
  Put("\xFF.json", ManifestOf("odd"));
  EXPECT_THAT(ComponentsOf(Registry()), ElementsAre("odd"));
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
