#pragma once

#include <fakes/export.hpp>
#include <fakes/storage_call.hpp>
#include <foundation/storage/vfs/storage_provider.hpp>
#include <memory>

namespace foundation::storage::fakes {

/// A provider that hands each call on to another: the base of those that watch or hinder. As thread-safe as the inner
/// one; shares it.
class FAKES_EXPORT ForwardingStorageProvider : public vfs::IStorageProvider {
 public:
  /// Hands calls on to `inner`; `observer`, if any, sees each one first, those to opened files included.
  explicit ForwardingStorageProvider(std::shared_ptr<const vfs::IStorageProvider> inner,
                                     std::shared_ptr<IStorageObserver> observer = nullptr);
  ForwardingStorageProvider(const ForwardingStorageProvider&) = delete;
  ForwardingStorageProvider& operator=(const ForwardingStorageProvider&) = delete;
  ~ForwardingStorageProvider() override;

  [[nodiscard]] vfs::FolderListing List(const vfs::AbsoluteIRI& folder) const override;
  vfs::FileIdentity CheckFolder(const vfs::AbsoluteIRI& folder) const override;
  [[nodiscard]] vfs::FileStatus Stat(const vfs::AbsoluteIRI& location) const override;
  [[nodiscard]] vfs::AbsoluteIRI CanonicalLocation(const vfs::AbsoluteIRI& location) const override;
  [[nodiscard]] bool ComparesNamesExactly(const vfs::AbsoluteIRI& folder) const override;
  [[nodiscard]] std::unique_ptr<vfs::IReadableFile> OpenForReading(const vfs::AbsoluteIRI& file) const override;
  [[nodiscard]] std::shared_ptr<const vfs::MappedBytes> Map(const vfs::AbsoluteIRI& file) const override;
  [[nodiscard]] std::unique_ptr<vfs::IWritableFile> OpenForWriting(const vfs::AbsoluteIRI& file,
                                                                   vfs::WriteMode mode) const override;
  void FlushFolder(const vfs::AbsoluteIRI& folder) const override;
  void Rename(const vfs::AbsoluteIRI& from, const vfs::AbsoluteIRI& to) const override;
  void Remove(const vfs::AbsoluteIRI& location) const override;
  void CreateFolder(const vfs::AbsoluteIRI& folder) const override;
  [[nodiscard]] std::unique_ptr<vfs::IFileLock> Lock(const vfs::AbsoluteIRI& file,
                                                     std::chrono::milliseconds timeout) const override;

 private:
  void Announce(StorageOperation operation, const vfs::AbsoluteIRI& location) const;

  std::shared_ptr<const vfs::IStorageProvider> inner_;
  std::shared_ptr<IStorageObserver> observer_;
};

}  // namespace foundation::storage::fakes
