#include <fl/filesystem/path.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <foundation/storage/vfs/memory_storage_provider.hpp>

#include "memory_file.hpp"
#include "memory_tree.hpp"

namespace foundation::storage::vfs {

namespace {

using detail::Operation;

Operation Adding(std::u16string_view path) {
  const fl::filesystem::path text{std::u16string(path)};
  return {"add", detail::toAbsoluteIRI(u"memory", text, fl::filesystem::detail::path_style::posix)};
}

}  // namespace

MemoryStorageProvider::MemoryStorageProvider(NameComparison comparison)
    : tree_(std::make_shared<detail::MemoryTree>(comparison)) {}

MemoryStorageProvider::~MemoryStorageProvider() = default;

void MemoryStorageProvider::AddFile(std::u16string_view path, std::string_view bytes) {
  tree_->AddFile(Adding(path), std::as_bytes(std::span(bytes)));
}

void MemoryStorageProvider::AddFolder(std::u16string_view path) { tree_->AddFolder(Adding(path)); }

void MemoryStorageProvider::AddLink(std::u16string_view path, std::u16string_view target) {
  tree_->AddLink(Adding(path), target);
}

FolderListing MemoryStorageProvider::List(const AbsoluteIRI& folder) const { return tree_->List({"list", folder}); }

FileIdentity MemoryStorageProvider::CheckFolder(const AbsoluteIRI& folder) const {
  return tree_->RequireFolder({"check", folder});
}

FileStatus MemoryStorageProvider::Stat(const AbsoluteIRI& location) const { return tree_->Stat({"examine", location}); }

AbsoluteIRI MemoryStorageProvider::CanonicalLocation(const AbsoluteIRI& location) const {
  return tree_->CanonicalLocation({"resolve", location});
}

bool MemoryStorageProvider::ComparesNamesExactly(const AbsoluteIRI& folder) const {
  static_cast<void>(Operation("examine", folder));
  return tree_->ComparesNamesExactly();
}

std::unique_ptr<IReadableFile> MemoryStorageProvider::OpenForReading(const AbsoluteIRI& file) const {
  return detail::OpenMemoryForReading(tree_, file);
}

std::shared_ptr<const MappedBytes> MemoryStorageProvider::Map(const AbsoluteIRI& file) const {
  return detail::MapMemory(tree_, file);
}

std::unique_ptr<IWritableFile> MemoryStorageProvider::OpenForWriting(const AbsoluteIRI& file, WriteMode mode) const {
  return detail::OpenMemoryForWriting(tree_, file, mode);
}

void MemoryStorageProvider::FlushFolder(const AbsoluteIRI& folder) const { tree_->RequireFolder({"flush", folder}); }

void MemoryStorageProvider::Rename(const AbsoluteIRI& from, const AbsoluteIRI& to) const {
  tree_->Rename({"rename", from}, {"rename to", to});
}

void MemoryStorageProvider::Remove(const AbsoluteIRI& location) const { tree_->Remove({"remove", location}); }

void MemoryStorageProvider::CreateFolder(const AbsoluteIRI& folder) const { tree_->CreateFolder({"create", folder}); }

std::unique_ptr<IFileLock> MemoryStorageProvider::Lock(const AbsoluteIRI& file,
                                                       std::chrono::milliseconds timeout) const {
  return detail::LockMemory(tree_, file, timeout);
}

}  // namespace foundation::storage::vfs
