#include <algorithm>
#include <fl/filesystem/displayed_text.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_environment/path_changed_exception.hpp>
#include <search_path_environment/saved_path_error.hpp>
#include <search_path_environment/saved_path_file.hpp>
#include <search_path_environment/whole_file.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <utility>

#include "folder_making.hpp"
#include "path_versions.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::IFileLock;
using foundation::storage::vfs::IStorageProvider;
using foundation::storage::vfs::StorageSystemReference;

namespace {

// The file itself and what stands beside it.
class PlacesBeside {
 public:
  explicit PlacesBeside(const AbsoluteIRI& file) : file_(file) {}

  [[nodiscard]] const AbsoluteIRI& File() const { return file_; }
  [[nodiscard]] AbsoluteIRI Folder() const { return file_.getParent(); }
  [[nodiscard]] AbsoluteIRI Lock() const { return Beside(u".lock"); }
  [[nodiscard]] AbsoluteIRI Draft() const { return Beside(u".draft"); }
  [[nodiscard]] AbsoluteIRI Versions() const { return Beside(u".versions"); }

 private:
  [[nodiscard]] AbsoluteIRI Beside(std::u16string_view suffix) const {
    return Folder().getChild(file_.getName().append(suffix));
  }

  AbsoluteIRI file_;
};

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

void PutBack(const IStorageProvider& storage, const PlacesBeside& places, const std::optional<std::string>& old) {
  if (old) return ReplaceWholeFile(storage, places.File(), places.Draft(), {*old}, Durability::Flushed);
  RemoveIfThere(storage, places.File());
}

void Install(const IStorageProvider& storage, const PlacesBeside& places, std::string_view bytes) {
  try {
    ReplaceWholeFile(storage, places.File(), places.Draft(), {bytes}, Durability::Flushed);
  } catch (...) {
    Attempt([&] { RemoveIfThere(storage, places.Draft()); });
    throw;
  }
}

// Makes sure that what was installed in the place of `old` stays, or puts `old` back and calls `afterwards`.
template <class Afterwards>
void Settle(const IStorageProvider& storage, const PlacesBeside& places, const std::optional<std::string>& old,
            const Afterwards& afterwards) {
  try {
    storage.FlushFolder(places.Folder());
  } catch (const Exception& failure) {
    if (!Attempt([&] { PutBack(storage, places, old); })) {
      throw Exception("make durable", places.File(), failure.GetError(),
                      failure.GetError().message() + "; the edit could not be taken back, so it stands");
    }
    Attempt(afterwards);
    throw;
  }
}

}  // namespace

SavedPathFile::SavedPathFile(const AbsoluteIRI& file, StorageSystemReference storage)
    : file_(file), storage_(std::move(storage)) {}

std::optional<std::string> SavedPathFile::ReadBytes() const {
  return ReadWholeFile(*storage_.ProviderFor(file_), file_);
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

SavedPathFile SavedPathFile::WithLinksFollowed() const {
  const auto storage = storage_.ProviderFor(file_);
  if (IsLinkToNowhere(*storage, file_)) {
    // Replacing it would not reach what it is meant to lead to.
    throw Exception("edit", file_, std::make_error_code(std::errc::no_such_file_or_directory),
                    "it is a link that leads nowhere; make the file that it should lead to, or remove the link");
  }
  return {storage->CanonicalLocation(file_), storage_};
}

std::unique_ptr<IFileLock> SavedPathFile::Lock(std::chrono::milliseconds timeout) const {
  const auto storage = storage_.ProviderFor(file_);
  const PlacesBeside places(file_);
  MakeFolderWithParents(*storage, places.Folder());
  return storage->Lock(places.Lock(), timeout);
}

void SavedPathFile::Replace(const std::optional<std::string>& old, const std::string& bytes, EditKind kind,
                            std::uint64_t undone) const {
  if (old == bytes) return;

  const auto storage = storage_.ProviderFor(file_);
  const PlacesBeside places(file_);
  const AbsoluteIRI version =
      PathVersions(*storage, places.Versions()).Keep(old ? std::string_view(*old) : std::string_view(), {kind, undone});
  const auto dropVersion = [&] { RemoveIfThere(*storage, version); };
  try {
    if (!Holds(*storage, file_, old)) throw PathChangedException();
    Install(*storage, places, bytes);
  } catch (...) {
    Attempt(dropVersion);
    throw;
  }
  Settle(*storage, places, old, dropVersion);
}

std::vector<PathVersion> SavedPathFile::GetVersions() const {
  const auto storage = storage_.ProviderFor(file_);
  return PathVersions(*storage, PlacesBeside(storage->CanonicalLocation(file_)).Versions())
      .Read(ReadBytes().value_or(""));
}

const PathVersion* SavedPathFile::VersionToUndo(const std::vector<PathVersion>& versions,
                                                const SavedPathText::Folders& current) {
  std::vector<const PathVersion*> standing;
  for (const PathVersion& version : versions) {
    if (version.damage || version.kind != EditKind::Undo) {
      standing.push_back(&version);
      continue;
    }
    // With the edit that was undone went those after it, which had no effect any more.
    const auto undone = std::find_if(standing.begin(), standing.end(),
                                     [&](const PathVersion* edit) { return edit->number == version.undone; });
    standing.erase(undone, standing.end());
  }
  const auto hasNoEffect = [&](const PathVersion* edit) {
    return !edit->damage && edit->before.GetFolders() == current;
  };
  while (!standing.empty() && hasNoEffect(standing.back())) standing.pop_back();
  return standing.empty() ? nullptr : standing.back();
}

}  // namespace Quorvex::PathEnvironment
