#include <algorithm>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_environment/manifest_registry.hpp>
#include <search_path_environment/whole_file.hpp>
#include <unordered_map>
#include <utility>

#include "quoted_name.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::IStorageProvider;
using foundation::storage::vfs::StorageSystemReference;
using PackageRegistry::IPackage;
using PackageRegistry::PackagePathFolder;
using PackageRegistry::PackageProperty;
using VornixComponents::ComponentIdentifier;

namespace {

/// The package of a manifest.
class ManifestPackage final : public IPackage {
 public:
  explicit ManifestPackage(std::shared_ptr<const PackageManifest> manifest) : manifest_(std::move(manifest)) {}

  [[nodiscard]] bool IsEnabled() const override { return manifest_->isEnabled; }
  [[nodiscard]] bool IsRootFolderPackage() const override { return manifest_->isRootFolderPackage; }
  [[nodiscard]] std::optional<PackageProperty> GetProperty(std::u16string_view name) const override {
    const auto found = manifest_->properties.find(name);
    if (found == manifest_->properties.end()) return std::nullopt;
    return found->second;
  }
  [[nodiscard]] AbsoluteIRI GetRootFolder() const override { return manifest_->rootFolder; }
  [[nodiscard]] std::shared_ptr<const std::vector<PackagePathFolder>> GetPathFolders() const override {
    return {manifest_, &manifest_->pathFolders};
  }

 private:
  std::shared_ptr<const PackageManifest> manifest_;
};

// What is named like a manifest, whatever it is.
std::vector<std::u16string> ManifestNamesIn(const IStorageProvider& storage, const AbsoluteIRI& folder) {
  const auto listing = storage.List(folder);
  std::vector<std::u16string> names;
  const auto add = [&names](const std::u16string& name) {
    if (name.ends_with(u".json") && name.front() != u'.') names.push_back(name);
  };
  for (const auto& entry : listing.entries) add(entry.name);
  for (const auto& problem : listing.problems) add(problem.name);
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

class ManifestRegistry::Content {
 public:
  Content(const AbsoluteIRI& folder, const IStorageProvider& storage) {
    for (const std::u16string& name : ManifestNamesIn(storage, folder)) Read(storage, folder.getChild(name));
  }

  /// Null when there is none.
  [[nodiscard]] const PackageManifest* Find(const ComponentIdentifier& component) const {
    const auto found = numbers_.find(component);
    return found == numbers_.end() ? nullptr : &manifests_[found->second].manifest;
  }
  [[nodiscard]] const std::vector<ManifestFile>& GetManifests() const { return manifests_; }
  [[nodiscard]] const std::vector<ManifestProblem>& GetProblems() const { return problems_; }

 private:
  void Read(const IStorageProvider& storage, const AbsoluteIRI& file) {
    try {
      const auto bytes = ReadWholeFile(storage, file, kLargestManifest);
      if (!bytes) throw Exception("read", file, std::make_error_code(std::errc::no_such_file_or_directory));
      Add(file, PackageManifest::Parse(*bytes, file.getParent()));
    } catch (const ManifestError& error) {
      problems_.push_back({file, error.GetLine(), error.GetColumn(), error.what()});
    } catch (const Exception& failure) {
      problems_.push_back({file, 0, 0, "it cannot be read: " + failure.GetError().message()});
    }
  }

  void Add(const AbsoluteIRI& file, PackageManifest manifest) {
    const auto [place, isNew] = numbers_.emplace(manifest.component, manifests_.size());
    if (!isNew) {
      throw ManifestError(manifest.componentLine, 0,
                          "the component " + QuotedName(manifest.component.GetText()) + " is that of " +
                              QuotedName(manifests_[place->second].file.getName()) + " already");
    }
    manifests_.push_back({file, std::move(manifest)});
  }

  std::vector<ManifestFile> manifests_;
  std::vector<ManifestProblem> problems_;
  std::unordered_map<ComponentIdentifier, std::size_t> numbers_;  // of the manifests
};

ManifestRegistry::ManifestRegistry(const AbsoluteIRI& folder, const StorageSystemReference& storage)
    : content_(std::make_shared<const Content>(folder, *storage.ProviderFor(folder))) {}

ManifestRegistry::ManifestRegistry(const ManifestRegistry&) noexcept = default;
ManifestRegistry& ManifestRegistry::operator=(const ManifestRegistry&) noexcept = default;
ManifestRegistry::~ManifestRegistry() = default;

std::shared_ptr<const IPackage> ManifestRegistry::GetPackage(const ComponentIdentifier& component) const {
  const PackageManifest* const manifest = content_->Find(component);
  if (manifest == nullptr) return nullptr;
  return std::make_shared<const ManifestPackage>(std::shared_ptr<const PackageManifest>(content_, manifest));
}

const std::vector<ManifestFile>& ManifestRegistry::GetManifests() const noexcept { return content_->GetManifests(); }
const std::vector<ManifestProblem>& ManifestRegistry::GetProblems() const noexcept { return content_->GetProblems(); }

}  // namespace Quorvex::PathEnvironment
