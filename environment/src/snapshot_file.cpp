#include <fl/filesystem/displayed_text.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_environment/snapshot_file.hpp>
#include <search_path_environment/whole_file.hpp>
#include <search_path_utilities/path_editing.hpp>

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::StorageSystemReference;

PathSnapshot ReadSnapshotFile(const StorageSystemReference& storage, const AbsoluteIRI& file,
                              const FolderPath* predecessor) {
  const auto bytes = ReadWholeFile(*storage.ProviderFor(file), file);
  if (!bytes) throw Exception("read", file, std::make_error_code(std::errc::no_such_file_or_directory));
  try {
    return PathSnapshot::Parse(*bytes, predecessor);
  } catch (const SnapshotError& error) {
    throw SnapshotError(fl::filesystem::to_displayed_text(PathManagement::GetStringFromIRI(file)), error);
  }
}

void WriteSnapshotFile(const StorageSystemReference& storage, const AbsoluteIRI& file, const PathSnapshot& snapshot) {
  const std::string bytes = snapshot.ToBytes();
  ReplaceWholeFile(*storage.ProviderFor(file), file, {bytes}, Durability::Flushed);
}

}  // namespace Quorvex::PathEnvironment
