// The installed packages as the environment knows them: which component a package stands for, and what it may put on
// the search path. Threads and storage: as the implementation says.
#pragma once

#include <cstddef>
#include <cstdint>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <functional>
#include <memory>
#include <optional>
#include <package_registry/export.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace Quorvex::VornixComponents {

/// The name of a component, compared exactly. A value, safe to read from many threads.
class ComponentIdentifier {
 public:
  /// Any text names a component; whether there is one, a registry knows.
  explicit ComponentIdentifier(std::u16string text) noexcept : text_(std::move(text)) {}

  /// The name as it was given.
  [[nodiscard]] const std::u16string& GetText() const noexcept { return text_; }

  friend bool operator==(const ComponentIdentifier&, const ComponentIdentifier&) = default;
  /// For hash tables that find it by its arguments.
  friend std::size_t hash_value(const ComponentIdentifier& identifier) noexcept {
    return std::hash<std::u16string>()(identifier.text_);
  }

 private:
  std::u16string text_;
};

}  // namespace Quorvex::VornixComponents

/// So that components can be keys of hash tables.
template <>
struct std::hash<Quorvex::VornixComponents::ComponentIdentifier> {
  /// Pure. O(n).
  [[nodiscard]] std::size_t operator()(
      const Quorvex::VornixComponents::ComponentIdentifier& identifier) const noexcept {
    return hash_value(identifier);
  }
};

namespace Quorvex::PackageRegistry {

/// One folder that a package puts on the path.
struct PackagePathFolder {
  foundation::storage::vfs::AbsoluteIRI folder;  ///< need not exist

  friend bool operator==(const PackagePathFolder&, const PackagePathFolder&) = default;
};

/// What somebody noted about a package.
using PackageProperty = std::variant<bool, std::int64_t, double, std::u16string>;

/// An installed package, as far as the path is concerned. Immutable; nobody is asked whether its folders exist.
class PACKAGE_REGISTRY_EXPORT IPackage {
 public:
  virtual ~IPackage();

  /// A package that is not enabled adds nothing to the path.
  [[nodiscard]] virtual bool IsEnabled() const = 0;
  /// Whether the root folder is what the package has for the path, and not its path folders.
  [[nodiscard]] virtual bool IsRootFolderPackage() const = 0;
  /// The property of that name; empty when the package has none.
  [[nodiscard]] virtual std::optional<PackageProperty> GetProperty(std::u16string_view name) const = 0;
  /// The folder that holds the package; of a root-folder package, what it may put on the path.
  [[nodiscard]] virtual foundation::storage::vfs::AbsoluteIRI GetRootFolder() const = 0;
  /// In the package's own order, repeats included. Null is as good as an empty list.
  [[nodiscard]] virtual std::shared_ptr<const std::vector<PackagePathFolder>> GetPathFolders() const = 0;

 protected:
  IPackage() = default;
  IPackage(const IPackage&) = default;
  IPackage& operator=(const IPackage&) = default;
};

/// Knows the installed packages. Threads and errors: as the implementation says.
class PACKAGE_REGISTRY_EXPORT IPackageRegistry {
 public:
  virtual ~IPackageRegistry();

  /// The package that `component` stands for; null when the registry does not know it.
  [[nodiscard]] virtual std::shared_ptr<const IPackage> GetPackage(
      const VornixComponents::ComponentIdentifier& component) const = 0;

 protected:
  IPackageRegistry() = default;
  IPackageRegistry(const IPackageRegistry&) = default;
  IPackageRegistry& operator=(const IPackageRegistry&) = default;
};

}  // namespace Quorvex::PackageRegistry
