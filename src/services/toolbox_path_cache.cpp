// The toolbox path cache is saved whole or not at all, as far as its own writing goes.

#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/file.hpp>
#include <foundation/storage/vfs/ofstream.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <ios>
#include <search_path_utilities/services.hpp>

namespace Quorvex::PathManagement {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::File;
using foundation::storage::vfs::VornixStorageSystem;

void Open(foundation::storage::vfs::ofstream& out, const File& file) {
  try {
    out.open(file, std::ios_base::out);
  } catch (const foundation::storage::vfs::Exception&) {
    throw UnableToSaveToolboxCacheException();
  }
}

}  // namespace

UnableToSaveToolboxCacheException::UnableToSaveToolboxCacheException() noexcept = default;
UnableToSaveToolboxCacheException::UnableToSaveToolboxCacheException(
    const UnableToSaveToolboxCacheException&) noexcept = default;
UnableToSaveToolboxCacheException& UnableToSaveToolboxCacheException::operator=(
    const UnableToSaveToolboxCacheException&) noexcept = default;
UnableToSaveToolboxCacheException::~UnableToSaveToolboxCacheException() = default;

void WriteToolboxPathCache(const AbsoluteIRI& cacheFile, const AbsoluteIRI& toolboxRoot,
                           const IPathEntryFactory& factory) {
  const File file(cacheFile, VornixStorageSystem::GetStorageSystemReference());
  foundation::storage::vfs::ofstream out;
  Open(out, file);
  try {
    // From here on every error throws; at once, if opening left the stream failed.
    out.exceptions(std::ios_base::badbit | std::ios_base::failbit);
    factory.WriteToolboxCache(out, toolboxRoot);
  } catch (...) {
    out.close();
    file.removeFile();
    throw UnableToSaveToolboxCacheException();
  }
}

}  // namespace Quorvex::PathManagement
