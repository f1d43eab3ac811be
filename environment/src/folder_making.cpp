#include "folder_making.hpp"

#include <foundation/storage/vfs/exception.hpp>
#include <system_error>

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::IStorageProvider;

void MakeFolder(const IStorageProvider& storage, const AbsoluteIRI& folder) {
  try {
    storage.CreateFolder(folder);
  } catch (const Exception& failure) {
    if (failure.GetError() != std::errc::file_exists) throw;
  }
}

void MakeFolderWithParents(const IStorageProvider& storage, const AbsoluteIRI& folder) {
  try {
    MakeFolder(storage, folder);
  } catch (const Exception& failure) {
    const AbsoluteIRI parent = folder.getParent();
    if (failure.GetError() != std::errc::no_such_file_or_directory || parent == folder) throw;
    MakeFolderWithParents(storage, parent);
    MakeFolder(storage, folder);
    storage.FlushFolder(parent);
  }
}

}  // namespace Quorvex::PathEnvironment
