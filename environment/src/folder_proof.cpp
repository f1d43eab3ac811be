#include <algorithm>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_environment/folder_proof.hpp>

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::FileKind;
using foundation::storage::vfs::FileStatus;
using foundation::storage::vfs::IStorageProvider;

namespace {

// What a listing would call the entry: a link that leads nowhere is something else.
FileKind KindOfLinked(const AbsoluteIRI& link, const IStorageProvider& storage) {
  try {
    return storage.Stat(link).kind;
  } catch (const Exception& failure) {
    const std::error_code error = failure.GetError();
    const bool leadsNowhere = error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory ||
                              error == std::errc::too_many_symbolic_link_levels;
    if (!leadsNowhere) throw;
    return FileKind::Other;
  }
}

Standing StandingOfFolder(const FolderProof& proof, const AbsoluteIRI& folder, const IStorageProvider& storage) {
  const FileStatus status = storage.Stat(folder);
  if (proof.finding == FolderProof::Finding::Missing) return Standing::Another;
  if (status.identity != proof.stamp.identity) return Standing::Another;

  const FolderStamp stamp = {status.identity, status.modificationTime, status.changeTime};
  const bool holds = status.kind == FileKind::Folder && proof.CanProve() && stamp == proof.stamp &&
                     std::all_of(proof.links.begin(), proof.links.end(), [&](const LinkedEntry& link) {
                       return KindOfLinked(folder.getChild(link.name), storage) == link.kind;
                     });
  return holds ? Standing::Proven : Standing::Changed;
}

}  // namespace

bool FolderProof::CanProve() const noexcept {
  if (finding != Finding::Folder) return finding == Finding::Missing;
  return std::max(stamp.modificationTime, stamp.changeTime) < readAt;
}

Standing StandingOf(const FolderProof& proof, const AbsoluteIRI& folder, const IStorageProvider& storage) {
  try {
    return StandingOfFolder(proof, folder, storage);
  } catch (const Exception& failure) {
    const bool isMissing = failure.GetError() == std::errc::no_such_file_or_directory;
    const bool wasMissing = proof.finding == FolderProof::Finding::Missing;
    if (isMissing && wasMissing) return Standing::Proven;
    // Whatever failed, a listing will say more. What was no folder may by now be one that stands elsewhere on the path.
    return wasMissing || isMissing ? Standing::Another : Standing::Changed;
  }
}

}  // namespace Quorvex::PathEnvironment
