#include <algorithm>
#include <fl/filesystem/displayed_text.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_environment/saved_path_error.hpp>
#include <search_path_environment/saved_path_file.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <utility>

#include "path_versions.hpp"
#include "whole_file.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::IFileLock;
using foundation::storage::vfs::IStorageProvider;
using foundation::storage::vfs::StorageSystemReference;

namespace {

// Far more than any list of folders.
constexpr std::size_t kLargestFile = std::size_t{1} << 30U;

// The file itself and what stands beside it, links followed: every name of the file leads to the same lock, and a link
// to it stays a link.
class Places {
 public:
  Places(const IStorageProvider& storage, const AbsoluteIRI& file) : file_(storage.CanonicalLocation(file)) {}

  [[nodiscard]] const AbsoluteIRI& File() const { return file_; }
  [[nodiscard]] AbsoluteIRI Folder() const { return file_.getParent(); }
  [[nodiscard]] AbsoluteIRI Beside(std::u16string_view suffix) const {
    return Folder().getChild(file_.getName().append(suffix));
  }
  [[nodiscard]] AbsoluteIRI Lock() const { return Beside(u".lock"); }
  [[nodiscard]] AbsoluteIRI Draft() const { return Beside(u".draft"); }
  [[nodiscard]] AbsoluteIRI Versions() const { return Beside(u".versions"); }

 private:
  AbsoluteIRI file_;
};

void CreateWithParents(const IStorageProvider& storage, const AbsoluteIRI& folder) {
  try {
    storage.CreateFolder(folder);
  } catch (const Exception& failure) {
    if (failure.GetError() == std::errc::file_exists) return;
    if (failure.GetError() != std::errc::no_such_file_or_directory || folder.getParent() == folder) throw;
    CreateWithParents(storage, folder.getParent());
    storage.CreateFolder(folder);
  }
}

// Whether it worked. Best effort: whatever fails here, the failure that led here is the one to be told.
template <class Restore>
bool Attempt(const Restore& restore) noexcept {
  try {
    restore();
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

void PutBack(const IStorageProvider& storage, const Places& places, const std::optional<std::string>& old) {
  if (old) return ReplaceWholeFile(storage, places.File(), places.Draft(), *old, Durability::Flushed);
  RemoveIfThere(storage, places.File());
}

void Install(const IStorageProvider& storage, const Places& places, std::string_view bytes) {
  try {
    ReplaceWholeFile(storage, places.File(), places.Draft(), bytes, Durability::Flushed);
  } catch (...) {
    Attempt([&] { RemoveIfThere(storage, places.Draft()); });
    throw;
  }
}

// Makes sure that what was installed in the place of `old` stays, or puts `old` back.
void Settle(const IStorageProvider& storage, const Places& places, const std::optional<std::string>& old) {
  try {
    storage.FlushFolder(places.Folder());
  } catch (const Exception& failure) {
    if (Attempt([&] { PutBack(storage, places, old); })) throw;
    throw Exception("make durable", places.File(), failure.GetError(),
                    failure.GetError().message() + "; the edit could not be taken back, so it stands");
  }
}

}  // namespace

SavedPathFile::SavedPathFile(const AbsoluteIRI& file, StorageSystemReference storage)
    : file_(file), storage_(std::move(storage)) {}

std::optional<std::string> SavedPathFile::ReadBytes() const {
  return ReadWholeFile(*storage_.ProviderFor(file_), file_, kLargestFile);
}

SavedPathText SavedPathFile::Read() const { return Understand(ReadBytes()); }

SavedPathText SavedPathFile::Understand(const std::optional<std::string>& bytes) const {
  if (!bytes) return {};
  try {
    return SavedPathText::Parse(*bytes);
  } catch (const SavedPathError& error) {
    throw SavedPathError(fl::filesystem::to_displayed_text(PathManagement::GetStringFromIRI(file_)), error);
  }
}

std::unique_ptr<IFileLock> SavedPathFile::Lock(std::chrono::milliseconds timeout) const {
  const auto storage = storage_.ProviderFor(file_);
  const Places places(*storage, file_);
  CreateWithParents(*storage, places.Folder());
  return storage->Lock(places.Lock(), timeout);
}

void SavedPathFile::Replace(const std::optional<std::string>& old, const SavedPathText& path, EditKind kind,
                            std::uint64_t undone) const {
  const std::string bytes = path.ToBytes();
  if (old == bytes) return;

  const auto storage = storage_.ProviderFor(file_);
  const Places places(*storage, file_);
  const AbsoluteIRI version =
      PathVersions(*storage, places.Versions()).Keep(old ? std::string_view(*old) : std::string_view(), {kind, undone});
  try {
    Install(*storage, places, bytes);
    Settle(*storage, places, old);
  } catch (...) {
    Attempt([&] { RemoveIfThere(*storage, version); });
    throw;
  }
}

std::vector<PathVersion> SavedPathFile::GetVersions() const {
  const auto storage = storage_.ProviderFor(file_);
  return PathVersions(*storage, Places(*storage, file_).Versions()).Read(ReadBytes().value_or(""));
}

const PathVersion* SavedPathFile::VersionToUndo(const std::vector<PathVersion>& versions) {
  std::vector<const PathVersion*> standing;
  for (const PathVersion& version : versions) {
    if (version.kind != EditKind::Undo) {
      standing.push_back(&version);
    } else if (!standing.empty() && standing.back()->number == version.undone) {
      standing.pop_back();
    }
  }
  return standing.empty() ? nullptr : standing.back();
}

}  // namespace Quorvex::PathEnvironment
