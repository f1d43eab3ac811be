#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <new>
#include <search_path_utilities/services.hpp>
#include <stdexcept>
#include <string>
#include <support/allocations.hpp>
#include <support/folder_list.hpp>
#include <variant>
#include <vector>

namespace Quorvex::PathManagement {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using PackageRegistry::IPackage;
using PackageRegistry::IPackageRegistry;
using PackageRegistry::PackagePathFolder;
using PackageRegistry::PackageProperty;
using support::Allocations;
using support::FoldersAt;
using support::NamesOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::ThrowsMessage;
using VornixComponents::ComponentIdentifier;

using Calls = std::vector<std::string>;

/// A package that a test describes, and that notes what it is asked, or throws its name.
struct FakePackage final : public IPackage {
  bool isEnabled = true;
  bool isRootFolderPackage = false;
  std::map<std::u16string, PackageProperty, std::less<>> properties;
  AbsoluteIRI rootFolder{u"memory:///root"};
  std::shared_ptr<const std::vector<PackagePathFolder>> pathFolders =
      std::make_shared<const std::vector<PackagePathFolder>>();
  Calls* calls = nullptr;
  std::string thrown;

  [[nodiscard]] bool IsEnabled() const override { return Note("IsEnabled"), isEnabled; }
  [[nodiscard]] bool IsRootFolderPackage() const override { return Note("IsRootFolderPackage"), isRootFolderPackage; }
  [[nodiscard]] std::optional<PackageProperty> GetProperty(std::u16string_view name) const override {
    Note("GetProperty");
    const auto found = properties.find(name);
    if (found == properties.end()) return std::nullopt;
    return found->second;
  }
  [[nodiscard]] AbsoluteIRI GetRootFolder() const override { return Note("GetRootFolder"), rootFolder; }
  [[nodiscard]] std::shared_ptr<const std::vector<PackagePathFolder>> GetPathFolders() const override {
    return Note("GetPathFolders"), pathFolders;
  }

 private:
  void Note(const char* call) const {
    if (call == thrown) throw std::runtime_error(call);
    if (calls != nullptr) calls->emplace_back(call);
  }
};

std::shared_ptr<FakePackage> PackageWith(std::string_view pathFolders) {
  auto package = std::make_shared<FakePackage>();
  std::vector<PackagePathFolder> records;
  for (const AbsoluteIRI& folder : FoldersAt(pathFolders)) records.push_back({folder});
  package->pathFolders = std::make_shared<const std::vector<PackagePathFolder>>(std::move(records));
  return package;
}

std::shared_ptr<FakePackage> RootFolderPackage(std::string_view root) {
  auto package = std::make_shared<FakePackage>();
  package->isRootFolderPackage = true;
  package->rootFolder = FoldersAt(root).front();
  return package;
}

std::shared_ptr<FakePackage> RootFolderPackage(std::string_view root, const PackageProperty& manualInstall) {
  auto package = RootFolderPackage(root);
  package->properties.emplace(u"ManualInstall", manualInstall);
  return package;
}

/// Knows the packages that a test adds, and notes the components that it is asked for.
class FakeRegistry final : public IPackageRegistry {
 public:
  std::vector<std::u16string>* asked = nullptr;

  void Add(const std::u16string& component, std::shared_ptr<const IPackage> package) {
    packages_.emplace(component, std::move(package));
  }
  [[nodiscard]] std::shared_ptr<const IPackage> GetPackage(const ComponentIdentifier& component) const override {
    if (asked != nullptr) asked->push_back(component.GetText());
    const auto found = packages_.find(component.GetText());
    return found == packages_.end() ? nullptr : found->second;
  }

 private:
  std::map<std::u16string, std::shared_ptr<const IPackage>> packages_;
};

class PathFoldersForPackages : public testing::Test {
 protected:
  [[nodiscard]] std::string Of(const std::vector<std::u16string>& names) const {
    const std::vector<ComponentIdentifier> components(names.begin(), names.end());
    return NamesOf(GetPathFoldersForPackages(registry_, components));
  }

