#include <array>
#include <fl/filesystem/displayed_text.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_environment/snapshot_file.hpp>
#include <search_path_environment/whole_file.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <span>
#include <string_view>

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::FileKind;
using foundation::storage::vfs::IStorageProvider;
using foundation::storage::vfs::StorageSystemReference;

namespace {

constexpr std::string_view kSnapshotBeginning = "vornixpath-snapshot ";

// A slip of the keyboard must not cost somebody's file.
void RequireSnapshotOrNothing(const IStorageProvider& storage, const AbsoluteIRI& file) {
  try {
    const auto status = storage.Stat(file);
    if (status.kind != FileKind::File || status.size == 0) return;
  } catch (const Exception& failure) {
    if (failure.GetError() == std::errc::no_such_file_or_directory) return;
    throw;
  }
  std::array<char, kSnapshotBeginning.size()> beginning = {};
  static_cast<void>(storage.OpenForReading(file)->Read(std::as_writable_bytes(std::span(beginning))));
  if (std::string_view(beginning.data(), beginning.size()) == kSnapshotBeginning) return;
  throw Exception("replace", file, std::make_error_code(std::errc::file_exists), "it is no snapshot");
}

}  // namespace

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
  RequireSnapshotOrNothing(*storage.ProviderFor(file), file);
  ReplaceWholeFile(*storage.ProviderFor(file), file, {bytes}, Durability::Flushed);
}

}  // namespace Quorvex::PathEnvironment
