#include <gmock/gmock.h>

#include <package_registry/package_registry.hpp>
#include <type_traits>
#include <unordered_set>
#include <variant>

namespace Quorvex::VornixComponents {
namespace {

TEST(ComponentIdentifier, IsItsTextAndComparesIt) {
  EXPECT_EQ(ComponentIdentifier(u"signal").GetText(), u"signal");
  EXPECT_EQ(ComponentIdentifier(u"signal"), ComponentIdentifier(u"signal"));
  EXPECT_NE(ComponentIdentifier(u"signal"), ComponentIdentifier(u"Signal"));
  EXPECT_NE(ComponentIdentifier(u"signal"), ComponentIdentifier(u""));
}

TEST(ComponentIdentifier, IsFoundByItsHash) {
  const std::unordered_set<ComponentIdentifier> identifiers{ComponentIdentifier(u"a"), ComponentIdentifier(u"b")};

  EXPECT_TRUE(identifiers.contains(ComponentIdentifier(u"a")));
  EXPECT_FALSE(identifiers.contains(ComponentIdentifier(u"c")));
  EXPECT_EQ(hash_value(ComponentIdentifier(u"a")), std::hash<ComponentIdentifier>()(ComponentIdentifier(u"a")));
}

TEST(ComponentIdentifier, IsNotMadeFromATextByChance) {
  EXPECT_FALSE((std::is_convertible_v<std::u16string, ComponentIdentifier>));
}

}  // namespace
}  // namespace Quorvex::VornixComponents

namespace Quorvex::PackageRegistry {
namespace {

TEST(PackageProperty, IsABoolBeforeAllElse) {
  EXPECT_TRUE((std::is_same_v<std::variant_alternative_t<0, PackageProperty>, bool>));
}

TEST(PackagePathFolder, BeginsWithItsFolder) {
  const PackagePathFolder record{foundation::storage::vfs::AbsoluteIRI(u"file:///a")};
  EXPECT_EQ(static_cast<const void*>(&record), static_cast<const void*>(&record.folder));
}

TEST(PackageRegistryInterfaces, AreDestroyedThroughTheirBases) {
  EXPECT_TRUE(std::has_virtual_destructor_v<IPackage>);
  EXPECT_TRUE(std::has_virtual_destructor_v<IPackageRegistry>);
}

}  // namespace
}  // namespace Quorvex::PackageRegistry