  FakeRegistry registry_;
};

class RegistryThatMustNotBeAsked final : public IPackageRegistry {
 public:
  [[nodiscard]] std::shared_ptr<const IPackage> GetPackage(const ComponentIdentifier& /*component*/) const override {
    throw std::logic_error("the registry was asked");
  }
};

TEST_F(PathFoldersForPackages, AreNoneForNoComponentsAndTheRegistryIsNotAsked) {
  EXPECT_THAT(GetPathFoldersForPackages(RegistryThatMustNotBeAsked(), {}), IsEmpty());
}

TEST_F(PathFoldersForPackages, AreThoseOfThePackageInItsOwnOrder) {
  registry_.Add(u"a", PackageWith("z m a"));
  EXPECT_EQ(Of({u"a"}), "z m a");
}

TEST_F(PathFoldersForPackages, AreInTheOrderOfTheComponents) {
  registry_.Add(u"a", PackageWith("a1 a2"));
  registry_.Add(u"b", PackageWith("b1"));
  registry_.Add(u"c", RootFolderPackage("c", true));

  EXPECT_EQ(Of({u"c", u"b", u"a"}), "c b1 a1 a2");
  EXPECT_EQ(Of({u"a", u"c", u"b"}), "a1 a2 c b1");
}

TEST_F(PathFoldersForPackages, PassOverAnUnknownComponent) {
  registry_.Add(u"a", PackageWith("a1"));
  EXPECT_EQ(Of({u"unknown", u"a"}), "a1");
}

TEST_F(PathFoldersForPackages, PassOverAPackageThatIsNotEnabled) {
  const auto disabled = PackageWith("a1");
  disabled->isEnabled = false;
  const auto disabledRoot = RootFolderPackage("b", true);
  disabledRoot->isEnabled = false;
  registry_.Add(u"a", disabled);
  registry_.Add(u"b", disabledRoot);
  registry_.Add(u"c", PackageWith("c1"));

  EXPECT_EQ(Of({u"a", u"b", u"c"}), "c1");
}

TEST_F(PathFoldersForPackages, PassOverAPackageWithoutAny) {
  registry_.Add(u"a", PackageWith(""));
  registry_.Add(u"b", PackageWith("b1"));

  EXPECT_EQ(Of({u"a", u"b"}), "b1");
}

TEST_F(PathFoldersForPackages, PassOverAPackageThatAnswersWithNoListAtAll) {
  const auto package = PackageWith("");
  package->pathFolders = nullptr;
  registry_.Add(u"a", package);
  registry_.Add(u"b", PackageWith("b1"));

  EXPECT_EQ(Of({u"a", u"b"}), "b1");
}

TEST_F(PathFoldersForPackages, AreTheRootOfARootFolderPackageThatWasInstalledByHand) {
  registry_.Add(u"a", RootFolderPackage("a", true));
  EXPECT_EQ(Of({u"a"}), "a");
}

TEST_F(PathFoldersForPackages, DoNotHoldTheRootOfAnyOtherRootFolderPackage) {
  registry_.Add(u"noproperty", RootFolderPackage("a"));
  registry_.Add(u"false", RootFolderPackage("b", false));
  registry_.Add(u"after", PackageWith("c"));

  EXPECT_EQ(Of({u"noproperty", u"false", u"after"}), "c");
}

TEST_F(PathFoldersForPackages, HoldTheRootOnlyOfARootFolderPackageAndThePathFoldersOnlyOfAnother) {
  const auto root = RootFolderPackage("root", true);
  root->pathFolders = PackageWith("sub")->pathFolders;
  const auto other = PackageWith("sub");
  other->rootFolder = FoldersAt("root").front();
  other->properties.emplace(u"ManualInstall", false);
  registry_.Add(u"root", root);
  registry_.Add(u"other", other);

  EXPECT_EQ(Of({u"root"}), "root");
  EXPECT_EQ(Of({u"other"}), "sub");
}

TEST_F(PathFoldersForPackages, KeepWhatStandsTwice) {
  registry_.Add(u"a", PackageWith("shared x x"));
  registry_.Add(u"b", PackageWith("shared"));

  EXPECT_EQ(Of({u"a", u"b"}), "shared x x shared");
}

TEST_F(PathFoldersForPackages, ComeTwiceForAComponentGivenTwice) {
  registry_.Add(u"a", PackageWith("a1"));
  EXPECT_EQ(Of({u"a", u"a"}), "a1 a1");
}

TEST_F(PathFoldersForPackages, CannotBeToldWhenManualInstallIsNoBool) {
  registry_.Add(u"integer", RootFolderPackage("a", std::int64_t{1}));
  registry_.Add(u"double", RootFolderPackage("b", 1.0));
  registry_.Add(u"text", RootFolderPackage("c", std::u16string(u"true")));
  registry_.Add(u"good", PackageWith("d"));

  EXPECT_THROW(static_cast<void>(Of({u"integer"})), std::bad_variant_access);
  EXPECT_THROW(static_cast<void>(Of({u"double"})), std::bad_variant_access);
  EXPECT_THROW(static_cast<void>(Of({u"good", u"text", u"good"})), std::bad_variant_access);
}

TEST_F(PathFoldersForPackages, DoNotDependOnTheTypeOfManualInstallInOtherPackages) {
  const auto package = PackageWith("a1");
  package->properties.emplace(u"ManualInstall", std::int64_t{1});
  registry_.Add(u"a", package);

  EXPECT_EQ(Of({u"a"}), "a1");
}

TEST_F(PathFoldersForPackages, AskForNoOtherProperty) {
  const auto package = RootFolderPackage("a");
  package->properties.emplace(u"manualinstall", true);
  package->properties.emplace(u"ManualInstall ", true);
  registry_.Add(u"a", package);

  EXPECT_EQ(Of({u"a"}), "");
}

TEST_F(PathFoldersForPackages, AskAPackageNoMoreThanIsNeeded) {
  const auto callsFor = [](const std::shared_ptr<FakePackage>& package) {
    Calls calls;
    package->calls = &calls;
    FakeRegistry registry;
    registry.Add(u"a", package);
    const std::vector components{ComponentIdentifier(u"a")};
    static_cast<void>(GetPathFoldersForPackages(registry, components));
    return calls;
  };
  const auto disabled = PackageWith("a");
  disabled->isEnabled = false;

  EXPECT_THAT(callsFor(disabled), ElementsAre("IsEnabled"));
  EXPECT_THAT(callsFor(PackageWith("a")), ElementsAre("IsEnabled", "IsRootFolderPackage", "GetPathFolders"));
  EXPECT_THAT(callsFor(RootFolderPackage("a")), ElementsAre("IsEnabled", "IsRootFolderPackage", "GetProperty"));
  EXPECT_THAT(callsFor(RootFolderPackage("a", true)),
              ElementsAre("IsEnabled", "IsRootFolderPackage", "GetProperty", "GetRootFolder"));
}

TEST_F(PathFoldersForPackages, AskTheRegistryOnceForEachComponentInOrder) {
  registry_.Add(u"a", PackageWith("a"));
  registry_.Add(u"b", RootFolderPackage("b", true));
  std::vector<std::u16string> asked;
  registry_.asked = &asked;

  EXPECT_EQ(Of({u"b", u"unknown", u"a", u"b"}), "b a b");

  EXPECT_THAT(asked, ElementsAre(u"b", u"unknown", u"a", u"b"));
}

/// A registry that makes a package for each question, and knows whether the one before is still held.
class MakingRegistry final : public IPackageRegistry {
 public:
  [[nodiscard]] std::shared_ptr<const IPackage> GetPackage(const ComponentIdentifier& /*component*/) const override {
    if (!last_.expired()) throw std::logic_error("a package is still held");
    const std::shared_ptr<const IPackage> package = PackageWith("a");
    last_ = package;
    return package;
  }
  [[nodiscard]] bool IsAnyHeld() const { return !last_.expired(); }

