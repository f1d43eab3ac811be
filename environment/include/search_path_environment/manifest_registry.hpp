// The installed packages as a folder of manifests tells them.
#pragma once

#include <cstddef>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <memory>
#include <package_registry/package_registry.hpp>
#include <search_path_environment/export.hpp>
#include <search_path_environment/package_manifest.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathEnvironment {

/// A manifest that counts, and where it stands.
struct ManifestFile {
  foundation::storage::vfs::AbsoluteIRI file;  ///< in the folder of manifests
  PackageManifest manifest;                    ///< as it was when the registry was made
};

/// A manifest that does not count. It never spoils the others.
struct ManifestProblem {
  foundation::storage::vfs::AbsoluteIRI file;  ///< in the folder of manifests
  std::size_t line;                            ///< from 1; 0 when the file could not be read at all
  std::size_t column;                          ///< in characters, from 1; 0 when it is not known
  std::string reason;                          ///< safe for a terminal

  friend bool operator==(const ManifestProblem&, const ManifestProblem&) = default;
};

/// Immutable, and safe from any thread: the manifests are read when it is made, and never again.
class SEARCH_PATH_ENVIRONMENT_EXPORT ManifestRegistry final : public PackageRegistry::IPackageRegistry {
 public:
  /// The largest file that is read.
  static constexpr std::size_t kLargestManifest = std::size_t{1} << 20U;

  /// Reads every file of `folder` whose name ends in ".json" and does not begin with a dot. Of several manifests for
  /// one component the first counts. Throws the storage layer's Exception when the folder cannot be listed; what is
  /// wrong with a file is a problem.
  ManifestRegistry(const foundation::storage::vfs::AbsoluteIRI& folder,
                   const foundation::storage::vfs::StorageSystemReference& storage);
  ManifestRegistry(const ManifestRegistry&) noexcept;
  ManifestRegistry& operator=(const ManifestRegistry&) noexcept;
  ~ManifestRegistry() override;

  /// O(1) on average. The package may outlive the registry.
  [[nodiscard]] std::shared_ptr<const PackageRegistry::IPackage> GetPackage(
      const VornixComponents::ComponentIdentifier& component) const override;

  /// Those that count, in the order of the file names, code unit by code unit. They live as long as this object or a
  /// copy of it.
  [[nodiscard]] const std::vector<ManifestFile>& GetManifests() const noexcept;
  /// Those that do not; order and life as above.
  [[nodiscard]] const std::vector<ManifestProblem>& GetProblems() const noexcept;

 private:
  class Content;
  std::shared_ptr<const Content> content_;
};

}  // namespace Quorvex::PathEnvironment
