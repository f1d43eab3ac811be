#pragma once

#include <foundation/export.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/canonical_absolute_iri.hpp>
#include <foundation/storage/vfs/storage_system.hpp>

namespace foundation::storage::vfs {

/// A file of a storage system. A value made of an identifier and a handle, safe to read from many threads; making one
/// touches no storage.
class FOUNDATION_EXPORT File {
 public:
  /// Whatever is at `location`, or nothing; operations find out.
  File(const AbsoluteIRI& location, StorageSystemReference storageSystem);

  /// The location as it was given, links and aliases not followed.
  [[nodiscard]] const AbsoluteIRI& getLocation() const noexcept { return location_; }
  /// The storage that operations ask.
  [[nodiscard]] const StorageSystemReference& getStorageSystem() const noexcept { return storageSystem_; }
  /// The location with aliases and links followed, as IStorageProvider::CanonicalLocation says; its shown text is the
  /// location as it was given. Asks storage each time; throws Exception.
  [[nodiscard]] CanonicalAbsoluteIRI getCanonicalLocation() const;
  /// Throws Exception, also when there is no such file.
  void removeFile() const;

 private:
  AbsoluteIRI location_;
  StorageSystemReference storageSystem_;
};

}  // namespace foundation::storage::vfs
