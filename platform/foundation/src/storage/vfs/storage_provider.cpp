#include <foundation/storage/vfs/storage_provider.hpp>

namespace foundation::storage::vfs {

IReadableFile::~IReadableFile() = default;
IWritableFile::~IWritableFile() = default;
MappedBytes::~MappedBytes() = default;
IFileLock::~IFileLock() = default;
IStorageProvider::~IStorageProvider() = default;

}  // namespace foundation::storage::vfs
