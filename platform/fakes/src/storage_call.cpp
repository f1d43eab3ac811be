#include <fakes/storage_call.hpp>

namespace foundation::storage::fakes {

const char* NameOf(StorageOperation operation) noexcept {
  switch (operation) {
    case StorageOperation::List:
      return "list";
    case StorageOperation::CheckFolder:
      return "check";
    case StorageOperation::Stat:
    case StorageOperation::ComparesNamesExactly:
      return "examine";
    case StorageOperation::CanonicalLocation:
      return "resolve";
    case StorageOperation::OpenForReading:
    case StorageOperation::OpenForWriting:
      return "open";
    case StorageOperation::Read:
      return "read";
    case StorageOperation::Map:
      return "map";
    case StorageOperation::Write:
      return "write";
    case StorageOperation::Flush:
    case StorageOperation::FlushFolder:
      return "flush";
    case StorageOperation::Close:
      return "close";
    case StorageOperation::Rename:
      return "rename";
    case StorageOperation::Remove:
      return "remove";
    case StorageOperation::CreateFolder:
      return "create";
    case StorageOperation::Lock:
      return "lock";
  }
  return "use";
}

IStorageObserver::~IStorageObserver() = default;

}  // namespace foundation::storage::fakes
