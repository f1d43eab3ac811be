// Which folders the installed packages put on the path.

#include <ranges>
#include <search_path_utilities/services.hpp>
#include <variant>

namespace Quorvex::PathManagement {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using PackageRegistry::IPackage;
using PackageRegistry::PackagePathFolder;
using Folders = std::vector<AbsoluteIRI>;

// Only what was installed by hand: this is the difference between the two kinds of package.
void AppendRootFolder(const IPackage& package, Folders& folders) {
  const auto isManuallyInstalled = package.GetProperty(u"ManualInstall");
  if (isManuallyInstalled && std::get<bool>(*isManuallyInstalled)) folders.push_back(package.GetRootFolder());
}

void AppendPathFolders(const IPackage& package, Folders& folders) {
  const auto records = package.GetPathFolders();
  if (!records) return;
  const auto declared = *records | std::views::transform(&PackagePathFolder::folder);
  folders.insert(folders.end(), declared.begin(), declared.end());
}

}  // namespace

Folders GetPathFoldersForPackages(const PackageRegistry::IPackageRegistry& registry,
                                  std::span<const VornixComponents::ComponentIdentifier> components) {
  Folders folders;
  for (const auto& component : components) {
    const auto package = registry.GetPackage(component);
    if (!package || !package->IsEnabled()) continue;
    if (package->IsRootFolderPackage()) {
      AppendRootFolder(*package, folders);
    } else {
      AppendPathFolders(*package, folders);
    }
  }
  return folders;
}

}  // namespace Quorvex::PathManagement
