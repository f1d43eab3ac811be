#pragma once

#include <foundation/export.hpp>
#include <foundation/storage/vfs/storage_provider.hpp>
#include <memory>
#include <string_view>

namespace foundation::storage::vfs {

namespace detail {
class MemoryTree;
}

/// How the folders of a tree compare names.
enum class NameComparison : std::uint8_t {
  Exact,
  IgnoreCase  ///< Unicode's full default case folding; a name keeps the spelling it was made with
};

/// Storage in memory, for embedding and for tests: folders, files and links that behave as those of a disk do.
///
/// Safe from any thread; one lock for the tree. The tree lives as long as the provider or any file of it that is open.
class FOUNDATION_EXPORT MemoryStorageProvider final : public IStorageProvider {
 public:
  /// An empty root, all of whose folders compare names like that.
  explicit MemoryStorageProvider(NameComparison comparison = NameComparison::Exact);
  ~MemoryStorageProvider() override;

  /// Puts a file into the tree by its path text ("/a/b"), with all folders on the way; a file or link that was there
  /// under that name is replaced. Throws Exception when a folder bears that name, when something else than a folder
  /// stands in the way, and when the path is relative.
  void AddFile(std::u16string_view path, std::string_view bytes = {});
  /// The same for a folder; one that is there already stays as it is.
  void AddFolder(std::u16string_view path);
  /// The same for a link to `target`: a path text, absolute or relative to the link's folder. Nothing needs to be
  /// there.
  void AddLink(std::u16string_view path, std::u16string_view target);

  [[nodiscard]] FolderListing List(const AbsoluteIRI& folder) const override;
  FileIdentity CheckFolder(const AbsoluteIRI& folder) const override;
  [[nodiscard]] FileStatus Stat(const AbsoluteIRI& location) const override;
  /// Under IgnoreCase, in the spelling with which things were made.
  [[nodiscard]] AbsoluteIRI CanonicalLocation(const AbsoluteIRI& location) const override;
  [[nodiscard]] bool ComparesNamesExactly(const AbsoluteIRI& folder) const override;
  [[nodiscard]] std::unique_ptr<IReadableFile> OpenForReading(const AbsoluteIRI& file) const override;
  /// The bytes stay as they were when mapped, whatever is written later.
  [[nodiscard]] std::shared_ptr<const MappedBytes> Map(const AbsoluteIRI& file) const override;
  [[nodiscard]] std::unique_ptr<IWritableFile> OpenForWriting(const AbsoluteIRI& file, WriteMode mode) const override;
  void FlushFolder(const AbsoluteIRI& folder) const override;
  void Rename(const AbsoluteIRI& from, const AbsoluteIRI& to) const override;
  void Remove(const AbsoluteIRI& location) const override;
  void CreateFolder(const AbsoluteIRI& folder) const override;
  [[nodiscard]] std::unique_ptr<IFileLock> Lock(const AbsoluteIRI& file,
                                                std::chrono::milliseconds timeout) const override;

 private:
  std::shared_ptr<detail::MemoryTree> tree_;
};

}  // namespace foundation::storage::vfs