 private:
  mutable std::weak_ptr<const IPackage> last_;
};

TEST_F(PathFoldersForPackages, ReleaseAPackageBeforeTheNextIsAskedFor) {
  const MakingRegistry registry;
  const std::vector components{ComponentIdentifier(u"a"), ComponentIdentifier(u"b")};

  EXPECT_EQ(NamesOf(GetPathFoldersForPackages(registry, components)), "a a");
  EXPECT_FALSE(registry.IsAnyHeld());
}

TEST_F(PathFoldersForPackages, PassOnWhatTheRegistryThrows) {
  const std::vector components{ComponentIdentifier(u"a")};
  EXPECT_THROW(static_cast<void>(GetPathFoldersForPackages(RegistryThatMustNotBeAsked(), components)),
               std::logic_error);
}

TEST_F(PathFoldersForPackages, PassOnWhatAPackageThrows) {
  const auto fails = [](const std::shared_ptr<FakePackage>& package, const char* operation) {
    package->thrown = operation;
    FakeRegistry registry;
    registry.Add(u"good", PackageWith("a"));
    registry.Add(u"bad", package);
    const std::vector components{ComponentIdentifier(u"good"), ComponentIdentifier(u"bad")};
    EXPECT_THAT([&] { return GetPathFoldersForPackages(registry, components); },
                ThrowsMessage<std::runtime_error>(operation));
  };
  fails(PackageWith("b"), "IsEnabled");
  fails(PackageWith("b"), "IsRootFolderPackage");
  fails(PackageWith("b"), "GetPathFolders");
  fails(RootFolderPackage("b", true), "GetProperty");
  fails(RootFolderPackage("b", true), "GetRootFolder");
}

TEST_F(PathFoldersForPackages, GetRoomForAWholePackageAtOnce) {
  std::string names;
  for (int number = 0; number < 100; ++number) names += std::to_string(number) + " ";
  registry_.Add(u"a", PackageWith(names));
  const std::vector components{ComponentIdentifier(u"a")};

  const Allocations allocations;
  const auto folders = GetPathFoldersForPackages(registry_, components);

  EXPECT_EQ(folders.size(), 100U);
  EXPECT_EQ(allocations.GetCount(), 1U);
}

TEST_F(PathFoldersForPackages, AreNotCopiedAnewForEachOfManyPackages) {
  registry_.Add(u"a", PackageWith("a"));
  const std::vector components(1000, ComponentIdentifier(u"a"));

  const Allocations allocations;
  const auto folders = GetPathFoldersForPackages(registry_, components);

  EXPECT_EQ(folders.size(), 1000U);
  EXPECT_LT(allocations.GetCount(), 20U);
}

TEST_F(PathFoldersForPackages, LeaveNothingBehindWhenMemoryEnds) {
  for (const auto& package : {PackageWith("a b c"), RootFolderPackage("root", true)}) {
    FakeRegistry registry;
    registry.Add(u"a", package);
    const std::vector components{ComponentIdentifier(u"a"), ComponentIdentifier(u"a")};
    const long owners = package.use_count();
    for (const std::size_t successes : {0U, 1U}) {
      const Allocations allocations(successes);
      EXPECT_THROW(static_cast<void>(GetPathFoldersForPackages(registry, components)), std::bad_alloc);
    }
    EXPECT_EQ(package.use_count(), owners);
  }
}

}  // namespace
}  // namespace Quorvex::PathManagement
