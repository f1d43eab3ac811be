// What a package says of itself, in a file of its own: a JSON object, as docs/formats/manifest.md has it.
#pragma once

#include <cstddef>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <functional>
#include <map>
#include <package_registry/package_registry.hpp>
#include <search_path_environment/export.hpp>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Quorvex::PathEnvironment {

/// Some bytes are no manifest. `what` is the reason, without the place, and safe for a terminal.
class SEARCH_PATH_ENVIRONMENT_EXPORT ManifestError : public std::runtime_error {
 public:
  /// `reason` must be safe for a terminal already.
  ManifestError(std::size_t line, std::size_t column, const std::string& reason);
  ManifestError(const ManifestError&) noexcept = default;
  ManifestError& operator=(const ManifestError&) noexcept = default;
  ~ManifestError() override;

  /// Counted from 1.
  [[nodiscard]] std::size_t GetLine() const noexcept { return line_; }
  /// In characters, counted from 1; 0 when the line alone is known.
  [[nodiscard]] std::size_t GetColumn() const noexcept { return column_; }

 private:
  std::size_t line_;
  std::size_t column_;
};

/// A value.
struct SEARCH_PATH_ENVIRONMENT_EXPORT PackageManifest {
  VornixComponents::ComponentIdentifier component;              ///< what the package is asked for by
  std::size_t componentLine;                                    ///< where the component is named, from 1
  bool isEnabled;                                               ///< one that is not adds nothing
  bool isRootFolderPackage;                                     ///< the root is all that it has for the path
  foundation::storage::vfs::AbsoluteIRI rootFolder;             ///< absolute, by text alone
  std::vector<PackageRegistry::PackagePathFolder> pathFolders;  ///< none of a root-folder package
  std::map<std::u16string, PackageRegistry::PackageProperty, std::less<>> properties;  ///< by name

  /// The manifest that `bytes` are, for a file in `folder`. Whatever they are, they give a manifest or throw
  /// ManifestError. By text alone: no storage is touched. O(n log n).
  [[nodiscard]] static PackageManifest Parse(std::string_view bytes,
                                             const foundation::storage::vfs::AbsoluteIRI& folder);
};

}  // namespace Quorvex::PathEnvironment
