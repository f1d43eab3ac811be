// What proves, without a listing, that a folder still holds what was found in it.
#pragma once

#include <cstdint>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/storage_provider.hpp>
#include <search_path_environment/export.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathEnvironment {

/// What storage tells of a folder with one question: which one it is, and when it was last touched.
struct FolderStamp {
  foundation::storage::vfs::FileIdentity identity;      ///< which folder it is
  foundation::storage::vfs::FileTime modificationTime;  ///< when names came or went
  foundation::storage::vfs::FileTime changeTime;        ///< the same, and all else; nobody can set it back

  friend bool operator==(const FolderStamp&, const FolderStamp&) = default;
};

/// An entry that is a link. What it leads to stands elsewhere, so the folder's own times say nothing of it.
struct LinkedEntry {
  std::u16string name;                      ///< in the folder
  foundation::storage::vfs::FileKind kind;  ///< of what it led to

  friend bool operator==(const LinkedEntry&, const LinkedEntry&) = default;
};

/// The circumstances of one reading of a folder. A value; touches storage only in StillHolds.
struct FolderProof {
  /// How the reading ended.
  enum class Finding : std::uint8_t {
    Trouble,  ///< the folder could not be read in full: nothing proves that this is still so
    Missing,  ///< there was nothing
    Folder,   ///< it was read
  };

  Finding finding = Finding::Trouble;         ///< says which of the rest counts
  FolderStamp stamp;                          ///< of a folder that was read
  foundation::storage::vfs::FileTime readAt;  ///< no change that the reading missed bears an earlier time
  std::vector<LinkedEntry> links;             ///< sorted by name

  /// Whether a change made since is sure to show. False for trouble, and for a folder that was touched so shortly
  /// before it was read that a change right after may bear the same time.
  [[nodiscard]] SEARCH_PATH_ENVIRONMENT_EXPORT bool CanProve() const noexcept;

  friend bool operator==(const FolderProof&, const FolderProof&) = default;
};

/// How a folder stands to what was found in it.
enum class Standing : std::uint8_t {
  Proven,   ///< it holds what it held
  Changed,  ///< it is the same folder, or as missing as it was, and must be read again
  Another,  ///< another folder stands there, or one where there was none, or none where there was one
};

/// Asks storage about `folder`: one question, and one more for each link in it. Throws only std::bad_alloc and the
/// like.
[[nodiscard]] SEARCH_PATH_ENVIRONMENT_EXPORT Standing
StandingOf(const FolderProof& proof, const foundation::storage::vfs::AbsoluteIRI& folder,
           const foundation::storage::vfs::IStorageProvider& storage);

}  // namespace Quorvex::PathEnvironment
