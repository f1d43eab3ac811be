#pragma once

// Trees in memory, and the paths and entries read from them.

#include <fl/filesystem/path.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <memory>
#include <search_path_environment/folder_entry.hpp>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path.hpp>
#include <search_path_environment/folder_path_factory.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::NameComparison;

/// The location of `path` in the memory that serves `scheme`.
inline AbsoluteIRI InMemory(std::u16string_view path, const std::u16string& scheme = u"memory") {
  return foundation::storage::vfs::toAbsoluteIRI(scheme, fl::filesystem::path(std::u16string(path)));
}

/// Reads `folder` as a main entry.
inline std::shared_ptr<const FolderEntry> ReadEntry(const AbsoluteIRI& folder) {
  const FolderEntryFactory factory(foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference());
  return std::dynamic_pointer_cast<const FolderEntry>(factory.CreateMainEntry(folder));
}

/// Reads the path over `folders`.
inline std::shared_ptr<const FolderPath> ReadPath(const std::vector<AbsoluteIRI>& folders) {
  const FolderEntryFactory factory(foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference());
  return FolderPathFactory().CreateFolderPath(folders, factory);
}

/// Serves a scheme as long as it lives.
class MemoryStorage {
 public:
  explicit MemoryStorage(NameComparison comparison = NameComparison::Exact, std::u16string scheme = u"memory")
      : scheme_(std::move(scheme)),
        provider_(std::make_shared<foundation::storage::vfs::MemoryStorageProvider>(comparison)) {
    mounts_.push_back(foundation::storage::vfs::VornixStorageSystem::Mount(scheme_, provider_));
  }

  /// Puts empty files into the tree, with all folders on the way.
  MemoryStorage& WithFiles(const std::vector<std::u16string>& paths) {
    for (const auto& path : paths) provider_->AddFile(path);
    return *this;
  }
  MemoryStorage& WithFolders(const std::vector<std::u16string>& paths) {
    for (const auto& path : paths) provider_->AddFolder(path);
    return *this;
  }
  MemoryStorage& WithLink(const std::u16string& path, const std::u16string& target) {
    provider_->AddLink(path, target);
    return *this;
  }

  /// Lets a `Fake`, made over the tree, serve the scheme from now on.
  template <class Fake>
  std::shared_ptr<Fake> Through() {
    auto fake = std::make_shared<Fake>(provider_);
    mounts_.push_back(foundation::storage::vfs::VornixStorageSystem::Mount(scheme_, fake));
    return fake;
  }

  [[nodiscard]] std::shared_ptr<const FolderEntry> Entry(std::u16string_view path) const {
    return ReadEntry(InMemory(path, scheme_));
  }

  [[nodiscard]] std::shared_ptr<const FolderPath> Path(const std::vector<std::u16string>& folders) const {
    std::vector<AbsoluteIRI> locations;
    locations.reserve(folders.size());
    for (const auto& folder : folders) locations.push_back(InMemory(folder, scheme_));
    return ReadPath(locations);
  }

  [[nodiscard]] foundation::storage::vfs::MemoryStorageProvider& GetProvider() const { return *provider_; }

 private:
  std::u16string scheme_;
  std::shared_ptr<foundation::storage::vfs::MemoryStorageProvider> provider_;
  std::vector<foundation::storage::vfs::MountHandle> mounts_;
};

}  // namespace Quorvex::PathEnvironment
