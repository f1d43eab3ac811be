#include "packages.hpp"

#include <algorithm>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_utilities/services.hpp>
#include <span>
#include <utility>
#include <variant>

#include "json_parts.hpp"
#include "location_argument.hpp"
#include "location_text.hpp"
#include "output.hpp"

namespace vornixpath {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::ManifestFile;
using Quorvex::PathEnvironment::ManifestProblem;
using Quorvex::PathEnvironment::ManifestRegistry;
using Quorvex::PathEnvironment::PackageManifest;

namespace {

PackageState StateWithoutFolders(const PackageManifest& manifest) {
  if (!manifest.isEnabled) return PackageState::Disabled;
  return manifest.isRootFolderPackage ? PackageState::Unmarked : PackageState::Empty;
}

// Each by itself: one that is unclear spoils the answer about all.
Package Asked(const ManifestRegistry& registry, const ManifestFile& file) {
  const auto& component = file.manifest.component;
  Package package{file.file, PackageState::Adds, component.GetText(), {}};
  try {
    package.folders = Quorvex::PathManagement::GetPathFoldersForPackages(registry, std::span(&component, 1));
    if (package.folders.empty()) package.state = StateWithoutFolders(file.manifest);
  } catch (const std::bad_variant_access&) {
    package.state = PackageState::Unclear;
  }
  return package;
}

Package Refused(const ManifestProblem& problem) { return {problem.file, PackageState::Refused, {}, {}, problem}; }

bool IsNamedBefore(const Package& left, const Package& right) {
  return left.manifest.getName() < right.manifest.getName();
}

boost::json::object ProblemToJson(const Package& package) {
  boost::json::object object = ToJson(package.manifest);
  if (package.problem && package.problem->line != 0) object["line"] = package.problem->line;
  if (package.problem && package.problem->column != 0) object["column"] = package.problem->column;
  object["reason"] = ReasonOf(package);
  return object;
}

void WarnOf(const Package& package) {
  const std::string subject =
      package.state == PackageState::Refused ? "" : "the package " + Quoted(package.component) + " is left out: ";
  WriteWarning(PlaceOf(package) + ": " + subject + ReasonOf(package));
}

}  // namespace

Packages PackagesIn(const std::string& folder) {
  const ManifestRegistry registry(LocationFromArgument(folder), VornixStorageSystem::GetStorageSystemReference());
  Packages packages;
  for (const ManifestFile& file : registry.GetManifests()) packages.push_back(Asked(registry, file));
  for (const ManifestProblem& problem : registry.GetProblems()) packages.push_back(Refused(problem));
  std::sort(packages.begin(), packages.end(), IsNamedBefore);
  return packages;
}

Packages PackagesFor(const PathOptions& options) {
  if (!options.packages) return {};
  Packages packages = PackagesIn(*options.packages);
  for (const Package& package : packages) {
    if (IsInDoubt(package)) WarnOf(package);
  }
  return packages;
}

std::vector<AbsoluteIRI> FoldersOf(const Packages& packages) {
  std::vector<AbsoluteIRI> folders;
  for (const Package& package : packages) {
    folders.insert(folders.end(), package.folders.begin(), package.folders.end());
  }
  return folders;
}

bool IsInDoubt(const Package& package) {
  return package.state == PackageState::Unclear || package.state == PackageState::Refused;
}

bool AnyInDoubt(const Packages& packages) { return std::any_of(packages.begin(), packages.end(), IsInDoubt); }

std::string ReasonOf(const Package& package) {
  switch (package.state) {
    case PackageState::Adds:
      return "";
    case PackageState::Disabled:
      return "it is not enabled";
    case PackageState::Unmarked:
      return "it is a root-folder package that is not marked as manually installed";
    case PackageState::Empty:
      return "it has no path folders";
    case PackageState::Unclear:
      return "its property \"ManualInstall\" is no boolean";
    case PackageState::Refused:
      return package.problem ? package.problem->reason : "its manifest cannot be used";
  }
  return "unknown reason";
}

std::string PlaceOf(const Package& package) {
  std::string place = ShownText(package.manifest);
  if (!package.problem || package.problem->line == 0) return place;
  place += ':' + std::to_string(package.problem->line);
  if (package.problem->column != 0) place += ':' + std::to_string(package.problem->column);
  return place;
}

boost::json::array ProblemsToJson(const Packages& packages) {
  boost::json::array problems;
  for (const Package& package : packages) {
    if (IsInDoubt(package)) problems.push_back(ProblemToJson(package));
  }
  return problems;
}

}  // namespace vornixpath
