// The local file system through plain system calls: they keep a name's bytes and the error's number, which the
// standard library's folder iterators lose.
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/file_storage_provider.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <memory>
#include <ratio>
#include <string_view>

#include "native_file.hpp"
#include "operation.hpp"

namespace foundation::storage::vfs {

namespace {

using detail::Descriptor;
using detail::NativeNameOf;
using detail::Operation;
using detail::SystemError;
using detail::Uninterrupted;

Descriptor OpenFolder(const Operation& operation) {
  const std::string name = NativeNameOf(operation.GetLocation());
  Descriptor folder(Uninterrupted([&] { return ::open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
  if (!folder.IsOpen()) operation.Fail(SystemError());
  return folder;
}

/// What the system stamps files with: a clock that stands still between two ticks.
FileTime ClockOfFileTimes() {
  struct timespec now {};
  static_cast<void>(::clock_gettime(CLOCK_REALTIME_COARSE, &now));  // cannot fail: there is such a clock
  return detail::FileTimeOf(now);
}

/// `time` as a storage that stamps in whole seconds, or in every other, would have stamped it, if `stamps` look as if
/// it did.
FileTime AsCoarseAs(const struct stat& stamps, FileTime time) {
  const bool hasFractions = stamps.st_mtim.tv_nsec != 0 || stamps.st_ctim.tv_nsec != 0;
  return hasFractions ? time : std::chrono::floor<std::chrono::duration<std::int64_t, std::ratio<2>>>(time);
}

/// Reads one folder, entry by entry.
class FolderReader {
 public:
  explicit FolderReader(const Operation& operation) : operation_(operation), stream_(nullptr, &::closedir) {
    const FileTime begin = ClockOfFileTimes();
    Descriptor folder = OpenFolder(operation);
    const struct stat status = StatusOf(operation, folder);
    listing_.identity = detail::IdentityOf(status);
    listing_.modificationTime = detail::ModificationTimeOf(status);
    listing_.changeTime = detail::ChangeTimeOf(status);
    listing_.readAt = AsCoarseAs(status, begin);
    stream_.reset(::fdopendir(folder.Get()));
    if (!stream_) operation.Fail(SystemError());
    descriptor_ = folder.Release();  // the stream's from here on
  }

  FolderListing ReadAll() && {
    while (const dirent* entry = Next()) Add(*entry);
    return std::move(listing_);
  }

 private:
  const dirent* Next() {
    errno = 0;
    const dirent* entry = ::readdir(stream_.get());
    if (entry == nullptr && errno != 0) operation_.Fail(SystemError());
    return entry;
  }

  void Add(const dirent& entry) {
    const std::string_view name = entry.d_name;
    if (name == "." || name == "..") return;
    switch (entry.d_type) {
      case DT_REG:
        return Add(name, FileKind::File);
      case DT_DIR:
        return Add(name, FileKind::Folder);
      case DT_LNK:
        return AddLink(entry.d_name);
      case DT_UNKNOWN:
        return AddUnknown(entry.d_name);
      default:
        return Add(name, FileKind::Other);
    }
  }

  void Add(std::string_view name, FileKind kind) {
    listing_.entries.push_back({fl::filesystem::from_bytes(name), kind});
  }

  void AddProblem(std::string_view name) {
    listing_.problems.push_back({fl::filesystem::from_bytes(name), SystemError()});
  }

  void AddLink(const char* name) {
    listing_.links.push_back(fl::filesystem::from_bytes(name));
    struct stat status {};
    if (::fstatat(descriptor_, name, &status, 0) == 0) return Add(name, detail::KindOf(status));
    const bool leadsNowhere = errno == ENOENT || errno == ENOTDIR || errno == ELOOP;
    if (leadsNowhere) return Add(name, FileKind::Other);
    AddProblem(name);
  }

  /// For file systems that do not tell kinds when they list.
  void AddUnknown(const char* name) {
    struct stat status {};
    if (::fstatat(descriptor_, name, &status, AT_SYMLINK_NOFOLLOW) == -1) {
      if (errno != ENOENT) AddProblem(name);  // else it has just vanished
      return;
    }
    if (S_ISLNK(status.st_mode)) return AddLink(name);
    Add(name, detail::KindOf(status));
  }

  const Operation& operation_;
  FolderListing listing_;
  int descriptor_ = -1;
  std::unique_ptr<DIR, int (*)(DIR*)> stream_;
};

/// Where the links of `location` lead; none when something on the way is missing.
std::optional<AbsoluteIRI> RealLocation(const Operation& operation, const AbsoluteIRI& location) {
  const std::string name = NativeNameOf(location);
  const std::unique_ptr<char, void (*)(void*)> real(::realpath(name.c_str(), nullptr), &std::free);
  if (real && name == real.get()) return location;
  if (real) return toAbsoluteIRI(location.getScheme(), fl::filesystem::path(fl::filesystem::from_bytes(real.get())));
  if (errno != ENOENT) operation.Fail(SystemError());
  return std::nullopt;
}

}  // namespace

FileStorageProvider::FileStorageProvider() = default;
FileStorageProvider::~FileStorageProvider() = default;

FolderListing FileStorageProvider::List(const AbsoluteIRI& folder) const {
  const Operation operation("list", folder);
  return FolderReader(operation).ReadAll();
}

FileIdentity FileStorageProvider::CheckFolder(const AbsoluteIRI& folder) const {
  const Operation operation("check", folder);
  return detail::IdentityOf(StatusOf(operation, OpenFolder(operation)));
}

FileStatus FileStorageProvider::Stat(const AbsoluteIRI& location) const {
  const Operation operation("examine", location);
  struct stat status {};
  if (::stat(NativeNameOf(location).c_str(), &status) == -1) operation.Fail(SystemError());
  return {detail::KindOf(status), static_cast<std::uint64_t>(status.st_size), detail::ModificationTimeOf(status),
          detail::ChangeTimeOf(status), detail::IdentityOf(status)};
}

AbsoluteIRI FileStorageProvider::CanonicalLocation(const AbsoluteIRI& location) const {
  const Operation operation("resolve", location);
  return detail::CanonicalOfDeepestExisting(
      location, [&operation](const AbsoluteIRI& existing) { return RealLocation(operation, existing); });
}

bool FileStorageProvider::ComparesNamesExactly(const AbsoluteIRI& folder) const {
  static_cast<void>(Operation("examine", folder));
  return true;
}

std::unique_ptr<IReadableFile> FileStorageProvider::OpenForReading(const AbsoluteIRI& file) const {
  return detail::OpenNativeForReading(file);
}

std::shared_ptr<const MappedBytes> FileStorageProvider::Map(const AbsoluteIRI& file) const {
  return detail::MapNative(file);
}

std::unique_ptr<IWritableFile> FileStorageProvider::OpenForWriting(const AbsoluteIRI& file, WriteMode mode) const {
  return detail::OpenNativeForWriting(file, mode);
}

void FileStorageProvider::FlushFolder(const AbsoluteIRI& folder) const {
  const Operation operation("flush", folder);
  const Descriptor opened = OpenFolder(operation);
  if (Uninterrupted([&] { return ::fsync(opened.Get()); }) == -1) operation.Fail(SystemError());
}

void FileStorageProvider::Rename(const AbsoluteIRI& from, const AbsoluteIRI& to) const {
  const Operation operation("rename", from);
  static_cast<void>(Operation("rename to", to));  // refuses a rootless one
  if (::rename(NativeNameOf(from).c_str(), NativeNameOf(to).c_str()) == -1) operation.Fail(SystemError());
}

void FileStorageProvider::Remove(const AbsoluteIRI& location) const {
  const Operation operation("remove", location);
  if (::remove(NativeNameOf(location).c_str()) == -1) operation.Fail(SystemError());
}

void FileStorageProvider::CreateFolder(const AbsoluteIRI& folder) const {
  constexpr mode_t permissions = 0777;
  const Operation operation("create", folder);
  if (::mkdir(NativeNameOf(folder).c_str(), permissions) == -1) operation.Fail(SystemError());
}

std::unique_ptr<IFileLock> FileStorageProvider::Lock(const AbsoluteIRI& file, std::chrono::milliseconds timeout) const {
  return detail::LockNative(file, timeout);
}

}  // namespace foundation::storage::vfs
