#pragma once

#include <foundation/export.hpp>
#include <foundation/storage/vfs/storage_provider.hpp>

namespace foundation::storage::vfs {

/// The local file system as storage: names are bytes, taken through the codec that loses none of them.
///
/// Stateless and safe from any thread; each operation holds at most one descriptor while it runs.
class FOUNDATION_EXPORT FileStorageProvider final : public IStorageProvider {
 public:
  FileStorageProvider();
  ~FileStorageProvider() override;

  [[nodiscard]] FolderListing List(const AbsoluteIRI& folder) const override;
  FileIdentity CheckFolder(const AbsoluteIRI& folder) const override;
  [[nodiscard]] FileStatus Stat(const AbsoluteIRI& location) const override;
  [[nodiscard]] AbsoluteIRI CanonicalLocation(const AbsoluteIRI& location) const override;
  /// Always true: letter case matters.
  [[nodiscard]] bool ComparesNamesExactly(const AbsoluteIRI& folder) const override;
  [[nodiscard]] std::unique_ptr<IReadableFile> OpenForReading(const AbsoluteIRI& file) const override;
  [[nodiscard]] std::shared_ptr<const MappedBytes> Map(const AbsoluteIRI& file) const override;
  [[nodiscard]] std::unique_ptr<IWritableFile> OpenForWriting(const AbsoluteIRI& file, WriteMode mode) const override;
  void FlushFolder(const AbsoluteIRI& folder) const override;
  void Rename(const AbsoluteIRI& from, const AbsoluteIRI& to) const override;
  void Remove(const AbsoluteIRI& location) const override;
  void CreateFolder(const AbsoluteIRI& folder) const override;
  [[nodiscard]] std::unique_ptr<IFileLock> Lock(const AbsoluteIRI& file,
                                                std::chrono::milliseconds timeout) const override;
};

}  // namespace foundation::storage::vfs
