// What the storage fakes can watch: the operations of a provider and of the files it opens.
#pragma once

#include <cstdint>
#include <fakes/export.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>

namespace foundation::storage::fakes {

/// The operations of a provider, and Read, Write, Flush and Close of the files it opened.
enum class StorageOperation : std::uint8_t {
  List,
  CheckFolder,
  Stat,
  CanonicalLocation,
  ComparesNamesExactly,
  OpenForReading,
  Read,
  Map,
  OpenForWriting,
  Write,
  Flush,
  Close,
  FlushFolder,
  Rename,
  Remove,
  CreateFolder,
  Lock
};

/// The operation as exceptions name it, such as "list".
[[nodiscard]] FAKES_EXPORT const char* NameOf(StorageOperation operation) noexcept;

/// Sees each call before it is made. Called from whatever thread calls storage, several at once.
class FAKES_EXPORT IStorageObserver {
 public:
  virtual ~IStorageObserver();
  /// The call is about to be made at `location`; of Rename, that is where from. Throwing prevents the call.
  virtual void BeforeCall(StorageOperation operation, const vfs::AbsoluteIRI& location) = 0;
};

}  // namespace foundation::storage::fakes
