#include <cerrno>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_environment/toolbox_cache.hpp>
#include <search_path_environment/toolbox_cache_file.hpp>
#include <search_path_environment/whole_file.hpp>
#include <search_path_utilities/services.hpp>
#include <system_error>

#include "folder_making.hpp"
#include "replaceable_file.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::IStorageProvider;
using foundation::storage::vfs::StorageSystemReference;
using foundation::storage::vfs::VornixStorageSystem;
using foundation::storage::vfs::WriteMode;

namespace {

constexpr const char16_t* kLock = u".lock";
constexpr const char16_t* kDraftEnding = u".draft";

AbsoluteIRI Beside(const AbsoluteIRI& file, const char16_t* suffix) {
  return file.getParent().getChild(file.getName() + suffix);
}

// What is there and something else is nobody's to throw away. An empty file may have been made to be written to.
void RequireCacheIfAny(const StorageSystemReference& session, const AbsoluteIRI& file) {
  const auto storage = session.ProviderFor(file);
  RequireReplaceable(*storage, file);
  if (!IsThere(*storage, file) || storage->Stat(file).size == 0) return;
  try {
    static_cast<void>(ToolboxCache::Open(session, file, CacheTrust::Blind));
  } catch (const ToolboxCacheError& error) {
    if (error.GetRefusal() != CacheRefusal::Foreign) return;  // old, damaged or closed to us, but one of ours
    throw foundation::storage::vfs::Exception("replace", file, std::make_error_code(std::errc::operation_not_supported),
                                              "it is no toolbox cache");
  }
}

// Sweeps the draft unless it has become the file. What fails here does not hide why the draft was given up.
class Draft {
 public:
  Draft(const IStorageProvider& storage, const AbsoluteIRI& location) : storage_(storage), location_(location) {}
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;
  ~Draft() {
    if (!isKept_) Sweep(storage_, location_);
  }

  [[nodiscard]] const AbsoluteIRI& GetLocation() const noexcept { return location_; }

  void FlushAndRenameTo(const AbsoluteIRI& file) {
    const auto opened = storage_.OpenForWriting(location_, WriteMode::Append);
    opened->Flush();
    opened->Close();
    storage_.Rename(location_, file);
    isKept_ = true;
    storage_.FlushFolder(file.getParent());
  }

 private:
  const IStorageProvider& storage_;
  AbsoluteIRI location_;
  bool isKept_ = false;
};

bool IsOfAFullDisk(const std::error_code& error) {
  return error == std::errc::no_space_on_device || error == std::errc::file_too_large || error.value() == EDQUOT;
}

void WriteByWayOfDraft(const AbsoluteIRI& file, const AbsoluteIRI& toolboxRoot, const FolderEntryFactory& entries,
                       std::chrono::milliseconds patience) {
  const auto session = VornixStorageSystem::GetStorageSystemReference();
  const auto storage = session.ProviderFor(file);
  MakeFolderWithParents(*storage, file.getParent());
  RequireCacheIfAny(session, file);
  const AbsoluteIRI place = storage->CanonicalLocation(file);
  const auto lock = storage->Lock(Beside(place, kLock), patience);

  // The cache itself is never written in place: others have it mapped.
  Draft draft(*storage, Beside(place, kDraftEnding));
  RemoveIfThere(*storage, draft.GetLocation());
  PathManagement::WriteToolboxPathCache(draft.GetLocation(), toolboxRoot, entries);
  // Nobody looked at what closing the draft said, so it tells itself whether it is whole.
  ToolboxCache::Open(session, draft.GetLocation(), CacheTrust::Blind).Check();
  draft.FlushAndRenameTo(place);
}

}  // namespace

void WriteToolboxCacheFile(const AbsoluteIRI& file, const AbsoluteIRI& toolboxRoot, const FolderEntryFactory& entries,
                           std::chrono::milliseconds patience) {
  try {
    WriteByWayOfDraft(file, toolboxRoot, entries, patience);
  } catch (const foundation::storage::vfs::Exception& failure) {
    // A disk is full where it turns out to be: as a folder is made, or the lock, or as the draft is flushed.
    if (IsOfAFullDisk(failure.GetError())) throw PathManagement::UnableToSaveToolboxCacheException();
    throw;
  }
}

bool RemoveToolboxCacheFile(const AbsoluteIRI& file, std::chrono::milliseconds patience) {
  const auto session = VornixStorageSystem::GetStorageSystemReference();
  const auto storage = session.ProviderFor(file);
  RequireCacheIfAny(session, file);
  const AbsoluteIRI place = storage->CanonicalLocation(file);
  const AbsoluteIRI draft = Beside(place, kDraftEnding);
  const bool isThere = IsThere(*storage, place);
  if (!isThere && !IsThere(*storage, draft)) return false;  // and no lock is left where there is nothing to lock

  const auto lock = storage->Lock(Beside(place, kLock), patience);
  RemoveIfThere(*storage, draft);
  RemoveIfThere(*storage, place);
  if (!(place == file)) RemoveIfThere(*storage, file);
  return isThere;
}

}  // namespace Quorvex::PathEnvironment
