#include <fakes/forwarding_storage_provider.hpp>
#include <utility>

namespace foundation::storage::fakes {

namespace {

class ObservedReadableFile final : public vfs::IReadableFile {
 public:
  ObservedReadableFile(std::unique_ptr<vfs::IReadableFile> inner, std::shared_ptr<IStorageObserver> observer,
                       const vfs::AbsoluteIRI& location)
      : inner_(std::move(inner)), observer_(std::move(observer)), location_(location) {}

  std::size_t Read(std::span<std::byte> buffer) override {
    observer_->BeforeCall(StorageOperation::Read, location_);
    return inner_->Read(buffer);
  }

 private:
  std::unique_ptr<vfs::IReadableFile> inner_;
  std::shared_ptr<IStorageObserver> observer_;
  vfs::AbsoluteIRI location_;
};

class ObservedWritableFile final : public vfs::IWritableFile {
 public:
  ObservedWritableFile(std::unique_ptr<vfs::IWritableFile> inner, std::shared_ptr<IStorageObserver> observer,
                       const vfs::AbsoluteIRI& location)
      : inner_(std::move(inner)), observer_(std::move(observer)), location_(location) {}

  void Write(std::span<const std::byte> bytes) override {
    observer_->BeforeCall(StorageOperation::Write, location_);
    inner_->Write(bytes);
  }

  void Flush() override {
    observer_->BeforeCall(StorageOperation::Flush, location_);
    inner_->Flush();
  }

  void Close() override {
    observer_->BeforeCall(StorageOperation::Close, location_);
    inner_->Close();
  }

 private:
  std::unique_ptr<vfs::IWritableFile> inner_;
  std::shared_ptr<IStorageObserver> observer_;
  vfs::AbsoluteIRI location_;
};

}  // namespace

ForwardingStorageProvider::ForwardingStorageProvider(std::shared_ptr<const vfs::IStorageProvider> inner,
                                                     std::shared_ptr<IStorageObserver> observer)
    : inner_(std::move(inner)), observer_(std::move(observer)) {}

ForwardingStorageProvider::~ForwardingStorageProvider() = default;

void ForwardingStorageProvider::Announce(StorageOperation operation, const vfs::AbsoluteIRI& location) const {
  if (observer_) observer_->BeforeCall(operation, location);
}

vfs::FolderListing ForwardingStorageProvider::List(const vfs::AbsoluteIRI& folder) const {
  Announce(StorageOperation::List, folder);
  return inner_->List(folder);
}

vfs::FileIdentity ForwardingStorageProvider::CheckFolder(const vfs::AbsoluteIRI& folder) const {
  Announce(StorageOperation::CheckFolder, folder);
  return inner_->CheckFolder(folder);
}

vfs::FileStatus ForwardingStorageProvider::Stat(const vfs::AbsoluteIRI& location) const {
  Announce(StorageOperation::Stat, location);
  return inner_->Stat(location);
}

vfs::AbsoluteIRI ForwardingStorageProvider::CanonicalLocation(const vfs::AbsoluteIRI& location) const {
  Announce(StorageOperation::CanonicalLocation, location);
  return inner_->CanonicalLocation(location);
}

bool ForwardingStorageProvider::ComparesNamesExactly(const vfs::AbsoluteIRI& folder) const {
  Announce(StorageOperation::ComparesNamesExactly, folder);
  return inner_->ComparesNamesExactly(folder);
}

std::unique_ptr<vfs::IReadableFile> ForwardingStorageProvider::OpenForReading(const vfs::AbsoluteIRI& file) const {
  Announce(StorageOperation::OpenForReading, file);
  auto opened = inner_->OpenForReading(file);
  if (!observer_) return opened;
  return std::make_unique<ObservedReadableFile>(std::move(opened), observer_, file);
}

std::shared_ptr<const vfs::MappedBytes> ForwardingStorageProvider::Map(const vfs::AbsoluteIRI& file) const {
  Announce(StorageOperation::Map, file);
  return inner_->Map(file);
}

std::unique_ptr<vfs::IWritableFile> ForwardingStorageProvider::OpenForWriting(const vfs::AbsoluteIRI& file,
                                                                              vfs::WriteMode mode) const {
  Announce(StorageOperation::OpenForWriting, file);
  auto opened = inner_->OpenForWriting(file, mode);
  if (!observer_) return opened;
  return std::make_unique<ObservedWritableFile>(std::move(opened), observer_, file);
}

void ForwardingStorageProvider::FlushFolder(const vfs::AbsoluteIRI& folder) const {
  Announce(StorageOperation::FlushFolder, folder);
  inner_->FlushFolder(folder);
}

void ForwardingStorageProvider::Rename(const vfs::AbsoluteIRI& from, const vfs::AbsoluteIRI& to) const {
  Announce(StorageOperation::Rename, from);
  inner_->Rename(from, to);
}

void ForwardingStorageProvider::Remove(const vfs::AbsoluteIRI& location) const {
  Announce(StorageOperation::Remove, location);
  inner_->Remove(location);
}

void ForwardingStorageProvider::CreateFolder(const vfs::AbsoluteIRI& folder) const {
  Announce(StorageOperation::CreateFolder, folder);
  inner_->CreateFolder(folder);
}

std::unique_ptr<vfs::IFileLock> ForwardingStorageProvider::Lock(const vfs::AbsoluteIRI& file,
                                                                std::chrono::milliseconds timeout) const {
  Announce(StorageOperation::Lock, file);
  return inner_->Lock(file, timeout);
}

}  // namespace foundation::storage::fakes
