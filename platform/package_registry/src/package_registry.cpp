#include <package_registry/package_registry.hpp>

namespace Quorvex::PackageRegistry {

IPackage::~IPackage() = default;
IPackageRegistry::~IPackageRegistry() = default;

}  // namespace Quorvex::PackageRegistry
