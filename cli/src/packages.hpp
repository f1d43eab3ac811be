// The installed packages that a folder of manifests tells of, and what each puts on the path.
#pragma once

#include <boost/json/array.hpp>
#include <cstdint>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <optional>
#include <search_path_environment/manifest_registry.hpp>
#include <string>
#include <vector>

#include "command_line.hpp"

namespace vornixpath {

enum class PackageState : std::uint8_t {
  Adds,      ///< its folders belong on the path
  Disabled,  ///< it adds nothing, for it is not enabled
  Unmarked,  ///< likewise, for it is a root-folder package that nobody installed by hand
  Empty,     ///< likewise, for it has no path folders
  Unclear,   ///< nobody can tell, for its mark of having been installed by hand is no boolean
  Refused,   ///< nobody can tell, for there is something wrong with its manifest
};

/// What one manifest comes to.
struct Package {
  foundation::storage::vfs::AbsoluteIRI manifest;
  PackageState state;
  std::u16string component;                                                         // of any that is not refused
  std::vector<foundation::storage::vfs::AbsoluteIRI> folders;                       // of one that adds some
  std::optional<Quorvex::PathEnvironment::ManifestProblem> problem = std::nullopt;  // of one that is refused
};
using Packages = std::vector<Package>;

/// Those of the folder that the argument `folder` names, in the order of their manifests' names. Throws UsageError when
/// that is malformed, and the storage layer's Exception when the folder cannot be listed.
[[nodiscard]] Packages PackagesIn(const std::string& folder);

/// The same of the folder that `options` name, if they do. Warns of each about which nobody can tell.
[[nodiscard]] Packages PackagesFor(const PathOptions& options);

/// What they put on the path, in order.
[[nodiscard]] std::vector<foundation::storage::vfs::AbsoluteIRI> FoldersOf(const Packages& packages);

/// Whether nobody can tell what the package adds.
[[nodiscard]] bool IsInDoubt(const Package& package);
[[nodiscard]] bool AnyInDoubt(const Packages& packages);

/// Why the package adds nothing, in words that follow its component or its manifest; empty for one that adds folders.
[[nodiscard]] std::string ReasonOf(const Package& package);

/// The manifest with line and column, where they are known: "/p/a.json:3:5". Safe for a terminal.
[[nodiscard]] std::string PlaceOf(const Package& package);

/// Of each package about which nobody can tell: its manifest, `line` and `column` where they are known, and `reason`.
[[nodiscard]] boost::json::array ProblemsToJson(const Packages& packages);

}  // namespace vornixpath
