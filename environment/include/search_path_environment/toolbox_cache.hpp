// What folders held, kept in a file, so that a path is there at once and its folders need not be listed.
//
// The file is mapped, and of it only what a question touches is read. A cache is never needed for a right answer: each
// record carries what proves that its folder is still as it was, and where that fails the folder is read.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <memory>
#include <search_path_environment/export.hpp>
#include <search_path_environment/folder_entry.hpp>
#include <search_path_environment/folder_proof.hpp>
#include <search_path_environment/toolbox_cache_error.hpp>
#include <string_view>
#include <vector>

namespace Quorvex::PathEnvironment {

class CacheRecords;

/// A main folder that a cache holds, compared with what stands on disk.
struct RecordedFolder {
  foundation::storage::vfs::AbsoluteIRI location;  ///< as the path spells it
  Standing standing;                               ///< to what the record says
  bool canBeProven;  ///< false for one that was in trouble, or touched too shortly before it was read: it is read anew
                     ///< each time
};

/// Whether a record counts without a question.
enum class CacheTrust : std::uint8_t {
  Proven,  ///< storage is asked whether a folder is still as it was
  Blind,   ///< the answers are those of when the cache was written
};

/// An open cache. Immutable, cheap to copy, safe from any thread; it keeps the bytes it was opened with, whatever takes
/// their place in the file by renaming.
///
/// What is damaged is found when it is touched: each operation throws ToolboxCacheError then.
class SEARCH_PATH_ENVIRONMENT_EXPORT ToolboxCache {
 public:
  /// Reads the header alone. Throws ToolboxCacheError with the reason when `file` cannot be used.
  [[nodiscard]] static ToolboxCache Open(const foundation::storage::vfs::StorageSystemReference& storage,
                                         const foundation::storage::vfs::AbsoluteIRI& file, CacheTrust trust);
  ToolboxCache(const ToolboxCache&) noexcept;
  ToolboxCache& operator=(const ToolboxCache&) noexcept;
  ~ToolboxCache();

  /// When it was made, by the clock of whoever made it.
  [[nodiscard]] std::chrono::sys_time<std::chrono::nanoseconds> GetTimeOfWriting() const noexcept;
  /// The toolbox root: every folder it holds stands there or below.
  [[nodiscard]] const foundation::storage::vfs::AbsoluteIRI& GetRoot() const noexcept;
  /// As it was opened.
  [[nodiscard]] CacheTrust GetTrust() const noexcept;
  [[nodiscard]] std::size_t GetSize() const noexcept;       ///< in bytes
  [[nodiscard]] std::size_t CountFolders() const noexcept;  ///< main entries
  [[nodiscard]] std::size_t CountEntries() const noexcept;  ///< with those below them
  [[nodiscard]] std::size_t CountNames() const noexcept;    ///< files, and class folders

  /// Whether it holds a whole path, the one of a list that was read from just these bytes.
  [[nodiscard]] bool HoldsListFrom(std::string_view origin) const;
  /// Whether it holds a whole path, the one of this very list. O(folders).
  [[nodiscard]] bool HoldsList(const std::vector<foundation::storage::vfs::AbsoluteIRI>& folders) const;

  /// Whether it has a record of each of `folders`, in whatever order. O(folders).
  [[nodiscard]] bool HoldsAll(const std::vector<foundation::storage::vfs::AbsoluteIRI>& folders) const;

  /// Asks storage about every folder, by several threads for many. In path order.
  [[nodiscard]] std::vector<RecordedFolder> ExamineFolders() const;

  /// The main entries, in path order. O(names) for the first call.
  [[nodiscard]] std::vector<std::shared_ptr<const FolderEntry>> GetMainEntries() const;

  /// Reads every byte and follows every reference.
  void Check() const;

  /// The records, for those who make entries of them.
  [[nodiscard]] const CacheRecords& GetRecords() const noexcept { return *records_; }

 private:
  explicit ToolboxCache(std::shared_ptr<const CacheRecords> records) noexcept;
  std::shared_ptr<const CacheRecords> records_;
};

}  // namespace Quorvex::PathEnvironment
