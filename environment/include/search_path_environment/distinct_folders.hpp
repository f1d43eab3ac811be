// The step before a leaf path is made: of a list of folders, each stays once, however often and in whatever spellings
// it is listed. Locations are compared, spellings are shown.
#pragma once

#include <cstddef>
#include <cstdint>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <memory>
#include <optional>
#include <search_path_environment/export.hpp>
#include <string>
#include <system_error>
#include <vector>

namespace Quorvex::PathEnvironment {

/// How two spellings are known to mean one folder.
enum class SameFolder : std::uint8_t {
  ByText,               ///< they are the same identifier
  ByIdentity,           ///< storage has the same device and inode for them
  ByCanonicalLocation,  ///< storage has no identity for them, for nothing may be there, but links lead to one place
};

/// A folder that stays on the path, under the first of its spellings.
struct KeptFolder {
  foundation::storage::vfs::AbsoluteIRI location;  ///< as it is spelled on the list
  std::size_t position;                            ///< on the list as it was given, from 0
  std::error_code error;                           ///< what storage answered, if it could not tell what was asked
};

/// A later spelling of a folder that stays.
struct DroppedFolder {
  foundation::storage::vfs::AbsoluteIRI location;  ///< the spelling that does not stay
  std::size_t position;                            ///< where it stands on the list, from 0
  foundation::storage::vfs::AbsoluteIRI staying;   ///< the spelling that stays
  std::size_t stayingPosition;                     ///< where that stands on the list
  SameFolder reason;                               ///< how that is known
};

/// The reason in words, for people: `it is the same folder as "/a", folder 1 of the path: same device and inode`.
/// Folders are counted from 1, and nothing in it is dangerous to a terminal.
[[nodiscard]] SEARCH_PATH_ENVIRONMENT_EXPORT std::string ReasonOf(const DroppedFolder& folder);

/// What storage is asked about each folder. Either tells which folder it is.
enum class FolderQuestion : std::uint8_t {
  WhatIsThere,    ///< fails when nothing is
  CanItBeListed,  ///< fails, too, when it is no folder, or its listing would be refused
};

/// A list of folders, those that are distinct kept. Immutable, cheap to copy, safe from any thread.
class SEARCH_PATH_ENVIRONMENT_EXPORT DistinctFolders {
 public:
  /// Compares identifiers alone and touches no storage.
  explicit DistinctFolders(const std::vector<foundation::storage::vfs::AbsoluteIRI>& folders);

  /// Compares what storage tells of each identifier: device and inode, within one provider; where there are none, the
  /// canonical location; where that cannot be told either, the identifier itself. Asks one question about each
  /// identifier, by several threads for long lists, and a second and a third only where the one before failed. A
  /// folder about which storage fails stays; only std::bad_alloc and the like are thrown.
  DistinctFolders(const std::vector<foundation::storage::vfs::AbsoluteIRI>& folders,
                  const foundation::storage::vfs::StorageSystemReference& storage,
                  FolderQuestion question = FolderQuestion::WhatIsThere);
  DistinctFolders(const DistinctFolders&) noexcept;
  DistinctFolders& operator=(const DistinctFolders&) noexcept;
  ~DistinctFolders();

  /// The folders that stay, in the order of the list. They live as long as this object or a copy of it.
  [[nodiscard]] const std::vector<KeptFolder>& GetKept() const noexcept;
  /// The spellings that do not stay; order and life as above.
  [[nodiscard]] const std::vector<DroppedFolder>& GetDropped() const noexcept;

  /// Which of the kept folders, as an index, `folder` is, in any spelling. Asks storage, if this object was made with
  /// it, about a spelling that was not on the list, as it is now. O(1).
  [[nodiscard]] std::optional<std::size_t> IndexOf(const foundation::storage::vfs::AbsoluteIRI& folder) const;

 private:
  class State;
  std::shared_ptr<const State> state_;
};

}  // namespace Quorvex::PathEnvironment
