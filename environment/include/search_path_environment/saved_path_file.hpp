// The file that keeps the main search path, and the versions of it that edits have replaced.
//
// Beside a file `path` stand `path.lock`, which is never removed, `path.versions`, a folder, and while an edit is being
// saved `path.draft`. Where the file is a link, they stand beside what it leads to.
#pragma once

#include <chrono>
#include <cstdint>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/storage_provider.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <memory>
#include <optional>
#include <search_path_environment/export.hpp>
#include <search_path_environment/saved_path_error.hpp>
#include <search_path_environment/saved_path_text.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathEnvironment {

/// What an edit did.
enum class EditKind : std::uint8_t { Addition, Removal, Undo };

/// An edit, and the path as it was before.
struct PathVersion {
  std::uint64_t number = 0;              ///< counted from 1, without gaps but for versions long dropped
  EditKind kind = EditKind::Addition;    ///< of the edit that replaced this version
  std::uint64_t undone = 0;              ///< of an Undo, the number of the edit that it took back
  std::chrono::sys_seconds time;         ///< of that edit, in UTC
  SavedPathText before;                  ///< no folder when there was no file
  std::optional<SavedPathError> damage;  ///< why nothing but the number is known
};

/// A handle, cheap to copy. Reading may be done from any thread at any time; the rest is for whoever holds the lock.
/// Failures are the storage layer's Exceptions, and SavedPathErrors for what stands in the file.
class SEARCH_PATH_ENVIRONMENT_EXPORT SavedPathFile {
 public:
  /// As many versions as are kept.
  static constexpr std::size_t kVersions = 20;

  /// A handle on `file`, which need not be there yet. Touches no storage.
  SavedPathFile(const foundation::storage::vfs::AbsoluteIRI& file,
                foundation::storage::vfs::StorageSystemReference storage);

  /// As it was given; links are not followed.
  [[nodiscard]] const foundation::storage::vfs::AbsoluteIRI& GetLocation() const noexcept { return file_; }

  /// The bytes as they stand; nothing when nothing was saved yet.
  [[nodiscard]] std::optional<std::string> ReadBytes() const;
  /// ReadBytes, understood; no folder when nothing was saved yet.
  [[nodiscard]] SavedPathText Read() const;
  /// `bytes`, which ReadBytes gave, understood.
  [[nodiscard]] SavedPathText Understand(const std::optional<std::string>& bytes) const;

  /// The same file by its own name, links followed. Whoever edits takes this one, and does all with it, so that a link
  /// that is changed meanwhile does not matter. Fails for a link that leads nowhere.
  [[nodiscard]] SavedPathFile WithLinksFollowed() const;

  /// Keeps every other process, and every other holder in this one, from editing. Makes the folders that the file is
  /// to stand in. Fails with std::errc::timed_out when another holds the lock for so long.
  [[nodiscard]] std::unique_ptr<foundation::storage::vfs::IFileLock> Lock(std::chrono::milliseconds timeout) const;

  /// Puts `bytes` in the place of `old`, which ReadBytes gave under this lock, in one step and durably, and keeps `old`
  /// as a version. Does nothing when both are the same.
  ///
  /// When it throws, the old path is in place; only when storage fails after the new one took its place, and the old
  /// one cannot be put back either, does the new one stand, and the message says so. Throws PathChangedException when
  /// somebody who does not lock, a person with an editor, has changed the file since it was read.
  void Replace(const std::optional<std::string>& old, const std::string& bytes, EditKind kind,
               std::uint64_t undone = 0) const;

  /// The last edits, oldest first. Needs no lock.
  [[nodiscard]] std::vector<PathVersion> GetVersions() const;

  /// Of `versions`, which GetVersions gave, the one to go back to from `current`: that of the last edit that is neither
  /// undone nor without effect on what stands there now. Null when there is none.
  [[nodiscard]] static const PathVersion* VersionToUndo(const std::vector<PathVersion>& versions,
                                                        const SavedPathText::Folders& current);

 private:
  foundation::storage::vfs::AbsoluteIRI file_;
  foundation::storage::vfs::StorageSystemReference storage_;
};

}  // namespace Quorvex::PathEnvironment
