#include "seen_folder.hpp"

#define XXH_INLINE_ALL
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <xxhash.h>

#include <cerrno>
#include <foundation/storage/vfs/exception.hpp>
#include <memory>

namespace Quorvex::PathEnvironment {

namespace {

bool IsLink(int folder, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_LNK;
  struct stat status {};
  return ::fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(status.st_mode);
}

// Of the kind of what the link leads to, or of the reason why that is not known.
std::uint64_t HashOfTarget(int folder, const dirent& entry) {
  struct stat status {};
  const bool isKnown = ::fstatat(folder, entry.d_name, &status, 0) == 0;
  const std::uint64_t seed =
      isKnown ? status.st_mode & static_cast<std::uint64_t>(S_IFMT) : static_cast<unsigned>(errno);
  return XXH3_64bits_withSeed(entry.d_name, std::string_view(entry.d_name).size(), seed);
}

}  // namespace

SeenFolder LookAt(const foundation::storage::vfs::AbsoluteIRI& folder,
                  const foundation::storage::vfs::StorageSystemReference& storage) {
  try {
    const auto status = storage.ProviderFor(folder)->Stat(folder);
    return {{status.identity, status.modificationTime, status.changeTime}, {}};
  } catch (const foundation::storage::vfs::Exception& exception) {
    return {{}, exception.GetError()};
  }
}

FolderLinks LinksIn(const std::string& path, const std::function<bool(std::string_view name)>& isOfInterest) {
  FolderLinks links;
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir(path.c_str()), &::closedir);
  if (!stream) return links;
  const int folder = ::dirfd(stream.get());
  while (const dirent* const entry = ::readdir(stream.get())) {
    if (!IsLink(folder, *entry) || !isOfInterest(entry->d_name)) continue;
    ++links.count;
    links.targets += HashOfTarget(folder, *entry);  // the order of a listing means nothing
  }
  return links;
}

}  // namespace Quorvex::PathEnvironment
