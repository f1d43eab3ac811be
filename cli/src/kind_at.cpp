#include "kind_at.hpp"

#include <foundation/storage/vfs/exception.hpp>

namespace vornixpath {

std::optional<foundation::storage::vfs::FileKind> KindAt(const foundation::storage::vfs::IStorageProvider& storage,
                                                         const foundation::storage::vfs::AbsoluteIRI& location) {
  try {
    return storage.Stat(location).kind;
  } catch (const foundation::storage::vfs::Exception& failure) {
    if (failure.GetError() != std::errc::no_such_file_or_directory) throw;
    return std::nullopt;
  }
}

}  // namespace vornixpath
