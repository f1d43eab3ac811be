#include "compared_side.hpp"

#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <optional>
#include <search_path_environment/location_from_text.hpp>
#include <search_path_environment/snapshot_file.hpp>

#include "current_folder.hpp"
#include "path_source.hpp"
#include "read_path.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::FolderPath;
using Folders = std::vector<AbsoluteIRI>;

// Whatever cannot be asked about is no file to be read.
std::optional<AbsoluteIRI> FileNamed(const std::string& text) {
  try {
    AbsoluteIRI file = Quorvex::PathEnvironment::LocationFromPath(fl::filesystem::from_bytes(text), CurrentFolder());
    const auto storage = VornixStorageSystem::GetStorageSystemReference().ProviderFor(file);
    if (storage->Stat(file).kind == foundation::storage::vfs::FileKind::File) return file;
    return std::nullopt;
  } catch (const foundation::storage::vfs::Exception&) {
    return std::nullopt;
  }
}

Folders FoldersOf(const std::string& side, const CompareOptions& options) {
  if (side == kSavedSide) return FoldersFromSession(options.session);
  if (side == kCurrentSide) return FoldersFor(options.path);
  PathOptions text;
  text.text = side;
  return FoldersFor(text);
}

}  // namespace

std::shared_ptr<const FolderPath> LoadSide(const std::string& side, const CompareOptions& options,
                                           const FolderPath* predecessor) {
  const auto storage = VornixStorageSystem::GetStorageSystemReference();
  const bool isName = side == kSavedSide || side == kCurrentSide;
  if (const auto file = isName ? std::nullopt : FileNamed(side)) {
    return Quorvex::PathEnvironment::ReadSnapshotFile(storage, *file, predecessor).path;
  }
  return ReadPath(Quorvex::PathEnvironment::DistinctFolders(FoldersOf(side, options), storage), predecessor);
}

}  // namespace vornixpath
