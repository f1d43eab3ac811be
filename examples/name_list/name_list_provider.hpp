// Storage that serves a list of names and nothing else: what an archive or a catalog offers before anything is
// unpacked.
#pragma once

#include <foundation/storage/vfs/storage_provider.hpp>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace name_list {

namespace vfs = foundation::storage::vfs;

/// Folders and empty files. Read-only, immutable, safe from any thread.
class NameListProvider final : public vfs::IStorageProvider {
 public:
  /// Serves the files whose path texts ("/a/b.vnx") these are, and the folders around them.
  explicit NameListProvider(const std::vector<std::u16string>& files);

  [[nodiscard]] vfs::FolderListing List(const vfs::AbsoluteIRI& folder) const override;
  vfs::FileIdentity CheckFolder(const vfs::AbsoluteIRI& folder) const override;
  [[nodiscard]] vfs::FileStatus Stat(const vfs::AbsoluteIRI& location) const override;
  [[nodiscard]] vfs::AbsoluteIRI CanonicalLocation(const vfs::AbsoluteIRI& location) const override;
  [[nodiscard]] bool ComparesNamesExactly(const vfs::AbsoluteIRI& folder) const override;
  [[nodiscard]] std::unique_ptr<vfs::IReadableFile> OpenForReading(const vfs::AbsoluteIRI& file) const override;
  [[nodiscard]] std::shared_ptr<const vfs::MappedBytes> Map(const vfs::AbsoluteIRI& file) const override;

  /// From here on, all that would change something fails with std::errc::read_only_file_system.
  [[nodiscard]] std::unique_ptr<vfs::IWritableFile> OpenForWriting(const vfs::AbsoluteIRI& file,
                                                                   vfs::WriteMode mode) const override;
  void FlushFolder(const vfs::AbsoluteIRI& folder) const override;
  void Rename(const vfs::AbsoluteIRI& from, const vfs::AbsoluteIRI& to) const override;
  void Remove(const vfs::AbsoluteIRI& location) const override;
  void CreateFolder(const vfs::AbsoluteIRI& folder) const override;
  [[nodiscard]] std::unique_ptr<vfs::IFileLock> Lock(const vfs::AbsoluteIRI& file,
                                                     std::chrono::milliseconds timeout) const override;

 private:
  using Segments = std::vector<std::u16string>;
  struct Node {
    vfs::FileKind kind;
    std::uint64_t number;
  };

  const Node& At(const char* operation, const vfs::AbsoluteIRI& location) const;
  const Node& At(const char* operation, const vfs::AbsoluteIRI& location, vfs::FileKind kind) const;
  [[nodiscard]] vfs::FileIdentity IdentityOf(const Node& node) const;

  std::map<Segments, Node> nodes_;  // what a folder holds follows it
  vfs::FileTime madeAt_;
};

}  // namespace name_list
